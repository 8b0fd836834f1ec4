#include "terminal/sqlite/SqliteFile.h"

#include "platform/Clock.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <string>

#include <sqlite3.h>

namespace ta::terminal {

namespace {

/// The journals first: one left beside a new file would be played back into it.
constexpr const char* kFileSuffixes[] = {"-journal", "-wal", "-shm", ""};

/// SQLite reads a page that is cut short as if zeros followed; we call such a file damaged. For
/// use inside a transaction, when no one else is writing.
void CheckWholePages(SQLite::Database& database) {
    const std::int64_t pageSize = database.execAndGet("PRAGMA page_size").getInt64();
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK) {
        throw SQLite::Exception("the file's size cannot be read", SQLITE_IOERR_FSTAT);
    }
    if (size % pageSize != 0) {
        ThrowDamaged();
    }
}

bool NameIsFree(const QString& path) {
    return std::ranges::none_of(
        kFileSuffixes, [&](const char* suffix) { return QFileInfo::exists(path + suffix); });
}

QString DatedName(const QString& path, const char* why) {
    const CalendarDate today = LocalToday();
    const QDate date(today.year, today.month, today.day);
    const QString dated = path + '.' + why + '-' + date.toString(Qt::ISODate);
    QString name = dated;
    for (int i = 2; !NameIsFree(name); ++i) {
        name = dated + '-' + QString::number(i);
    }
    return name;
}

}  // namespace

SQLite::Database OpenSqliteFile(const QString& path, const char* vfs) {
    // One thread uses a connection, so it needs no mutexes.
    constexpr int kFlags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    SQLite::Database database(path.toUtf8().constData(), kFlags, kBusyTimeout, vfs);
    database.exec("PRAGMA synchronous = EXTRA");
    return database;
}

FileContent ContentOf(SQLite::Database& database, const FileMark& ours) {
    const SQLite::Transaction transaction(database);
    const int application = database.execAndGet("PRAGMA application_id").getInt();
    const int version = database.execAndGet("PRAGMA user_version").getInt();
    CheckWholePages(database);
    if (application == ours.application && version >= ours.version) {
        return version == ours.version ? FileContent::Ours : FileContent::Newer;
    }
    const bool empty = application == 0 && version == 0 &&
                       database.execAndGet("SELECT count(*) FROM sqlite_schema").getInt() == 0;
    return empty ? FileContent::Empty : FileContent::Foreign;
}

void PutMark(SQLite::Database& database, const FileMark& mark) {
    database.exec("PRAGMA application_id = " + std::to_string(mark.application));
    database.exec("PRAGMA user_version = " + std::to_string(mark.version));
}

std::string_view BlobAt(const SQLite::Statement& statement, int column) {
    const SQLite::Column blob = statement.getColumn(column);
    const auto* bytes = static_cast<const char*>(blob.getBlob());
    return bytes == nullptr ? std::string_view()
                            : std::string_view(bytes, static_cast<std::size_t>(blob.getBytes()));
}

void BindBlob(SQLite::Statement& statement, int parameter, std::string_view bytes) {
    // A null pointer would bind NULL.
    statement.bindNoCopy(parameter, bytes.empty() ? "" : static_cast<const void*>(bytes.data()),
                         static_cast<int>(bytes.size()));
}

bool IsDamage(int code) {
    // Our statements are fixed: SQLITE_ERROR means a schema that is not ours.
    const int primary = code & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB || primary == SQLITE_ERROR;
}

void ThrowDamaged() {
    throw SQLite::Exception(sqlite3_errstr(SQLITE_CORRUPT), SQLITE_CORRUPT);
}

QString MoveAside(const QString& path, const char* why) {
    const QString name = DatedName(path, why);
    for (const char* suffix : kFileSuffixes) {
        // QFile::rename never overwrites.
        if (QFileInfo::exists(path + suffix) && !QFile::rename(path + suffix, name + suffix)) {
            return {};
        }
    }
    return name;
}

}  // namespace ta::terminal
