// From launching the game to its first drawn frame, offscreen, as a player would start it.
// The game quits at its first frame when asked to, so each iteration is one whole start.

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

extern char** environ;

namespace {

void BM_startToFirstFrame(benchmark::State& state)
{
    const auto home = std::filesystem::temp_directory_path() / ("zelvaine-start-" + std::to_string(getpid()));
    std::filesystem::create_directories(home);
    std::vector<std::string> environment{"QT_QPA_PLATFORM=offscreen", "ALSOFT_DRIVERS=null",
                                         "XDG_DATA_HOME=" + home.string(), "HOME=" + home.string(),
                                         "XDG_RUNTIME_DIR=" + home.string()};
    std::vector<char*> envp;
    for (auto& entry : environment) envp.push_back(entry.data());
    envp.push_back(nullptr);
    const char* argv[] = {ZELVAINE_APP, "--quit-after-first-frame", nullptr};

    for (auto _ : state) {
        pid_t pid = 0;
        if (posix_spawn(&pid, ZELVAINE_APP, nullptr, nullptr, const_cast<char* const*>(argv), envp.data()) != 0) {
            state.SkipWithError("cannot start the game");
            break;
        }
        int status = 0;
        waitpid(pid, &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            state.SkipWithError("the game did not reach its first frame");
            break;
        }
    }
    std::filesystem::remove_all(home);
}
BENCHMARK(BM_startToFirstFrame)->Iterations(10)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
