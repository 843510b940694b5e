#pragma once

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvaine::testing {

// A child program started for a crash test, reporting 64-bit words down a pipe.
struct ReportingChild {
    pid_t pid = -1;
    int reports = -1;
};

// Starts `program` with `arguments` and, last, the number of the pipe's writing end.
inline ReportingChild startReportingChild(const char* program, const std::vector<std::string>& arguments)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return {};
    // Everything the child needs is made before the fork: only exec-safe calls follow it.
    const std::string reportTo = std::to_string(ends[1]);
    std::vector<const char*> argv{program};
    for (const auto& argument : arguments) argv.push_back(argument.c_str());
    argv.push_back(reportTo.c_str());
    argv.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        fcntl(ends[1], F_SETFD, 0); // the writing end, alone, stays open across exec
        execv(argv[0], const_cast<char* const*>(argv.data()));
        _exit(127);
    }
    close(ends[1]);
    return {pid, ends[0]};
}

// One reported word; nothing once the child is gone and the pipe is empty, or when it stays
// silent far longer than it ever should (so that a hang fails instead of waiting).
inline std::optional<std::uint64_t> readReport(int reports)
{
    std::uint64_t value = 0;
    auto* bytes = reinterpret_cast<char*>(&value);
    std::size_t got = 0;
    while (got < sizeof value) {
        pollfd waiting{reports, POLLIN, 0};
        if (poll(&waiting, 1, 20000) <= 0) return std::nullopt;
        const ssize_t read = ::read(reports, bytes + got, sizeof value - got);
        if (read <= 0) return std::nullopt;
        got += static_cast<std::size_t>(read);
    }
    return value;
}

// For the child: a short write can only happen when the parent has gone.
inline void report(int pipe, std::uint64_t word)
{
    if (write(pipe, &word, sizeof word) != static_cast<ssize_t>(sizeof word)) _exit(3);
}

} // namespace zelvaine::testing
