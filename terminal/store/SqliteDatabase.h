#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace ta::terminal {

/// A connection to one SQLite file; closed when destroyed. Results are SQLite's extended codes.
class SqliteDatabase {
public:
    /// `path` in UTF-8; `vfs` null for the machine's file layer. Closed again when that fails.
    int Open(const std::string& path, int flags, const char* vfs);
    void Close() { m_handle.reset(); }
    bool IsOpen() const { return m_handle != nullptr; }
    /// Runs statements that give no rows.
    int Execute(const char* sql);
    /// How long a statement waits for another process's lock.
    void SetBusyTimeout(int milliseconds);
    sqlite3* Handle() const { return m_handle.get(); }

private:
    struct Closer {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
};

/// A prepared statement. Must be destroyed before its connection is.
class SqliteStatement {
public:
    /// Prepares `sql` for many runs.
    int Prepare(const SqliteDatabase& database, const char* sql);
    bool IsPrepared() const { return m_statement != nullptr; }

    // Parameters are counted from 1. Texts must live until the statement is reset.
    int Bind(int parameter, std::int64_t value);
    int Bind(int parameter, std::string_view blob);

    /// SQLITE_ROW, SQLITE_DONE or an error.
    int Step();
    /// Runs to the end and resets; SQLITE_OK or an error.
    int Run();
    void Reset();

    // Columns are counted from 0; blobs are valid until the next step.
    std::int64_t Integer(int column) const;
    std::string_view Blob(int column) const;

private:
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
};

/// A transaction that is rolled back unless it was committed.
class SqliteTransaction {
public:
    explicit SqliteTransaction(SqliteDatabase& database) : m_database(database) {}
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;

    /// A view of one committed state.
    int BeginRead() { return m_database.Execute("BEGIN"); }
    /// Waits for another process's write to end.
    int BeginWrite() { return m_database.Execute("BEGIN IMMEDIATE"); }
    int Commit() { return m_database.Execute("COMMIT"); }

private:
    SqliteDatabase& m_database;
};

}  // namespace ta::terminal
