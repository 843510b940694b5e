#pragma once

// A SQLite file layer for tests, over the system's own, that plays the disk of a machine that
// loses power: every write not yet synced is undone when the power is cut, and writes or syncs
// can be made to fail with an I/O error or a full disk at a chosen moment.

#include <cstdint>
#include <mutex>
#include <optional>

namespace zelvaine::testing {

enum class DiskFault : std::uint8_t { ioError, full, powerCut };

class PowerCutVfs {
public:
    // Becomes SQLite's default file layer until destroyed. One at a time.
    PowerCutVfs();
    ~PowerCutVfs();

    PowerCutVfs(const PowerCutVfs&) = delete;
    PowerCutVfs& operator=(const PowerCutVfs&) = delete;

    // The fault strikes the operation that changes the disk (a write, a sync, a truncation)
    // `operations` from now: 1 is the next one. Several may be planned at once. An I/O error or a full disk fails that one
    // operation; a power cut fails it and every one after it until restorePower().
    void strike(DiskFault fault, std::uint64_t operations);
    bool powerIsOut() const;
    // The machine comes back: every write made since its file was last synced is undone, as a
    // disk cache that lost power would have it. Every connection must be closed by now.
    void restorePower();

    std::uint64_t operations() const;

    struct Impl;

private:
    Impl* impl_;
};

} // namespace zelvaine::testing
