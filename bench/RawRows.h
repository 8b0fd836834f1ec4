#pragma once

#include <QString>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <sqlite3.h>

/// The store's rows through SQLite alone: what the benches hold our figures against.
namespace ta::bench {

struct RawRow {
    std::int64_t kind = 0;
    std::int64_t number = 0;
    std::string name;
    std::string sub;
    std::string value;
};

/// An existing store file, opened without anything of ours.
class RawDatabase {
public:
    explicit RawDatabase(const QString& path) {
        sqlite3_open_v2(path.toUtf8().constData(), &m_handle,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    }
    ~RawDatabase() { sqlite3_close_v2(m_handle); }
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    bool Run(const char* sql) {
        return sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    /// One SELECT over every row; `visit(statement)` is called on each. Returns how many.
    template <typename Visit>
    int Select(const Visit& visit) {
        sqlite3_stmt* select = Prepare("SELECT kind, number, name, sub, value FROM settings");
        int rows = 0;
        for (; sqlite3_step(select) == SQLITE_ROW; ++rows) {
            visit(select);
        }
        sqlite3_finalize(select);
        return rows;
    }

    /// Writes the rows in one transaction with one prepared statement.
    bool Write(const std::vector<RawRow>& rows) {
        sqlite3_stmt* upsert =
            Prepare("INSERT OR REPLACE INTO settings VALUES(?1, ?2, ?3, ?4, ?5)");
        const auto bind = [&](int parameter, const std::string& text) {
            sqlite3_bind_blob64(upsert, parameter, text.data(), text.size(), SQLITE_STATIC);
        };
        bool good = Run("BEGIN IMMEDIATE");
        for (const RawRow& row : rows) {
            sqlite3_bind_int64(upsert, 1, row.kind);
            sqlite3_bind_int64(upsert, 2, row.number);
            bind(3, row.name);
            bind(4, row.sub);
            bind(5, row.value);
            good = good && sqlite3_step(upsert) == SQLITE_DONE;
            sqlite3_reset(upsert);
        }
        sqlite3_finalize(upsert);
        return good && Run("COMMIT");
    }

private:
    sqlite3_stmt* Prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_handle, sql, -1, &statement, nullptr);
        return statement;
    }

    sqlite3* m_handle = nullptr;
};

inline std::vector<RawRow> ReadRows(const QString& path) {
    const auto blob = [](sqlite3_stmt* statement, int column) {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
        const int size = sqlite3_column_bytes(statement, column);
        return bytes == nullptr ? std::string() : std::string(bytes, bytes + size);
    };
    std::vector<RawRow> rows;
    RawDatabase(path).Select([&](sqlite3_stmt* row) {
        rows.push_back({sqlite3_column_int64(row, 0), sqlite3_column_int64(row, 1), blob(row, 2),
                        blob(row, 3), blob(row, 4)});
    });
    return rows;
}

/// Looks at every column of a row.
inline void LookAtRow(sqlite3_stmt* row) {
    benchmark::DoNotOptimize(sqlite3_column_int64(row, 0));
    benchmark::DoNotOptimize(sqlite3_column_int64(row, 1));
    for (int column = 2; column < 5; ++column) {
        benchmark::DoNotOptimize(sqlite3_column_blob(row, column));
        benchmark::DoNotOptimize(sqlite3_column_bytes(row, column));
    }
}

/// The texts that a value of trend lines is made of, each after its length, taken out of the bytes
/// by hand: what reading lines into memory costs without a store and a repository.
inline void TakeLines(sqlite3_stmt* row, std::vector<std::vector<std::string>>& into) {
    const auto* at = static_cast<const unsigned char*>(sqlite3_column_blob(row, 4));
    const auto* end = at + sqlite3_column_bytes(row, 4);
    const auto number = [&] {
        std::uint32_t value = 0;
        std::memcpy(&value, at, sizeof value);
        at += sizeof value;
        return value;
    };
    const auto text = [&] {
        const std::uint32_t size = number();
        at += size;
        return std::string(reinterpret_cast<const char*>(at) - size, size);
    };
    for (std::uint32_t types = number(); types > 0 && at < end; --types) {
        std::vector<std::string>& lines = into.emplace_back(1, text());
        const std::uint32_t count = number();
        lines.reserve(1 + count);
        for (std::uint32_t i = 0; i < count; ++i) {
            lines.push_back(text());
        }
    }
}

}  // namespace ta::bench
