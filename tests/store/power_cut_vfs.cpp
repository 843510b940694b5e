#include "tests/store/power_cut_vfs.hpp"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace zelvaine::testing {

namespace {

// What a file held before its writes since the last sync: its size then, and the old bytes of
// every region written since, in order.
struct Undo {
    sqlite3_int64 size = 0;
    std::vector<std::pair<sqlite3_int64, std::string>> regions;
};

} // namespace

struct PowerCutVfs::Impl {
    sqlite3_vfs vfs{};
    sqlite3_vfs* real = nullptr;
    sqlite3_io_methods methods{};
    mutable std::mutex mutex;
    std::map<std::string, Undo> unsynced;
    std::map<std::uint64_t, DiskFault> plan; // by the operation they strike
    std::atomic<bool> powerOut = false;
    std::uint64_t count = 0;

    // Counts one operation that changes the disk; gives the error it must fail with, or OK.
    int admit(int ioError)
    {
        std::lock_guard lock(mutex);
        if (powerOut) return SQLITE_IOERR;
        const auto planned = plan.find(++count);
        if (planned == plan.end()) return SQLITE_OK;
        const DiskFault fault = planned->second;
        plan.erase(planned);
        switch (fault) {
        case DiskFault::full: return SQLITE_FULL;
        case DiskFault::ioError: return ioError;
        case DiskFault::powerCut: powerOut = true; return SQLITE_IOERR;
        }
        return SQLITE_OK;
    }
};

namespace {

PowerCutVfs::Impl* current = nullptr;

struct File {
    sqlite3_file base;
    sqlite3_file* real;
    std::string* path; // empty for files without a name (temporary ones)
};

sqlite3_file* realOf(sqlite3_file* file) { return reinterpret_cast<File*>(file)->real; }

// The old bytes of a region about to change, read before the change is made.
void remember(File* file, sqlite3_int64 offset, sqlite3_int64 length)
{
    if (file->path->empty()) return;
    sqlite3_int64 size = 0;
    if (file->real->pMethods->xFileSize(file->real, &size) != SQLITE_OK) return;
    std::lock_guard lock(current->mutex);
    auto [undo, fresh] = current->unsynced.try_emplace(*file->path);
    if (fresh) undo->second.size = size;
    const sqlite3_int64 readable = std::max<sqlite3_int64>(0, std::min(offset + length, size) - offset);
    std::string old(static_cast<std::size_t>(readable), '\0');
    if (readable > 0) file->real->pMethods->xRead(file->real, old.data(), static_cast<int>(readable), offset);
    undo->second.regions.emplace_back(offset, std::move(old));
}

int fileClose(sqlite3_file* file)
{
    auto* ours = reinterpret_cast<File*>(file);
    const int result = ours->real->pMethods ? ours->real->pMethods->xClose(ours->real) : SQLITE_OK;
    delete ours->path;
    return result;
}

int fileRead(sqlite3_file* file, void* buffer, int amount, sqlite3_int64 offset)
{
    if (current->powerOut) return SQLITE_IOERR_READ;
    return realOf(file)->pMethods->xRead(realOf(file), buffer, amount, offset);
}

int fileWrite(sqlite3_file* file, const void* buffer, int amount, sqlite3_int64 offset)
{
    if (const int refused = current->admit(SQLITE_IOERR_WRITE); refused != SQLITE_OK) return refused;
    remember(reinterpret_cast<File*>(file), offset, amount);
    return realOf(file)->pMethods->xWrite(realOf(file), buffer, amount, offset);
}

int fileTruncate(sqlite3_file* file, sqlite3_int64 size)
{
    if (const int refused = current->admit(SQLITE_IOERR_TRUNCATE); refused != SQLITE_OK) return refused;
    sqlite3_int64 now = 0;
    realOf(file)->pMethods->xFileSize(realOf(file), &now);
    if (now > size) remember(reinterpret_cast<File*>(file), size, now - size);
    return realOf(file)->pMethods->xTruncate(realOf(file), size);
}

int fileSync(sqlite3_file* file, int flags)
{
    if (const int refused = current->admit(SQLITE_IOERR_FSYNC); refused != SQLITE_OK) return refused;
    const int result = realOf(file)->pMethods->xSync(realOf(file), flags);
    auto* ours = reinterpret_cast<File*>(file);
    if (result == SQLITE_OK) {
        std::lock_guard lock(current->mutex);
        current->unsynced.erase(*ours->path);
    }
    return result;
}

int fileSize(sqlite3_file* file, sqlite3_int64* size) { return realOf(file)->pMethods->xFileSize(realOf(file), size); }
int fileLock(sqlite3_file* file, int level) { return realOf(file)->pMethods->xLock(realOf(file), level); }
int fileUnlock(sqlite3_file* file, int level) { return realOf(file)->pMethods->xUnlock(realOf(file), level); }
int fileCheckReservedLock(sqlite3_file* file, int* out)
{
    return realOf(file)->pMethods->xCheckReservedLock(realOf(file), out);
}

int fileControl(sqlite3_file* file, int op, void* argument)
{
    // Growing a file ahead of its writes would change it behind this layer's back.
    if (op == SQLITE_FCNTL_SIZE_HINT) return SQLITE_OK;
    return realOf(file)->pMethods->xFileControl(realOf(file), op, argument);
}

int fileSectorSize(sqlite3_file* file) { return realOf(file)->pMethods->xSectorSize(realOf(file)); }
int fileDeviceCharacteristics(sqlite3_file* file)
{
    return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file));
}
// The write-ahead log's index lives in shared memory, which a power cut wipes anyway: SQLite
// rebuilds it from the log when the first connection opens again.
int fileShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory)
{
    return realOf(file)->pMethods->xShmMap(realOf(file), region, size, extend, memory);
}
int fileShmLock(sqlite3_file* file, int offset, int n, int flags)
{
    return realOf(file)->pMethods->xShmLock(realOf(file), offset, n, flags);
}
void fileShmBarrier(sqlite3_file* file) { realOf(file)->pMethods->xShmBarrier(realOf(file)); }
int fileShmUnmap(sqlite3_file* file, int deleteFlag)
{
    return realOf(file)->pMethods->xShmUnmap(realOf(file), deleteFlag);
}

