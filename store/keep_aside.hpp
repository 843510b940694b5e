#pragma once

#include <chrono>
#include <filesystem>
#include <optional>

namespace zelvaine {

// Moves a damaged database file, with its "-wal", "-shm" and "-journal" companions, to a new
// name next to it: "<name>.damaged-<UTC time>", with "-2", "-3"… added when that name is taken.
// Nothing is ever overwritten or deleted. Gives the new name of the file, or nothing when it
// could not be moved; then the file is where it was and no new database may be made over it.
std::optional<std::filesystem::path> keepDamagedFileAside(
    const std::filesystem::path& file, std::chrono::system_clock::time_point now);

} // namespace zelvaine
