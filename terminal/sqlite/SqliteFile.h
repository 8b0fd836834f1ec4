#pragma once

#include <QString>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Statement.h>

#include <cstdint>
#include <string_view>

/// What the terminal's SQLite files have in common. Everything here throws SQLite::Exception, with
/// SQLite's extended code, unless it says otherwise.
namespace ta::terminal {

/// Says in the file's head whose it is.
struct FileMark {
    std::int32_t application = 0;  ///< SQLite's application id
    std::int32_t version = 0;      ///< of the tables; SQLite's user version
};

enum class FileContent {
    Empty,    ///< nothing at all: a new file
    Ours,     ///< of this version
    Newer,    ///< ours, of a version that this program does not know
    Foreign,  ///< an SQLite file of another program
};

/// How long a statement waits for another process's lock, in milliseconds.
inline constexpr int kBusyTimeout = 5000;

/// Opens the file, which is made when missing and read only where it cannot be written. `vfs` names
/// SQLite's file layer; null for the machine's. For one thread.
///
/// The rollback journal is deleted at commit and its folder synced (synchronous=EXTRA): a commit
/// that returned survives a power cut, and between commits the file is a single one that can be
/// copied, and be read on a read-only medium.
SQLite::Database OpenSqliteFile(const QString& path, const char* vfs = nullptr);

/// Whose file it is. A file that does not end with a page is damaged (SQLITE_CORRUPT).
FileContent ContentOf(SQLite::Database& database, const FileMark& ours);
/// Inside the transaction that makes the tables.
void PutMark(SQLite::Database& database, const FileMark& mark);

/// The bytes of a column (from 0), valid until the statement's next step.
std::string_view BlobAt(const SQLite::Statement& statement, int column);
/// Binds bytes, which must live until the statement is reset, to a parameter (from 1).
void BindBlob(SQLite::Statement& statement, int parameter, std::string_view bytes);

/// The code says that the file's bytes are none of ours.
bool IsDamage(int code);

/// Throws that the file's rows are not as we write them (SQLITE_CORRUPT).
[[noreturn]] void ThrowDamaged();

/// Moves a file and its journals to a name in its folder that nothing has yet, "FILE.why-date".
/// Returns that name, or nothing when the file could not be moved. Throws nothing of SQLite's.
QString MoveAside(const QString& path, const char* why);

/// Runs `operation` and gives SQLite's code of what it threw, or 0 (SQLITE_OK).
template <typename Operation>
int CodeOf(Operation operation) {
    try {
        operation();
    } catch (const SQLite::Exception& error) {
        return error.getErrorCode();
    }
    return 0;
}

}  // namespace ta::terminal
