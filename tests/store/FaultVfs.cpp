#include "tests/store/FaultVfs.h"

#include <sqlite3.h>

namespace ta::test {

namespace {

FaultVfs* g_faults = nullptr;
sqlite3_vfs* g_machine = nullptr;

/// Our file; the machine's file object follows it in memory.
struct File {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* Real(sqlite3_file* file) {
    return reinterpret_cast<File*>(file)->real();
}

int Close(sqlite3_file* file) {
    return Real(file)->pMethods->xClose(Real(file));
}
int Read(sqlite3_file* file, void* bytes, int count, sqlite3_int64 at) {
    if (g_faults->Fails(FaultVfs::Read)) {
        return SQLITE_IOERR_READ;
    }
    return Real(file)->pMethods->xRead(Real(file), bytes, count, at);
}
int Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 at) {
    if (g_faults->Fails(FaultVfs::Write)) {
        return SQLITE_FULL;
    }
    return Real(file)->pMethods->xWrite(Real(file), bytes, count, at);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    if (g_faults->Fails(FaultVfs::Truncate)) {
        return SQLITE_IOERR_TRUNCATE;
    }
    return Real(file)->pMethods->xTruncate(Real(file), size);
}
// Nothing here survives a power cut, so nothing is synced: the tests run faster.
int Sync(sqlite3_file*, int) {
    return g_faults->Fails(FaultVfs::Sync) ? SQLITE_IOERR_FSYNC : SQLITE_OK;
}
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    return Real(file)->pMethods->xFileSize(Real(file), size);
}
int Lock(sqlite3_file* file, int level) {
    return Real(file)->pMethods->xLock(Real(file), level);
}
int Unlock(sqlite3_file* file, int level) {
    return Real(file)->pMethods->xUnlock(Real(file), level);
}
int CheckReservedLock(sqlite3_file* file, int* reserved) {
    return Real(file)->pMethods->xCheckReservedLock(Real(file), reserved);
}
int FileControl(sqlite3_file* file, int operation, void* argument) {
    return Real(file)->pMethods->xFileControl(Real(file), operation, argument);
}
int SectorSize(sqlite3_file* file) {
    return Real(file)->pMethods->xSectorSize(Real(file));
}
int DeviceCharacteristics(sqlite3_file* file) {
    return Real(file)->pMethods->xDeviceCharacteristics(Real(file));
}

// Version 1 leaves out memory maps and the shared memory of the WAL, which the store does not use.
const sqlite3_io_methods kMethods = {1,
                                     Close,
                                     Read,
                                     Write,
                                     Truncate,
                                     Sync,
                                     FileSize,
                                     Lock,
                                     Unlock,
                                     CheckReservedLock,
                                     FileControl,
                                     SectorSize,
                                     DeviceCharacteristics,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr};

bool Exists(const char* path) {
    int exists = 0;
    return g_machine->xAccess(g_machine, path, SQLITE_ACCESS_EXISTS, &exists) == SQLITE_OK &&
           exists != 0;
}

int Open(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    if (path != nullptr && !Exists(path) &&
        (g_faults->IsWriteProtected() || g_faults->Fails(FaultVfs::Make))) {
        return SQLITE_CANTOPEN;
    }
    if (g_faults->IsWriteProtected()) {
        flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    }
    const int code = g_machine->xOpen(g_machine, path, Real(file), flags, outFlags);
    if (code == SQLITE_OK) {
        file->pMethods = &kMethods;
    }
    return code;
}
int DeleteFile(sqlite3_vfs*, const char* path, int) {
    if (g_faults->IsWriteProtected() || g_faults->Fails(FaultVfs::Delete)) {
        return SQLITE_IOERR_DELETE;
    }
    return g_machine->xDelete(g_machine, path, 0);
}
int Access(sqlite3_vfs*, const char* path, int flags, int* result) {
    const int code = g_machine->xAccess(g_machine, path, flags, result);
    if (flags == SQLITE_ACCESS_READWRITE && g_faults->IsWriteProtected()) {
        *result = 0;
    }
    return code;
}
int FullPathname(sqlite3_vfs*, const char* path, int size, char* out) {
    return g_machine->xFullPathname(g_machine, path, size, out);
}
int Randomness(sqlite3_vfs*, int size, char* out) {
    return g_machine->xRandomness(g_machine, size, out);
}
int SleepInstead(sqlite3_vfs*, int microseconds) {
    g_faults->Sleep();
    return microseconds;
}
int CurrentTime(sqlite3_vfs*, double* day) {
    return g_machine->xCurrentTime(g_machine, day);
}
int LastError(sqlite3_vfs*, int, char*) {
    return 0;
}

sqlite3_vfs g_layer{};

}  // namespace

FaultVfs::FaultVfs() {
    g_faults = this;
    g_machine = sqlite3_vfs_find(nullptr);
    g_layer = {};
    g_layer.iVersion = 1;
    g_layer.szOsFile = static_cast<int>(sizeof(File)) + g_machine->szOsFile;
    g_layer.mxPathname = g_machine->mxPathname;
    g_layer.zName = Name();
    g_layer.xOpen = Open;
    g_layer.xDelete = DeleteFile;
    g_layer.xAccess = Access;
    g_layer.xFullPathname = FullPathname;
    g_layer.xRandomness = Randomness;
    g_layer.xSleep = SleepInstead;
    g_layer.xCurrentTime = CurrentTime;
    g_layer.xGetLastError = LastError;
    sqlite3_vfs_register(&g_layer, 0);
}

FaultVfs::~FaultVfs() {
    sqlite3_vfs_unregister(&g_layer);
    g_faults = nullptr;
}

void FaultVfs::FailFrom(int n, Kind kind) {
    m_failFrom = n;
    m_kind = kind;
    m_failed = false;
}

bool FaultVfs::Fails(Operation operation) {
    const bool concerned = m_kind == DiskFull    ? operation == Write
                           : m_kind == ReadError ? operation == Read
                                                 : operation != Read;
    if (m_failFrom == 0 || !concerned) {
        return false;
    }
    if (m_failFrom > 1) {
        --m_failFrom;
        return false;
    }
    m_failed = true;
    return true;
}

void FaultVfs::Sleep() {
    ++m_sleeps;
    if (m_sleep) {
        m_sleep();
    }
}

}  // namespace ta::test
