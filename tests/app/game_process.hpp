#pragma once

// The real game started as a player's desktop would start it, with no display (offscreen) and
// its data, runtime folder and session bus kept inside a scratch folder of the test's own.

#include "engine/game_state.hpp"
#include "store/game_document.hpp"
#include "store/saved_game.hpp"
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/sqlite_defaults_test_support.hpp"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace zelvaine::testing {

class GameHome {
public:
    GameHome()
    {
        std::filesystem::create_directories(path() / "data");
        std::filesystem::create_directories(path() / "runtime");
        std::filesystem::permissions(path() / "runtime", std::filesystem::perms::owner_all);
    }

    const std::filesystem::path& path() const { return folder_.path(); }
    std::filesystem::path database() const { return path() / "data" / "zelvaine" / "defaults.sqlite3"; }

    // Starts the game; `environment` adds NAME=VALUE entries, or removes NAME when given as
    // "NAME" alone. Without a bus address of the test's own, the game finds no session bus.
    pid_t start(const std::string& program, const std::vector<std::string>& arguments,
                const std::vector<std::string>& environment = {}) const
    {
        std::vector<std::string> settings;
        for (char** entry = environ; *entry != nullptr; ++entry) settings.emplace_back(*entry);
        const auto replace = [&settings](const std::string& setting) {
            const std::string name = setting.substr(0, setting.find('='));
            std::erase_if(settings, [&name](const std::string& s) { return s.starts_with(name + "="); });
            if (setting.find('=') != std::string::npos) settings.push_back(setting);
        };
        for (const std::string& setting :
             {std::string("QT_QPA_PLATFORM=offscreen"), "XDG_DATA_HOME=" + (path() / "data").string(),
              "XDG_RUNTIME_DIR=" + (path() / "runtime").string(), std::string("DBUS_SESSION_BUS_ADDRESS"),
              std::string("ALSOFT_DRIVERS=null")})
            replace(setting);
        for (const std::string& setting : environment) replace(setting);

        std::vector<const char*> argv{program.c_str()};
        for (const auto& argument : arguments) argv.push_back(argument.c_str());
        argv.push_back(nullptr);
        std::vector<const char*> envp;
        for (const auto& setting : settings) envp.push_back(setting.c_str());
        envp.push_back(nullptr);
        const pid_t pid = fork();
        if (pid == 0) {
            execve(argv[0], const_cast<char* const*>(argv.data()), const_cast<char* const*>(envp.data()));
            _exit(127);
        }
        return pid;
    }

    // A shared game file in the scratch folder.
    std::filesystem::path writeGame(const std::string& name, const GameState& current, const GameState& restart) const
    {
        const std::filesystem::path file = path() / name;
        std::ofstream(file, std::ios::binary) << ZelvaineGameDocument::fromStates(current, restart).encode();
        return file;
    }

    // The saved game as the database holds it now, read as another process would.
    std::optional<SavedGame> savedGame() const
    {
        if (!std::filesystem::exists(database())) return std::nullopt;
        const SqliteDefaultsStore defaults(database());
        const auto blob = defaults.data(savedGameKey);
        if (!blob) return std::nullopt;
        auto game = decodeSavedGame(std::string_view(reinterpret_cast<const char*>(blob->data()), blob->size()));
        if (!game) return std::nullopt;
        return std::move(*game);
    }

    std::optional<std::int64_t> integer(std::string_view key) const
    {
        const SqliteDefaultsStore defaults(database());
        return defaults.integer(key);
    }

private:
    DefaultsScratchFolder folder_;
};

// Polls until `holds` is true; false when the game took far longer than it ever should.
inline bool eventually(const std::function<bool()>& holds, std::chrono::seconds limit = std::chrono::seconds(30))
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < end) {
        if (holds()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return holds();
}

// The exit status, 128 + the signal for a process a signal ended, nothing if it is still running
// after the limit (it is then killed).
inline std::optional<int> waitForExit(pid_t pid, std::chrono::seconds limit = std::chrono::seconds(30))
{
    int status = 0;
    const auto end = std::chrono::steady_clock::now() + limit;
    while (waitpid(pid, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
            return std::nullopt;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
    return WEXITSTATUS(status);
}

} // namespace zelvaine::testing
