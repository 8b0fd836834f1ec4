#pragma once

#include "platform/Types.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ta::terminal {

/// The market of the user's own files, which no catalogue may use.
inline constexpr std::uint8_t kUserMarket = 'U';

struct Market {
    std::uint8_t id = 0;
    CString chineseName;
    CString englishName;
};

/// A kind of goods that futures and options are written on.
struct Commodity {
    std::uint8_t market = 0;
    CString id;
    CString chineseName;
    CString englishName;
};

struct Contract {
    std::uint8_t market = 0;
    CString commodity;
    CString month;     ///< as it is shown, such as "202005" or "2020051W"; no fixed form
    CString weeklyId;  ///< id of the weekly contract; empty for an ordinary month
};

struct Symbol {
    std::uint8_t market = 0;
    CString id;  ///< ASCII letters, digits, "-", "_" and "."; unique in its market
    CString chineseName;
    CString englishName;
    CString commodity;      ///< empty in a market without commodities
    CString contractMonth;  ///< empty when it has none
    double priceStep = 0.01;
    bool isWeekly = false;    ///< belongs to a weekly contract
    bool hasDaily = false;    ///< there is a file of daily prices
    bool hasMonthly = false;  ///< there is a file of monthly prices
    bool hasMinutes = false;  ///< there is a file of minute prices
    bool hasTicks = false;    ///< there is a file of single trades
};

/// A kind of price file.
struct PriceKind {
    std::string_view word;  ///< in symbols.csv, and in the file's name
    bool Symbol::*has;
};

inline constexpr PriceKind kDailyPrices{"daily", &Symbol::hasDaily};
inline constexpr PriceKind kMinutePrices{"minute", &Symbol::hasMinutes};
inline constexpr PriceKind kTickPrices{"tick", &Symbol::hasTicks};
inline constexpr PriceKind kMonthlyPrices{"monthly", &Symbol::hasMonthly};
inline constexpr std::array kPriceKinds{kDailyPrices, kMinutePrices, kTickPrices, kMonthlyPrices};

/// Null for a word that is no kind.
const PriceKind* KindOfWord(std::string_view word);

/// What there is to trade, in the order of the catalogue's files.
struct Catalogue {
    std::vector<Market> markets;
    std::vector<Commodity> commodities;
    std::vector<Contract> contracts;
    std::vector<Symbol> symbols;
};

/// The name in the language in use.
CString NameOf(const Market& market);
CString NameOf(const Commodity& commodity);
CString NameOf(const Symbol& symbol);

/// The id and the name, in the language in use; one of them where they are the same.
CString TitleOf(const Symbol& symbol);

/// true for a text that may be the id of a symbol: 1 to 32 ASCII letters, digits, "-", "_", ".";
/// not beginning with ".".
bool IsSymbolId(std::string_view text);

/// Reads markets.csv, commodities.csv, contracts.csv and symbols.csv of a data folder; the format
/// is described in data/README.md. A line that cannot be used is left out and told in `problems`
/// with its file and line number, in the language in use.
Catalogue LoadCatalogue(const QString& folder, QStringList* problems);

}  // namespace ta::terminal
