#pragma once

#include "platform/Study.h"
#include "terminal/quotes/Catalogue.h"
#include "terminal/sqlite/SqliteFile.h"

#include <QString>

#include <functional>
#include <string_view>
#include <vector>

namespace ta::terminal {

/// A symbol of the user's own with its bars.
struct UserSymbol {
    Symbol symbol;
    BarSeries bars;
};

/// The one kind of prices that a symbol of the user's own has.
const PriceKind& KindOf(const Symbol& symbol);
/// Gives the symbol the kind of that word and no other. false, and it has none, for another word.
bool SetKind(std::string_view word, Symbol* symbol);

/// Whether the bars are finite numbers, their times ascending and each price within high and low.
bool IsProper(const BarSeries& bars);

/// An open SQLite file with the user's own market: a table of symbols and one of their bars. Throws
/// SQLite::Exception: SQLITE_CORRUPT for a damaged file and one of another program, SQLITE_SCHEMA
/// for one of a newer version.
class UserMarketFile {
public:
    /// The file is made when missing.
    explicit UserMarketFile(const QString& path);

    /// Runs `change` in one transaction: all that it does is in the file then, or nothing.
    void Change(const std::function<void()>& change);

    /// The symbols in the order in which they were added.
    std::vector<Symbol> Symbols();
    /// Empty for a symbol that is not there.
    BarSeries Bars(const CString& id);

    // For Change.
    void Add(const Symbol& symbol, const BarSeries& bars);
    /// false when there is no such symbol.
    bool Remove(const CString& id);

private:
    bool HasTables();

    SQLite::Database m_database;
};

}  // namespace ta::terminal
