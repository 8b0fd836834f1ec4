#include "terminal/store/StoreFile.h"

#include "terminal/store/ValueCodec.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Transaction.h>

#include <optional>

#include <sqlite3.h>

namespace ta::terminal {

namespace {

constexpr FileMark kMark{0x54615374, 1};
constexpr SettingKey kCounterKey{SettingKind::CommitCounter};

constexpr const char* kCreateTable =
    "CREATE TABLE settings("
    "kind INTEGER NOT NULL, number INTEGER NOT NULL, name BLOB NOT NULL, sub BLOB NOT NULL, "
    "value BLOB NOT NULL, PRIMARY KEY(kind, number, name, sub)) STRICT, WITHOUT ROWID";
constexpr const char* kSelectAll =
    "SELECT kind, number, name, sub, value FROM settings ORDER BY kind, number, name, sub";
constexpr const char* kSelectCounter = "SELECT value FROM settings WHERE kind = 0";
constexpr const char* kUpsert = "INSERT OR REPLACE INTO settings VALUES(?1, ?2, ?3, ?4, ?5)";
constexpr const char* kDelete =
    "DELETE FROM settings WHERE kind = ?1 AND number = ?2 AND name = ?3 AND sub = ?4";
constexpr const char* kDeleteClass =
    "DELETE FROM settings WHERE kind IN (?1, ?2) AND number = 0 AND name = ?3";

/// A statement that is prepared when it is first wanted, and then kept.
class KeptStatement {
public:
    explicit KeptStatement(const char* sql) : m_sql(sql) {}

    /// The statement, ready to be bound and run.
    SQLite::Statement& Ready(const SQLite::Database& database) {
        if (!m_statement) {
            m_statement.emplace(database, m_sql);
        }
        m_statement->tryReset();
        return *m_statement;
    }

private:
    const char* m_sql;
    std::optional<SQLite::Statement> m_statement;
};

/// The first row of a statement. Lets go of the row, and with it of the file's lock, at the end.
class FirstRow {
public:
    explicit FirstRow(SQLite::Statement& statement) : m_statement(statement) {
        if (!m_statement.executeStep()) {
            ThrowDamaged();
        }
    }
    ~FirstRow() { m_statement.tryReset(); }
    FirstRow(const FirstRow&) = delete;
    FirstRow& operator=(const FirstRow&) = delete;

private:
    SQLite::Statement& m_statement;
};

/// Whether a journal can be made beside the file, which may be another than the path names: SQLite
/// follows links.
bool FolderTakesFiles(const SQLite::Database& database, const char* vfsName) {
    const char* file = sqlite3_db_filename(database.getHandle(), "main");
    const QByteArray folder = QFileInfo(QString::fromUtf8(file)).path().toUtf8();
    sqlite3_vfs* vfs = sqlite3_vfs_find(vfsName);
    int writable = 0;
    return vfs != nullptr &&
           vfs->xAccess(vfs, folder.constData(), SQLITE_ACCESS_READWRITE, &writable) == SQLITE_OK &&
           writable != 0;
}

/// Steps through every row. Without SQLiteCpp's columns, which each share the statement: they would
/// add a tenth to the time that loading takes.
class RowReader {
public:
    explicit RowReader(const SQLite::Database& database) : m_database(database) {
        sqlite3_stmt* select = nullptr;
        m_database.check(
            sqlite3_prepare_v2(m_database.getHandle(), kSelectAll, -1, &select, nullptr));
        m_select.reset(select);
    }

    bool Next() {
        const int code = sqlite3_step(m_select.get());
        m_database.check(code == SQLITE_ROW || code == SQLITE_DONE ? SQLITE_OK : code);
        return code == SQLITE_ROW;
    }
    SettingKey Key() const {
        return {static_cast<SettingKind>(sqlite3_column_int64(m_select.get(), 0)),
                sqlite3_column_int64(m_select.get(), 1), Blob(2), Blob(3)};
    }
    std::string_view Value() const { return Blob(4); }

private:
    std::string_view Blob(int column) const {
        const int size = sqlite3_column_bytes(m_select.get(), column);
        // Most keys have an empty part.
        return size <= 0
                   ? std::string_view()
                   : std::string_view(
                         static_cast<const char*>(sqlite3_column_blob(m_select.get(), column)),
                         static_cast<std::size_t>(size));
    }

    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

