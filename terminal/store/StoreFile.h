#pragma once

#include "terminal/store/CommittedRows.h"
#include "terminal/store/PendingWrites.h"
#include "terminal/store/SqliteDatabase.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace ta::terminal {

/// The store's SQLite file: one table of rows, marked as ours by an application id, with the
/// schema version as user version. A row counts the commits, so that each process sees when
/// another one has committed.
///
/// The rollback journal is deleted at commit and its folder synced (synchronous=EXTRA): a commit
/// that returned survives a power cut, and between commits the store is a single file that can be
/// copied, and be read on a read-only medium. Results are SQLite's extended codes.
class StoreFile {
public:
    static constexpr int kSchemaVersion = 1;

    enum class Content {
        Empty,    ///< nothing at all: a new file
        Ours,     ///< of this version
        Newer,    ///< ours, of a version that this program does not know
        Foreign,  ///< an SQLite file of another program
    };

    /// Opens the file, which is made when missing, as empty. Reads only what tells its content.
    /// `vfs` names SQLite's file layer; null for the machine's.
    int Open(const QString& path, const char* vfs, Content& content);
    void Close() { *this = StoreFile(); }
    bool IsOpen() const { return m_database.IsOpen(); }
    /// The file system does not let us write. The folder counts: a commit makes a journal in it.
    bool IsWriteProtected() const { return m_writeProtected; }
    /// Makes the table, unless another process was first.
    int Create();

    /// Replaces `rows` by the newest committed state, unless it holds that state already.
    int Read(CommittedRows& rows);

    struct Commit {
        /// The file was still in the state that the caller knew.
        bool knownWasCurrent = false;
        /// Something had to be written.
        bool changed = false;
        /// When something had: the caller's state with the pending writes, and the counter of the
        /// commit. If another commit came between, this is no state of the file; the counter is
        /// then the old one.
        CommittedRows rows;
    };
    /// Writes `pending` in one transaction. Values that `known` has already are left out when the
    /// file still is in that state.
    int Write(const PendingWrites& pending, const CommittedRows& known, Commit& commit);
    /// Makes the file hold exactly `rows`, which get the counter of that commit. Does nothing when
    /// another process has committed since the state that the counter of `rows` names.
    int Restore(CommittedRows& rows);
    /// A commit that changes no setting.
    int Touch();

    // These two do not wait for another process's lock.
    /// A number that changes when another connection commits.
    int DataVersion(int& version);
    int ReadCounter(std::uint32_t& counter);

    /// The path leads to another file now, or to none.
    bool WasReplaced() const;

    /// The code says that the file's bytes are no store of ours.
    static bool IsDamage(int code);

private:
    using PendingRow = const PendingWrites::Values::value_type*;

    int Identify(Content& content);
    int PrepareStatements();
    /// Begins a write, gives the counter found; SQLITE_SCHEMA when a newer version has taken over.
    int BeginWrite(SqliteTransaction& transaction, std::uint32_t& counter);
    int FindCounter(std::uint32_t& counter);
    int BumpCounter(std::uint32_t& counter);
    int WriteChanges(const PendingWrites& pending, const std::vector<PendingRow>& changes);
    int WriteAll(const CommittedRows& rows);
    int Upsert(const SettingKey& key, std::string_view value);
    int Delete(const SettingKey& key);
    int DeleteClass(std::string_view chartClass);

    SqliteDatabase m_database;
    SqliteStatement m_counter;
    SqliteStatement m_dataVersion;
    SqliteStatement m_upsert;
    SqliteStatement m_delete;
    SqliteStatement m_deleteClass;
    bool m_writeProtected = false;
};

}  // namespace ta::terminal
