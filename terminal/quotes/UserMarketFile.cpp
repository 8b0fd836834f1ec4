#include "terminal/quotes/UserMarketFile.h"

#include "platform/Text.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Transaction.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include <sqlite3.h>

namespace ta::terminal {
namespace {

constexpr FileMark kMark{0x54614d6b, 1};

constexpr const char* kCreateTables =
    "CREATE TABLE symbols(number INTEGER PRIMARY KEY, id TEXT NOT NULL UNIQUE, name TEXT NOT NULL, "
    "prices TEXT NOT NULL, step REAL NOT NULL) STRICT;"
    "CREATE TABLE bars(symbol INTEGER NOT NULL, time REAL NOT NULL, open REAL NOT NULL, "
    "high REAL NOT NULL, low REAL NOT NULL, close REAL NOT NULL, volume REAL NOT NULL, "
    "PRIMARY KEY(symbol, time)) STRICT, WITHOUT ROWID";
constexpr const char* kSelectSymbols = "SELECT id, name, prices, step FROM symbols ORDER BY number";
constexpr const char* kSelectBars =
    "SELECT time, open, high, low, close, volume FROM bars "
    "WHERE symbol = (SELECT number FROM symbols WHERE id = ?1) ORDER BY time";
constexpr const char* kInsertSymbol =
    "INSERT INTO symbols(id, name, prices, step) VALUES(?1, ?2, ?3, ?4)";
constexpr const char* kInsertBar = "INSERT INTO bars VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7)";
constexpr const char* kDeleteBars =
    "DELETE FROM bars WHERE symbol = (SELECT number FROM symbols WHERE id = ?1)";
constexpr const char* kDeleteSymbol = "DELETE FROM symbols WHERE id = ?1";

constexpr double Bar::*kColumns[] = {&Bar::time, &Bar::open,  &Bar::high,
                                     &Bar::low,  &Bar::close, &Bar::volume};

bool IsProperBar(const Bar& bar) {
    return std::isfinite(bar.time) && std::isfinite(bar.high) && std::isfinite(bar.low) &&
           std::isfinite(bar.volume) && bar.low <= bar.open && bar.open <= bar.high &&
           bar.low <= bar.close && bar.close <= bar.high;
}

Symbol SymbolAt(const SQLite::Statement& row) {
    Symbol symbol;
    symbol.market = kUserMarket;
    symbol.id = CString(BlobAt(row, 0));
    symbol.chineseName = symbol.englishName = text::FromUtf8(BlobAt(row, 1));
    symbol.priceStep = row.getColumn(3).getDouble();
    if (!IsSymbolId(symbol.id) || !SetKind(BlobAt(row, 2), &symbol) || symbol.priceStep <= 0) {
        ThrowDamaged();
    }
    return symbol;
}

}  // namespace

const PriceKind& KindOf(const Symbol& symbol) {
    const auto has = [&symbol](const PriceKind& kind) { return symbol.*kind.has; };
    const auto found = std::ranges::find_if(kPriceKinds, has);
    return found == kPriceKinds.end() ? kDailyPrices : *found;
}

bool SetKind(std::string_view word, Symbol* symbol) {
    for (const PriceKind& kind : kPriceKinds) {
        symbol->*kind.has = kind.word == word;
    }
    return KindOfWord(word) != nullptr;
}

bool IsProper(const BarSeries& bars) {
    const auto ascending = [](const Bar& left, const Bar& right) { return left.time < right.time; };
    return std::ranges::all_of(bars, IsProperBar) &&
           std::ranges::adjacent_find(bars, std::not_fn(ascending)) == bars.end();
}

UserMarketFile::UserMarketFile(const QString& path) : m_database(OpenSqliteFile(path)) {
    const FileContent content = ContentOf(m_database, kMark);
    if (content == FileContent::Foreign) {
        ThrowDamaged();
    }
    if (content == FileContent::Newer) {
        throw SQLite::Exception("the market is of a newer version", SQLITE_SCHEMA);
    }
}

bool UserMarketFile::HasTables() {
    return m_database.execAndGet("SELECT count(*) FROM sqlite_schema").getInt() != 0;
}

void UserMarketFile::Change(const std::function<void()>& change) {
    SQLite::Transaction transaction(m_database, SQLite::TransactionBehavior::IMMEDIATE);
    if (!HasTables()) {
        PutMark(m_database, kMark);
        m_database.exec(kCreateTables);
    }
    change();
    transaction.commit();
}

std::vector<Symbol> UserMarketFile::Symbols() {
    std::vector<Symbol> symbols;
    if (HasTables()) {
        SQLite::Statement select(m_database, kSelectSymbols);
        while (select.executeStep()) {
            symbols.push_back(SymbolAt(select));
        }
    }
    return symbols;
}

BarSeries UserMarketFile::Bars(const CString& id) {
    SQLite::Statement select(m_database, kSelectBars);
    select.bindNoCopy(1, id);
    BarSeries bars;
    while (select.executeStep()) {
        Bar& bar = bars.emplace_back();
        for (int i = 0; i < 6; ++i) {
            bar.*kColumns[i] = select.getColumn(i).getDouble();
        }
    }
    if (!IsProper(bars)) {
        ThrowDamaged();
    }
    return bars;
}

void UserMarketFile::Add(const Symbol& symbol, const BarSeries& bars) {
    SQLite::Statement insertSymbol(m_database, kInsertSymbol);
    insertSymbol.bind(1, symbol.id);
    insertSymbol.bind(2, text::ToUtf8(symbol.chineseName));
    insertSymbol.bind(3, std::string(KindOf(symbol).word));
    insertSymbol.bind(4, symbol.priceStep);
    insertSymbol.exec();
    SQLite::Statement insertBar(m_database, kInsertBar);
    insertBar.bind(1, m_database.getLastInsertRowid());
    for (const Bar& bar : bars) {
        for (int i = 0; i < 6; ++i) {
            insertBar.bind(i + 2, bar.*kColumns[i]);
        }
        insertBar.exec();
        insertBar.reset();
    }
}

bool UserMarketFile::Remove(const CString& id) {
    int removed = 0;
    for (const char* sql : {kDeleteBars, kDeleteSymbol}) {
        SQLite::Statement remove(m_database, sql);
        remove.bindNoCopy(1, id);
        removed = remove.exec();
    }
    return removed != 0;
}

}  // namespace ta::terminal
