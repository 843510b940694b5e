#pragma once

#include <filesystem>

namespace zelvaine {

// Where the defaults database lives: $XDG_DATA_HOME/zelvaine/defaults.sqlite3, or the same under
// ~/.local/share when XDG_DATA_HOME is unset, empty or relative (relative ones are to be ignored).
// Takes the two variables as arguments so that the rule can be checked without touching the
// environment; either may be null.
std::filesystem::path defaultsDatabasePath(const char* xdgDataHome, const char* home);

// The same, from this process's environment.
std::filesystem::path defaultDefaultsDatabasePath();

} // namespace zelvaine
