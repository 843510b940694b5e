#include "store/defaults_location.hpp"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace zelvaine {

namespace {

bool isAbsolute(const char* path) { return path != nullptr && path[0] == '/'; }

// HOME can be missing under some service managers; the password database still knows.
std::string homeFromPasswordDatabase()
{
    long suggested = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? static_cast<std::size_t>(suggested) : 16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return {};
    return found->pw_dir != nullptr ? std::string(found->pw_dir) : std::string();
}

} // namespace

std::filesystem::path defaultsDatabasePath(const char* xdgDataHome, const char* home)
{
    std::filesystem::path dataHome;
    if (isAbsolute(xdgDataHome)) {
        dataHome = xdgDataHome;
    } else {
        dataHome = std::filesystem::path(home != nullptr ? home : "") / ".local" / "share";
    }
    return dataHome / "zelvaine" / "defaults.sqlite3";
}

std::filesystem::path defaultDefaultsDatabasePath()
{
    const char* home = std::getenv("HOME");
    std::string fallbackHome;
    if (home == nullptr || home[0] == '\0') {
        fallbackHome = homeFromPasswordDatabase();
        home = fallbackHome.c_str();
    }
    return defaultsDatabasePath(std::getenv("XDG_DATA_HOME"), home);
}

} // namespace zelvaine
