#include "terminal/store/StoreFile.h"

#include "terminal/store/ValueCodec.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <sqlite3.h>

namespace ta::terminal {

namespace {

constexpr int kApplicationId = 0x54615374;
constexpr int kBusyTimeout = 5000;  // milliseconds
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

/// Whether a journal can be made beside the file, which may be another than the path names: SQLite
/// follows links.
bool FolderTakesFiles(const SqliteDatabase& database, const char* vfsName) {
    const char* file = sqlite3_db_filename(database.Handle(), "main");
    const QByteArray folder = QFileInfo(QString::fromUtf8(file)).path().toUtf8();
    sqlite3_vfs* vfs = sqlite3_vfs_find(vfsName);
    int writable = 0;
    return vfs != nullptr &&
           vfs->xAccess(vfs, folder.constData(), SQLITE_ACCESS_READWRITE, &writable) == SQLITE_OK &&
           writable != 0;
}

int ReadInteger(const SqliteDatabase& database, const char* sql, std::int64_t& value) {
    SqliteStatement statement;
    int code = statement.Prepare(database, sql);
    if (code == SQLITE_OK) {
        code = statement.Step();
    }
    if (code != SQLITE_ROW) {
        return code == SQLITE_DONE ? SQLITE_CORRUPT : code;
    }
    value = statement.Integer(0);
    return SQLITE_OK;
}

/// SQLite reads a page that is cut short as if zeros followed; we call such a file damaged. For
/// use inside a transaction, when no one else is writing.
int CheckWholePages(const SqliteDatabase& database) {
    std::int64_t pageSize = 0;
    const int code = ReadInteger(database, "PRAGMA page_size", pageSize);
    if (code != SQLITE_OK) {
        return code;
    }
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    sqlite3_file_control(database.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
        return SQLITE_IOERR_FSTAT;
    }
    return size % pageSize == 0 ? SQLITE_OK : SQLITE_CORRUPT;
}

/// Lowers the connection's patience for a moment.
class Impatience {
public:
    explicit Impatience(SqliteDatabase& database) : m_database(database) {
        m_database.SetBusyTimeout(0);
    }
    ~Impatience() { m_database.SetBusyTimeout(kBusyTimeout); }
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;

private:
    SqliteDatabase& m_database;
};

}  // namespace

int StoreFile::Open(const QString& path, const char* vfs, Content& content) {
    const int code =
        m_database.Open(path.toStdString(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, vfs);
    if (code != SQLITE_OK) {
        return code;
    }
    m_database.SetBusyTimeout(kBusyTimeout);
    m_writeProtected =
        sqlite3_db_readonly(m_database.Handle(), "main") != 0 || !FolderTakesFiles(m_database, vfs);
    const int synced = m_database.Execute("PRAGMA synchronous = EXTRA");
    return synced == SQLITE_OK ? Identify(content) : synced;
}

int StoreFile::Identify(Content& content) {
    SqliteTransaction transaction(m_database);
    std::int64_t application = 0;
    std::int64_t version = 0;
    std::int64_t tables = 0;
    int code = transaction.BeginRead();
    if (code == SQLITE_OK) {
        code = ReadInteger(m_database, "PRAGMA application_id", application);
    }
    if (code == SQLITE_OK) {
        code = ReadInteger(m_database, "PRAGMA user_version", version);
    }
    if (code == SQLITE_OK) {
        code = CheckWholePages(m_database);
    }
    if (code == SQLITE_OK && application == 0) {
        code = ReadInteger(m_database, "SELECT count(*) FROM sqlite_schema", tables);
    }
    if (code != SQLITE_OK) {
        return code;
    }
    if (application == kApplicationId && version >= kSchemaVersion) {
        content = version == kSchemaVersion ? Content::Ours : Content::Newer;
    } else {
        const bool empty = application == 0 && version == 0 && tables == 0;
        content = empty ? Content::Empty : Content::Foreign;
    }
    return SQLITE_OK;
}

int StoreFile::Create() {
    SqliteTransaction transaction(m_database);
    int code = transaction.BeginWrite();
    std::int64_t tables = 0;
    if (code == SQLITE_OK) {
        code = ReadInteger(m_database, "SELECT count(*) FROM sqlite_schema", tables);
    }
    if (code != SQLITE_OK || tables != 0) {
        return code;
    }
    const std::string marks = "PRAGMA application_id = " + std::to_string(kApplicationId) +
                              "; PRAGMA user_version = " + std::to_string(kSchemaVersion);
    code = m_database.Execute(marks.c_str());
    if (code == SQLITE_OK) {
        code = m_database.Execute(kCreateTable);
    }
    // From a random start, so that no two stores at one path are taken for each other.
    std::uint32_t counter = QRandomGenerator::global()->generate();
    if (code == SQLITE_OK) {
        code = BumpCounter(counter);
    }
    return code == SQLITE_OK ? transaction.Commit() : code;
}

int StoreFile::Read(CommittedRows& rows) {
    SqliteStatement select;
    int code = select.Prepare(m_database, kSelectAll);
    if (code != SQLITE_OK) {
        return code;
    }
    CommittedRows fresh;
    bool counted = false;
    while ((code = select.Step()) == SQLITE_ROW) {
        const SettingKey key{static_cast<SettingKind>(select.Integer(0)), select.Integer(1),
                             select.Blob(2), select.Blob(3)};
        if (!counted) {  // the counter's row is the first one
            std::uint32_t counter = 0;
            if (key != kCounterKey || !DecodeValue(select.Blob(4), counter)) {
                return SQLITE_CORRUPT;
            }
            if (counter == rows.Counter() && !rows.Rows().empty()) {
                return SQLITE_OK;
            }
            fresh.SetCounter(counter);
            counted = true;
        } else if (!fresh.Append(key, select.Blob(4))) {
            return SQLITE_CORRUPT;
        }
    }
    if (code != SQLITE_DONE || !counted) {
        return code == SQLITE_DONE ? SQLITE_CORRUPT : code;
    }
    rows = std::move(fresh);
    return SQLITE_OK;
}

int StoreFile::Write(const PendingWrites& pending, const CommittedRows& known, Commit& commit) {
    SqliteTransaction transaction(m_database);
    std::uint32_t counter = 0;
    int code = BeginWrite(transaction, counter);
    if (code != SQLITE_OK) {
        return code;
    }
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
        return SQLITE_OK;
    }
    pending.ForEachOver(known,
                        [&](const SettingRow& row) { commit.rows.Append(row.key, row.value); });
    // When most rows change, an emptied table is filled faster than row after row replaced.
    const bool most = changes.size() > known.Rows().size() / 2;
    code = commit.knownWasCurrent && most ? WriteAll(commit.rows) : WriteChanges(pending, changes);
    if (code == SQLITE_OK) {
        code = BumpCounter(counter);
    }
    commit.rows.SetCounter(commit.knownWasCurrent ? counter : known.Counter());
    return code == SQLITE_OK ? transaction.Commit() : code;
}

int StoreFile::WriteAll(const CommittedRows& rows) {
    int code = m_database.Execute("DELETE FROM settings");
    for (auto row = rows.Rows().begin(); code == SQLITE_OK && row != rows.Rows().end(); ++row) {
        code = Upsert(row->key, row->value);
    }
    return code;
}

int StoreFile::WriteChanges(const PendingWrites& pending, const std::vector<PendingRow>& changes) {
    int code = SQLITE_OK;
    for (const CString& chartClass : pending.RemovedClasses()) {
        code = code == SQLITE_OK ? DeleteClass(chartClass) : code;
    }
    for (auto change = changes.begin(); code == SQLITE_OK && change != changes.end(); ++change) {
        const auto& [owned, value] = **change;
        code = value ? Upsert(owned.View(), *value) : Delete(owned.View());
    }
    return code;
}

int StoreFile::Restore(CommittedRows& rows) {
    SqliteTransaction transaction(m_database);
    std::uint32_t counter = 0;
    int code = BeginWrite(transaction, counter);
    if (code == SQLITE_OK && counter != rows.Counter()) {
        return SQLITE_OK;
    }
    if (code == SQLITE_OK) {
        code = WriteAll(rows);
    }
    if (code == SQLITE_OK) {
        code = BumpCounter(counter);
    }
    if (code == SQLITE_OK) {
        code = transaction.Commit();
    }
    if (code == SQLITE_OK) {
        rows.SetCounter(counter);
    }
    return code;
}

int StoreFile::BeginWrite(SqliteTransaction& transaction, std::uint32_t& counter) {
    int code = PrepareStatements();
    if (code == SQLITE_OK) {
        code = transaction.BeginWrite();
    }
    std::int64_t version = kSchemaVersion;
    if (code == SQLITE_OK) {
        code = ReadInteger(m_database, "PRAGMA user_version", version);
    }
    if (code == SQLITE_OK && version != kSchemaVersion) {
        return SQLITE_SCHEMA;
    }
    return code == SQLITE_OK ? FindCounter(counter) : code;
}

int StoreFile::Touch() {
    SqliteTransaction transaction(m_database);
    std::uint32_t counter = 0;
    int code = BeginWrite(transaction, counter);
    if (code == SQLITE_OK) {
        code = BumpCounter(counter);
    }
    return code == SQLITE_OK ? transaction.Commit() : code;
}

int StoreFile::DataVersion(int& version) {
    const Impatience impatience(m_database);
    int code = SQLITE_OK;
    if (!m_dataVersion.IsPrepared()) {
        code = m_dataVersion.Prepare(m_database, "PRAGMA data_version");
    }
    if (code == SQLITE_OK) {
        code = m_dataVersion.Step();
    }
    if (code != SQLITE_ROW) {
        m_dataVersion.Reset();
        return code == SQLITE_DONE ? SQLITE_CORRUPT : code;
    }
    version = static_cast<int>(m_dataVersion.Integer(0));
    m_dataVersion.Reset();
    return SQLITE_OK;
}

int StoreFile::ReadCounter(std::uint32_t& counter) {
    const Impatience impatience(m_database);
    return FindCounter(counter);
}

bool StoreFile::WasReplaced() const {
    int moved = 0;
    return IsOpen() &&
           sqlite3_file_control(m_database.Handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) ==
               SQLITE_OK &&
           moved != 0;
}

bool StoreFile::IsDamage(int code) {
    // Our statements are fixed: SQLITE_ERROR means a schema that is not ours.
    const int primary = code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB || primary == SQLITE_ERROR;
}

int StoreFile::PrepareStatements() {
    if (m_deleteClass.IsPrepared()) {
        return SQLITE_OK;
    }
    int code = m_upsert.Prepare(m_database, kUpsert);
    if (code == SQLITE_OK) {
        code = m_delete.Prepare(m_database, kDelete);
    }
    if (code == SQLITE_OK) {
        code = m_deleteClass.Prepare(m_database, kDeleteClass);
    }
    return code;
}

int StoreFile::FindCounter(std::uint32_t& counter) {
    int code = m_counter.IsPrepared() ? SQLITE_OK : m_counter.Prepare(m_database, kSelectCounter);
    if (code == SQLITE_OK) {
        code = m_counter.Step();
        const bool found = code == SQLITE_ROW && DecodeValue(m_counter.Blob(0), counter);
        m_counter.Reset();
        const bool ended = code == SQLITE_ROW || code == SQLITE_DONE;
        code = found ? SQLITE_OK : ended ? SQLITE_CORRUPT : code;
    }
    return code;
}

int StoreFile::BumpCounter(std::uint32_t& counter) {
    ++counter;
    ValueWriter writer;
    writer.Put(counter);
    const int code = PrepareStatements();
    return code == SQLITE_OK ? Upsert(kCounterKey, writer.Bytes()) : code;
}

int StoreFile::Upsert(const SettingKey& key, std::string_view value) {
    m_upsert.Bind(1, static_cast<std::int64_t>(key.kind));
    m_upsert.Bind(2, key.number);
    m_upsert.Bind(3, key.name);
    m_upsert.Bind(4, key.sub);
    const int code = m_upsert.Bind(5, value);
    return code == SQLITE_OK ? m_upsert.Run() : code;
}

int StoreFile::Delete(const SettingKey& key) {
    m_delete.Bind(1, static_cast<std::int64_t>(key.kind));
    m_delete.Bind(2, key.number);
    m_delete.Bind(3, key.name);
    m_delete.Bind(4, key.sub);
    return m_delete.Run();
}

int StoreFile::DeleteClass(std::string_view chartClass) {
    m_deleteClass.Bind(1, static_cast<std::int64_t>(SettingKind::TrendLines));
    m_deleteClass.Bind(2, static_cast<std::int64_t>(SettingKind::TrendLineDate));
    m_deleteClass.Bind(3, chartClass);
    return m_deleteClass.Run();
}

}  // namespace ta::terminal