    const SQLite::Database& m_database;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_select;
};

void BindKey(SQLite::Statement& statement, const SettingKey& key) {
    statement.bind(1, static_cast<std::int64_t>(key.kind));
    statement.bind(2, key.number);
    BindBlob(statement, 3, key.name);
    BindBlob(statement, 4, key.sub);
}

std::uint32_t CounterIn(std::string_view value) {
    std::uint32_t counter = 0;
    if (!DecodeValue(value, counter)) {
        ThrowDamaged();
    }
    return counter;
}

}  // namespace

struct StoreFile::Connection {
    Connection(const QString& path, const char* vfs)
        : database(OpenSqliteFile(path, vfs)),
          writeProtected(sqlite3_db_readonly(database.getHandle(), "main") != 0 ||
                         !FolderTakesFiles(database, vfs)) {}

    SQLite::Database database;
    bool writeProtected;
    // The statements end before the database does.
    KeptStatement selectCounter{kSelectCounter};
    KeptStatement dataVersion{"PRAGMA data_version"};
    KeptStatement upsert{kUpsert};
    KeptStatement remove{kDelete};
    KeptStatement removeClass{kDeleteClass};
};

namespace {

/// Keeps statements from waiting for another process's lock.
class Impatience {
public:
    explicit Impatience(SQLite::Database& database) : m_handle(database.getHandle()) {
        sqlite3_busy_timeout(m_handle, 0);
    }
    ~Impatience() { sqlite3_busy_timeout(m_handle, kBusyTimeout); }
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;

private:
    sqlite3* m_handle;
};

}  // namespace

/// Begins to write; throws SQLITE_SCHEMA when a newer version has taken over.
class StoreFile::WriteTransaction : public SQLite::Transaction {
public:
    explicit WriteTransaction(SQLite::Database& database)
        : SQLite::Transaction(database, SQLite::TransactionBehavior::IMMEDIATE) {
        if (database.execAndGet("PRAGMA user_version").getInt() != kMark.version) {
            throw SQLite::Exception("the store is of a newer version", SQLITE_SCHEMA);
        }
    }
};

StoreFile::StoreFile() = default;
StoreFile::StoreFile(StoreFile&&) noexcept = default;
StoreFile& StoreFile::operator=(StoreFile&&) noexcept = default;
StoreFile::~StoreFile() = default;

int StoreFile::Open(const QString& path, const char* vfs, FileContent& content) {
    return CodeOf([&] {
        m_connection = std::make_unique<Connection>(path, vfs);
        content = ContentOf(m_connection->database, kMark);
    });
}

bool StoreFile::IsWriteProtected() const {
    return m_connection->writeProtected;
}

int StoreFile::Create() {
    return CodeOf([&] {
        SQLite::Database& database = m_connection->database;
        SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
        if (database.execAndGet("SELECT count(*) FROM sqlite_schema").getInt() != 0) {
            return;
        }
        PutMark(database, kMark);
        database.exec(kCreateTable);
        // From a random start, so that no two stores at one path are taken for each other.
        PutCounter(QRandomGenerator::global()->generate());
        transaction.commit();
    });
}

int StoreFile::Read(CommittedRows& rows) {
    return CodeOf([&] {
        RowReader reader(m_connection->database);
        // The counter's row is the first one.
        if (!reader.Next() || reader.Key() != kCounterKey) {
            ThrowDamaged();
        }
        CommittedRows fresh;
        fresh.SetCounter(CounterIn(reader.Value()));
        if (fresh.Counter() == rows.Counter() && !rows.Rows().empty()) {
            return;
        }
        while (reader.Next()) {
            if (!fresh.Append(reader.Key(), reader.Value())) {
                ThrowDamaged();
            }
        }
        rows = std::move(fresh);
    });
}

int StoreFile::Write(const PendingWrites& pending, const CommittedRows& known, Commit& commit) {
    return CodeOf([&] {
        WriteTransaction transaction(m_connection->database);
        const std::uint32_t counter = FindCounter();
        commit.knownWasCurrent = counter == known.Counter();
        std::vector<PendingRow> changes;
        for (const auto& row : pending.All()) {
            const auto old = pending.FindBelow(row.first.View(), known);
            if (!commit.knownWasCurrent || old != row.second) {
                changes.push_back(&row);
            }
        }
        commit.changed = !changes.empty() || !pending.RemovedClasses().empty();
        if (!commit.changed) {
            return;
        }
        pending.ForEachOver(known,
                            [&](const SettingRow& row) { commit.rows.Append(row.key, row.value); });
        // When most rows change, an emptied table is filled faster than row after row replaced.
        if (commit.knownWasCurrent && changes.size() > known.Rows().size() / 2) {
            WriteAll(commit.rows);
        } else {
            WriteChanges(pending, changes);
        }
        PutCounter(counter + 1);
        commit.rows.SetCounter(commit.knownWasCurrent ? counter + 1 : known.Counter());
        transaction.commit();
    });
}

void StoreFile::WriteAll(const CommittedRows& rows) {
    m_connection->database.exec("DELETE FROM settings");
    for (const SettingRow& row : rows.Rows()) {
        Upsert(row.key, row.value);
    }
}

void StoreFile::WriteChanges(const PendingWrites& pending, const std::vector<PendingRow>& changes) {
    for (const CString& chartClass : pending.RemovedClasses()) {
        SQLite::Statement& remove = m_connection->removeClass.Ready(m_connection->database);
        remove.bind(1, static_cast<std::int64_t>(SettingKind::TrendLines));
        remove.bind(2, static_cast<std::int64_t>(SettingKind::TrendLineDate));
        BindBlob(remove, 3, chartClass);
        remove.exec();
    }
    for (const PendingRow change : changes) {
        const auto& [owned, value] = *change;
        if (value) {
            Upsert(owned.View(), *value);
            continue;
        }
        SQLite::Statement& remove = m_connection->remove.Ready(m_connection->database);
        BindKey(remove, owned.View());
        remove.exec();
    }
}

int StoreFile::Restore(CommittedRows& rows) {
    return CodeOf([&] {
        WriteTransaction transaction(m_connection->database);
        const std::uint32_t counter = FindCounter();
        if (counter != rows.Counter()) {
            return;
        }
        WriteAll(rows);
        PutCounter(counter + 1);
        transaction.commit();
        rows.SetCounter(counter + 1);
    });
}

int StoreFile::Touch() {
    return CodeOf([&] {
        WriteTransaction transaction(m_connection->database);
        PutCounter(FindCounter() + 1);
        transaction.commit();
    });
}

int StoreFile::DataVersion(int& version) {
    const Impatience impatience(m_connection->database);
    return CodeOf([&] {
        SQLite::Statement& select = m_connection->dataVersion.Ready(m_connection->database);
        const FirstRow row(select);
        version = select.getColumn(0).getInt();
    });
}

int StoreFile::ReadCounter(std::uint32_t& counter) {
    const Impatience impatience(m_connection->database);
    return CodeOf([&] { counter = FindCounter(); });
}

bool StoreFile::WasReplaced() const {
    int moved = 0;
    return IsOpen() &&
           sqlite3_file_control(m_connection->database.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED,
                                &moved) == SQLITE_OK &&
           moved != 0;
}

std::uint32_t StoreFile::FindCounter() {
    SQLite::Statement& select = m_connection->selectCounter.Ready(m_connection->database);
    const FirstRow row(select);
    return CounterIn(BlobAt(select, 0));
}

void StoreFile::PutCounter(std::uint32_t counter) {
    ValueWriter writer;
    writer.Put(counter);
    Upsert(kCounterKey, writer.Bytes());
}

void StoreFile::Upsert(const SettingKey& key, std::string_view value) {
    SQLite::Statement& upsert = m_connection->upsert.Ready(m_connection->database);
    BindKey(upsert, key);
    BindBlob(upsert, 5, value);
    upsert.exec();
}

}  // namespace ta::terminal
