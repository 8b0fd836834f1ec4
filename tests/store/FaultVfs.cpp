#include "tests/store/FaultVfs.h"

#include <map>

#include <sqlite3.h>

namespace ta::test {

namespace {

using Methods = sqlite3_io_methods;

FaultVfs* g_faults = nullptr;
sqlite3_vfs* g_machine = nullptr;
/// The machine's methods of journals and of databases differ in locking and closing alone, which
/// are not ours: these serve for both.
const Methods* g_real = nullptr;
const sqlite3_file* g_journal = nullptr;
sqlite3_vfs g_layer{};

int Read(sqlite3_file* file, void* bytes, int count, sqlite3_int64 at) {
    const bool fails = g_faults->Fails(FaultVfs::Read);
    return fails ? SQLITE_IOERR_READ : g_real->xRead(file, bytes, count, at);
}
int Write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 at) {
    g_faults->Note(file == g_journal ? 'j' : 'w');
    return g_faults->Fails(FaultVfs::Write) ? SQLITE_FULL : g_real->xWrite(file, bytes, count, at);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    const bool fails = g_faults->Fails(FaultVfs::Truncate);
    return fails ? SQLITE_IOERR_TRUNCATE : g_real->xTruncate(file, size);
}
// Nothing here survives a power cut, so nothing is synced: the tests run faster.
int Sync(sqlite3_file* file, int) {
    g_faults->Note(file == g_journal ? 'J' : 'W');
    return g_faults->Fails(FaultVfs::Sync) ? SQLITE_IOERR_FSYNC : SQLITE_OK;
}

/// The machine's methods with ours in them.
const Methods* Layered(const Methods* machine) {
    static std::map<const Methods*, Methods> layered;
    Methods& methods = layered[machine] = *machine;
    // Version 1 leaves out memory maps and the shared memory of the WAL.
    methods.iVersion = 1;
    methods.xRead = Read;
    methods.xWrite = Write;
    methods.xTruncate = Truncate;
    methods.xSync = Sync;
    g_real = machine;
    return &methods;
}

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
    const int code = g_machine->xOpen(g_machine, path, file, flags, outFlags);
    if (code == SQLITE_OK) {
        file->pMethods = Layered(file->pMethods);
        g_journal = (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0 ? file : g_journal;
    }
    return code;
}
int DeleteFile(sqlite3_vfs*, const char* path, int syncFolder) {
    g_faults->Note(syncFolder != 0 ? 'D' : 'd');
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
int SleepInstead(sqlite3_vfs*, int microseconds) {
    g_faults->Sleep();
    return microseconds;
}

}  // namespace

FaultVfs::FaultVfs() {
    g_faults = this;
    g_machine = sqlite3_vfs_find(nullptr);
    g_layer = *g_machine;
    g_layer.iVersion = 1;
    g_layer.pNext = nullptr;
    g_layer.zName = Name();
    g_layer.xOpen = Open;
    g_layer.xDelete = DeleteFile;
    g_layer.xAccess = Access;
    g_layer.xSleep = SleepInstead;
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

void FaultVfs::Note(char what) {
    if (m_notes.empty() || m_notes.back() != what) {
        m_notes += what;
    }
}

}  // namespace ta::test
