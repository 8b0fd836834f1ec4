#pragma once

#include "terminal/sqlite/SqliteFile.h"
#include "terminal/store/CommittedRows.h"
#include "terminal/store/PendingWrites.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace ta::terminal {

/// The store's SQLite file: one table of rows. A row counts the commits, so that each process sees
/// when another one has committed. Results are SQLite's extended codes; nothing of SQLite's is
/// thrown. What is not opened yet must not be asked for more than IsOpen and Open.
class StoreFile {
public:
    StoreFile();
    StoreFile(StoreFile&&) noexcept;
    StoreFile& operator=(StoreFile&&) noexcept;
    ~StoreFile();

    /// Opens the file, which is made when missing, as empty. Reads only what tells its content.
    /// `vfs` names SQLite's file layer; null for the machine's.
    int Open(const QString& path, const char* vfs, FileContent& content);
    void Close() { *this = StoreFile(); }
    bool IsOpen() const { return m_connection != nullptr; }
    /// The file system does not let us write. The folder counts: a commit makes a journal in it.
    bool IsWriteProtected() const;
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

private:
    using PendingRow = const PendingWrites::Values::value_type*;

    struct Connection;
    class WriteTransaction;

    std::uint32_t FindCounter();
    void PutCounter(std::uint32_t counter);
    void WriteChanges(const PendingWrites& pending, const std::vector<PendingRow>& changes);
    void WriteAll(const CommittedRows& rows);
    void Upsert(const SettingKey& key, std::string_view value);

    std::unique_ptr<Connection> m_connection;
};

}  // namespace ta::terminal
