#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace zelvaine {

// The folder of the application's resources: next to the installed executable
// ("<bin>/../share/zelvaine" or "<bin>/resources"), or else the source tree's "resources"
// when running from a build directory.
std::optional<std::filesystem::path> applicationResourceFolder();

// The file "<folder>/<subdirectory>/<name>.<extension>" if it exists.
std::optional<std::filesystem::path> findResource(const std::optional<std::filesystem::path>& folder,
                                                  std::string_view subdirectory, std::string_view name,
                                                  std::string_view extension);

} // namespace zelvaine
