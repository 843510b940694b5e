#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

namespace zelvaine {

// Moves a damaged database file, with its "-wal", "-shm" and "-journal" companions, to a new
// name next to it: "<name>.damaged-<UTC time>", with "-2", "-3"… added when that name is taken.
// Nothing is ever overwritten or deleted. Gives the new name of the file, or nothing when it
// could not be moved; then the file is where it was and no new database may be made over it.
std::optional<std::filesystem::path> keepDamagedFileAside(const std::filesystem::path& file,
                                                          std::chrono::system_clock::time_point now);

// Copies a damaged value out of a sound database into a new file next to it,
// "<name>.<what>.damaged-<UTC time>", durable before this returns, so that nothing written to the
// database afterwards can lose it. Gives the new file's name, or nothing when it could not be made.
std::optional<std::filesystem::path> keepValueAside(const std::filesystem::path& file, std::string_view what,
                                                    std::span<const std::uint8_t> bytes,
                                                    std::chrono::system_clock::time_point now);

} // namespace zelvaine
