#pragma once

#include "platform/TaData.h"
#include "terminal/quotes/Catalogue.h"
#include "terminal/quotes/UserMarket.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <memory>
#include <vector>

namespace ta::terminal {

/// Period codes of BarsKey.
enum Period { kDaily = 0, kWeekly = 1, kMonthly = 2, kMinutes = 3, kSeconds = 4 };
/// The most minutes or seconds of a bar.
inline constexpr int kLongestBar = 999;

/// The folder of the sample catalogue: share/tadialogs/data of the installation that the program
/// runs from, else the source tree's.
QString DefaultDataFolder();

/// Everything that the terminal knows of markets: the catalogue and prices of a data folder, and
/// the user's own files as one more market. For one thread.
class MarketData {
public:
    /// Reads the catalogue of `dataFolder` and the index of `userFolder`. What could not be read is
    /// left out and told by Problems().
    explicit MarketData(const QString& dataFolder = DefaultDataFolder(),
                        const QString& userFolder = DefaultUserFolder());

    /// What could not be read at the start, a line each, in the language of that moment.
    const QStringList& Problems() const { return m_problems; }

    /// All markets in display order, the user's last.
    const std::vector<Market>& Markets() const { return m_catalogue.markets; }
    std::vector<const Commodity*> CommoditiesOf(std::uint8_t market) const;
    std::vector<const Contract*> ContractsOf(std::uint8_t market, const CString& commodity) const;

    // Symbols stay valid as long as this object; those of the user's market until they are removed.

    /// The symbols of a market, or of one commodity of it when `commodity` is not empty.
    std::vector<const Symbol*> SymbolsOf(std::uint8_t market, const CString& commodity = {}) const;
    /// Null when there is none.
    const Symbol* FindSymbol(std::uint8_t market, const CString& id) const;
    /// The symbols for what a user has typed, at most `most`: first the one of that id, then ids
    /// that begin with it, then names of either language that hold it. Upper and lower case are
    /// the same. An empty text finds the first symbols of the catalogue.
    std::vector<const Symbol*> Search(const CString& typed, std::size_t most) const;

    /// Whether LoadBars has bars for a period code.
    bool HasPeriod(std::uint8_t market, const CString& id, int period) const;
    /// The history of a symbol, from the prices of that period or else from finer ones that it has
    /// (see BarPeriods.h). Null, with the reason in the language in use in `error` (may be null),
    /// when there is none, for minutes or seconds that are not 1 to kLongestBar, or when a file
    /// cannot be read.
    std::shared_ptr<const BarSeries> LoadBars(const BarsKey& key, QString* error) const;

    UserMarket& User() { return m_user; }
    const UserMarket& User() const { return m_user; }

private:
    std::vector<const Symbol*> AllSymbols() const;
    std::shared_ptr<const BarSeries> LoadFile(const Symbol& symbol, const PriceKind& kind,
                                              QString* error) const;

    QString m_folder;
    QStringList m_problems;
    Catalogue m_catalogue;
    UserMarket m_user;
};

}  // namespace ta::terminal