int vfsOpen(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    auto* ours = reinterpret_cast<File*>(file);
    ours->real = reinterpret_cast<sqlite3_file*>(ours + 1);
    ours->path = new std::string(name != nullptr ? name : "");
    ours->base.pMethods = nullptr;
    const int result = current->real->xOpen(current->real, name, ours->real, flags, outFlags);
    if (ours->real->pMethods == nullptr) {
        delete ours->path;
        return result;
    }
    ours->base.pMethods = &current->methods;
    return result;
}

int vfsDelete(sqlite3_vfs*, const char* name, int syncDirectory)
{
    if (current->powerOut) return SQLITE_IOERR_DELETE;
    {
        std::lock_guard lock(current->mutex);
        current->unsynced.erase(name);
    }
    return current->real->xDelete(current->real, name, syncDirectory);
}

} // namespace

PowerCutVfs::PowerCutVfs() : impl_(new Impl)
{
    impl_->real = sqlite3_vfs_find(nullptr);
    impl_->vfs = *impl_->real;
    impl_->vfs.zName = "zelvaine-power-cut";
    impl_->vfs.szOsFile = static_cast<int>(sizeof(File)) + impl_->real->szOsFile;
    impl_->vfs.xOpen = vfsOpen;
    impl_->vfs.xDelete = vfsDelete;
    auto& m = impl_->methods;
    // Version 2: shared memory for the write-ahead log, but no memory-mapped reads.
    m.iVersion = 2;
    m.xClose = fileClose;
    m.xRead = fileRead;
    m.xWrite = fileWrite;
    m.xTruncate = fileTruncate;
    m.xSync = fileSync;
    m.xFileSize = fileSize;
    m.xLock = fileLock;
    m.xUnlock = fileUnlock;
    m.xCheckReservedLock = fileCheckReservedLock;
    m.xFileControl = fileControl;
    m.xSectorSize = fileSectorSize;
    m.xDeviceCharacteristics = fileDeviceCharacteristics;
    m.xShmMap = fileShmMap;
    m.xShmLock = fileShmLock;
    m.xShmBarrier = fileShmBarrier;
    m.xShmUnmap = fileShmUnmap;
    current = impl_;
    sqlite3_vfs_register(&impl_->vfs, 1);
}

PowerCutVfs::~PowerCutVfs()
{
    sqlite3_vfs_unregister(&impl_->vfs);
    sqlite3_vfs_register(impl_->real, 1);
    current = nullptr;
    delete impl_;
}

void PowerCutVfs::strike(DiskFault fault, std::uint64_t operations)
{
    std::lock_guard lock(impl_->mutex);
    impl_->plan.insert_or_assign(impl_->count + operations, fault);
}

bool PowerCutVfs::powerIsOut() const
{
    std::lock_guard lock(impl_->mutex);
    return impl_->powerOut;
}

std::uint64_t PowerCutVfs::operations() const
{
    std::lock_guard lock(impl_->mutex);
    return impl_->count;
}

void PowerCutVfs::restorePower()
{
    std::lock_guard lock(impl_->mutex);
    for (auto& [path, undo] : impl_->unsynced) {
        const int out = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (out < 0) continue;
        for (auto region = undo.regions.rbegin(); region != undo.regions.rend(); ++region) {
            [[maybe_unused]] const auto written =
                pwrite(out, region->second.data(), region->second.size(), static_cast<off_t>(region->first));
        }
        [[maybe_unused]] const auto truncated = ftruncate(out, static_cast<off_t>(undo.size));
        close(out);
    }
    impl_->unsynced.clear();
    impl_->plan.clear();
    impl_->powerOut = false;
}

} // namespace zelvaine::testing
