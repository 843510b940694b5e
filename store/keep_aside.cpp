#include "store/keep_aside.hpp"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

namespace zelvaine {

namespace {

namespace fs = std::filesystem;

bool isTaken(const fs::path& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 || errno != ENOENT;
}

// Gives 0 on success, or the errno of the failure; EEXIST when the target is taken.
int renameWithoutReplacing(const fs::path& from, const fs::path& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // Some file systems refuse the flag; checking first leaves only a tiny window, and the
    // names carry the time, so nothing else is likely to be creating them.
    if (isTaken(to)) return EEXIST;
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

std::string utcStamp(std::chrono::system_clock::time_point now)
{
    std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
    return text;
}

fs::path withSuffix(const fs::path& path, const char* suffix) { return fs::path(path.native() + suffix); }

bool companionsAreFree(const fs::path& aside)
{
    return !isTaken(withSuffix(aside, "-wal")) && !isTaken(withSuffix(aside, "-shm")) &&
           !isTaken(withSuffix(aside, "-journal"));
}

} // namespace

std::optional<fs::path> keepDamagedFileAside(const fs::path& file, std::chrono::system_clock::time_point now)
{
    const std::string base = file.native() + ".damaged-" + utcStamp(now);
    for (int attempt = 1; attempt <= 1000; ++attempt) {
        fs::path aside = attempt == 1 ? fs::path(base) : fs::path(base + "-" + std::to_string(attempt));
        if (!companionsAreFree(aside)) continue;
        const int failure = renameWithoutReplacing(file, aside);
        if (failure == EEXIST) continue;
        if (failure != 0) return std::nullopt;

        // A write-ahead log left next to a new database would be replayed into it, so the file
        // only counts as set aside once its companions are gone too; otherwise all goes back.
        std::vector<std::pair<fs::path, fs::path>> moved{{file, aside}};
        for (const char* suffix : {"-wal", "-shm", "-journal"}) {
            const fs::path companion = withSuffix(file, suffix);
            if (!isTaken(companion)) continue;
            if (renameWithoutReplacing(companion, withSuffix(aside, suffix)) != 0) {
                for (const auto& [from, to] : moved) renameWithoutReplacing(to, from);
                return std::nullopt;
            }
            moved.emplace_back(companion, withSuffix(aside, suffix));
        }
        return aside;
    }
    return std::nullopt;
}

namespace {

bool writeDurably(const fs::path& path, std::span<const std::uint8_t> bytes)
{
    const int out = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (out < 0) return false;
    bool written = true;
    for (std::size_t done = 0; written && done < bytes.size();) {
        const ssize_t step = write(out, bytes.data() + done, bytes.size() - done);
        if (step < 0 && errno == EINTR) continue;
        written = step > 0;
        if (written) done += static_cast<std::size_t>(step);
    }
    written = written && fsync(out) == 0;
    close(out);
    if (!written) {
        unlink(path.c_str());
        return false;
    }
    // The new name must survive a power loss too, not only the bytes behind it.
    const int folder =
        open(path.parent_path().empty() ? "." : path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
    return true;
}

} // namespace

std::optional<fs::path> keepValueAside(const fs::path& file, std::string_view what, std::span<const std::uint8_t> bytes,
                                       std::chrono::system_clock::time_point now)
{
    const std::string base = file.native() + "." + std::string(what) + ".damaged-" + utcStamp(now);
    for (int attempt = 1; attempt <= 1000; ++attempt) {
        const fs::path aside = attempt == 1 ? fs::path(base) : fs::path(base + "-" + std::to_string(attempt));
        if (isTaken(aside)) continue;
        if (writeDurably(aside, bytes)) return aside;
        if (errno != EEXIST) return std::nullopt;
    }
    return std::nullopt;
}

} // namespace zelvaine
