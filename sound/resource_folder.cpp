#include "sound/resource_folder.hpp"

#include <array>
#include <string>
#include <system_error>

namespace zelvaine {

namespace {

bool isDirectory(const std::filesystem::path& path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

} // namespace

std::optional<std::filesystem::path> applicationResourceFolder()
{
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        const auto bin = executable.parent_path();
        for (const auto& candidate : std::array{bin.parent_path() / "share" / "zelvaine", bin / "resources"})
            if (isDirectory(candidate)) return candidate;
    }
#ifdef ZELVAINE_BUILD_TREE_RESOURCES
    if (const std::filesystem::path buildTree = ZELVAINE_BUILD_TREE_RESOURCES; isDirectory(buildTree)) return buildTree;
#endif
    return std::nullopt;
}

std::optional<std::filesystem::path> findResource(const std::optional<std::filesystem::path>& folder,
                                                  std::string_view subdirectory, std::string_view name,
                                                  std::string_view extension)
{
    if (!folder) return std::nullopt;
    auto file = *folder / subdirectory / (std::string(name) + "." + std::string(extension));
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) return std::nullopt;
    return file;
}

} // namespace zelvaine
