#include "app/command_line.hpp"

#include "zelvaine/version.hpp"

#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace zelvaine {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view usage = "Usage: zelvaine [OPTION...] [FILE]\n"
                                   "Two-deck patience with every card face up.\n"
                                   "\n"
                                   "  FILE                         a shared game (.zelvaine file) to open\n"
                                   "  --update-configuration=FILE  read the update checker's settings from FILE\n"
                                   "  -h, --help                   show this help and exit\n"
                                   "  -v, --version                show the version and exit\n"
                                   "\n"
                                   "Qt's own options, such as -platform NAME or -reverse, are passed on to Qt.\n";

// The options QGuiApplication, its platform plugins and the QML engine read from argv, with one
// dash or two. Those taking a value take the next argument, which must not be read as a file.
constexpr std::array qtOptionsWithValue{"platform"sv,        "platformpluginpath"sv,
                                        "platformtheme"sv,   "plugin"sv,
                                        "qwindowgeometry"sv, "qwindowicon"sv,
                                        "qwindowtitle"sv,    "session"sv,
                                        "style"sv,           "geometry"sv,
                                        "title"sv,           "icon"sv,
                                        "display"sv,         "name"sv,
                                        "visual"sv};
constexpr std::array qtFlags{"reverse"sv, "nograb"sv, "dograb"sv, "sync"sv};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& names, std::string_view name)
{
    for (const std::string_view candidate : names)
        if (candidate == name) return true;
    return false;
}

CommandLine fail(std::ostream& err, const std::string& message)
{
    err << "zelvaine: " << message << "\nTry 'zelvaine --help'.\n";
    CommandLine answered;
    answered.exitStatus = 2;
    return answered;
}

} // namespace

CommandLine readCommandLine(int argc, const char* const* argv, std::ostream& out, std::ostream& err)
{
    CommandLine result;
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (optionsEnded || argument.size() < 2 || argument.front() != '-') {
            if (result.sharedGame)
                return fail(err, "one shared game at a time: '" + std::string(argument) + "' is one too many");
            result.sharedGame = std::string(argument);
            continue;
        }
        if (argument == "--") {
            optionsEnded = true;
            continue;
        }
        if (argument == "-h" || argument == "--help") {
            out << usage;
            result.exitStatus = 0;
            return result;
        }
        if (argument == "-v" || argument == "--version") {
            out << "Zelvaine " << build::versionText << '\n';
            result.exitStatus = 0;
            return result;
        }
        if (argument == "--quit-after-first-frame") {
            result.quitAfterFirstFrame = true;
            continue;
        }
#ifdef ZELVAINE_TEST_HOOKS
        if (argument == "--answer-yes") {
            result.answerYes = true;
            continue;
        }
#endif
        constexpr std::string_view updateOption = "--update-configuration";
        if (argument.starts_with(updateOption)) {
            const std::string_view rest = argument.substr(updateOption.size());
            std::string_view file;
            if (rest.starts_with('=')) file = rest.substr(1);
            else if (rest.empty() && i + 1 < argc) file = argv[++i];
            else if (!rest.empty()) return fail(err, "unknown option '" + std::string(argument) + "'");
            if (file.empty()) return fail(err, "a file must follow " + std::string(updateOption));
            result.updateConfiguration = std::string(file);
            continue;
        }
        std::string_view name = argument.substr(argument.starts_with("--") ? 2 : 1);
        if (name.starts_with("qmljsdebugger=") || contains(qtFlags, name)) continue;
        if (contains(qtOptionsWithValue, name)) {
            if (i + 1 >= argc) return fail(err, "a value must follow " + std::string(argument));
            ++i;
            continue;
        }
        return fail(err, "unknown option '" + std::string(argument) + "'");
    }
    return result;
}

} // namespace zelvaine
