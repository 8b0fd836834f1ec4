#pragma once

#include <functional>
#include <string>
#include <utility>

struct sqlite3_vfs;

namespace ta::test {

/// A layer over the machine's SQLite file layer that fails when told. One at a time.
///
///     FaultVfs faults;
///     store.Open(path, faults.Name());
///     faults.FailFrom(3, FaultVfs::DiskFull);
class FaultVfs {
public:
    enum Kind {
        DiskFull,   ///< writes fail as on a full disk; deleting and cutting short still work
        DeadDisk,   ///< writing, syncing, cutting short, deleting and making a file fail
        ReadError,  ///< reading fails
    };

    FaultVfs();
    ~FaultVfs();
    FaultVfs(const FaultVfs&) = delete;
    FaultVfs& operator=(const FaultVfs&) = delete;

    static const char* Name() { return "ta_fault"; }

    /// The n-th operation of the kind from now (1 is the next) and all later ones fail.
    void FailFrom(int n, Kind kind);
    void Heal() { m_failFrom = 0; }
    /// True when an operation has failed since FailFrom.
    bool HasFailed() const { return m_failed; }

    /// The file system says that nothing may be written, as for a user without permission.
    void SetWriteProtected(bool on) { m_writeProtected = on; }
    /// Called instead of waiting for a lock.
    void SetSleep(std::function<void()> sleep) { m_sleep = std::move(sleep); }
    int Sleeps() const { return m_sleeps; }

    /// What was done to the disk since the last call, repetitions left out: "j" writes to the
    /// journal, "w" to the store, "J" and "W" their syncs, "d" a file deleted, "D" with its folder
    /// synced.
    std::string TakeNotes() { return std::exchange(m_notes, {}); }

    // For the layer.
    enum Operation { Read, Write, Sync, Truncate, Delete, Make };
    bool Fails(Operation operation);
    bool IsWriteProtected() const { return m_writeProtected; }
    void Sleep();
    void Note(char what);

private:
    int m_failFrom = 0;
    Kind m_kind = DiskFull;
    bool m_failed = false;
    bool m_writeProtected = false;
    int m_sleeps = 0;
    std::function<void()> m_sleep;
    std::string m_notes;
};

}  // namespace ta::test
