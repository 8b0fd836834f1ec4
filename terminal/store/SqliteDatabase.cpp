#include "terminal/store/SqliteDatabase.h"

#include <sqlite3.h>

namespace ta::terminal {

int SqliteDatabase::Open(const std::string& path, int flags, const char* vfs) {
    sqlite3* handle = nullptr;
    // One thread uses a connection, so it needs no mutexes.
    const int code = sqlite3_open_v2(path.c_str(), &handle,
                                     flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, vfs);
    m_handle.reset(handle);
    if (code != SQLITE_OK) {
        Close();
    }
    return code;
}

int SqliteDatabase::Execute(const char* sql) {
    return sqlite3_exec(Handle(), sql, nullptr, nullptr, nullptr);
}

void SqliteDatabase::SetBusyTimeout(int milliseconds) {
    sqlite3_busy_timeout(Handle(), milliseconds);
}

void SqliteDatabase::Closer::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

int SqliteStatement::Prepare(const SqliteDatabase& database, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(database.Handle(), sql, -1, SQLITE_PREPARE_PERSISTENT,
                                        &statement, nullptr);
    m_statement.reset(statement);
    return code;
}

int SqliteStatement::Bind(int parameter, std::int64_t value) {
    return sqlite3_bind_int64(m_statement.get(), parameter, value);
}

int SqliteStatement::Bind(int parameter, std::string_view blob) {
    if (blob.empty()) {  // a null pointer would bind NULL
        return sqlite3_bind_zeroblob(m_statement.get(), parameter, 0);
    }
    return sqlite3_bind_blob64(m_statement.get(), parameter, blob.data(), blob.size(),
                               SQLITE_STATIC);
}

int SqliteStatement::Step() {
    return sqlite3_step(m_statement.get());
}

int SqliteStatement::Run() {
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW) {
        code = Step();
    }
    Reset();
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

void SqliteStatement::Reset() {
    sqlite3_reset(m_statement.get());
}

std::int64_t SqliteStatement::Integer(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string_view SqliteStatement::Blob(int column) const {
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    if (size <= 0) {  // most keys have an empty part
        return {};
    }
    const void* bytes = sqlite3_column_blob(m_statement.get(), column);
    return bytes == nullptr
               ? std::string_view()
               : std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

void SqliteStatement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

SqliteTransaction::~SqliteTransaction() {
    // Some errors end the transaction by themselves.
    if (m_database.IsOpen() && sqlite3_get_autocommit(m_database.Handle()) == 0) {
        m_database.Execute("ROLLBACK");
    }
}

}  // namespace ta::terminal
