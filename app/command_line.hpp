#pragma once

// The game's command line, read before the window system is touched: --help, --version and
// mistakes are answered on a machine without a display, and nothing opens a window first.

#include <iosfwd>
#include <optional>
#include <string>

namespace zelvaine {

struct CommandLine {
    std::optional<std::string> sharedGame;          // a .zelvaine file to open, as the file manager passes it
    std::optional<std::string> updateConfiguration; // --update-configuration=FILE
    bool quitAfterFirstFrame = false;               // for the start-up benchmark
    // For tests of the whole program: every question the game asks is answered yes, as if the
    // player had pressed Return. Not in --help, and only in builds with the tests: no player
    // needs it.
    bool answerYes = false;
    std::optional<int> exitStatus; // set when the command line has been answered already
};

// Reads argv; help and version go to out, mistakes to err. Qt's own options (-platform NAME,
// -reverse, ...) are let through for QGuiApplication, which takes them out of argv itself.
CommandLine readCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

} // namespace zelvaine
