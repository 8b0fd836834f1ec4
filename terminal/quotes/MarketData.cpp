#include "terminal/quotes/MarketData.h"

#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/BarPeriods.h"
#include "terminal/quotes/CsvImport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace ta::terminal {
namespace {

// As text::FindChar, for a text of several characters: never matches half a character.
bool Holds(std::string_view text, std::string_view wanted) {
    for (std::size_t i = 0; i < text.size(); i += text::CharLength(text, i)) {
        if (text.substr(i).starts_with(wanted)) {
            return true;
        }
    }
    return false;
}

QString MarketFolder(std::uint8_t market) {
    const bool number = market <= '9' || market >= 0x7F;
    return number ? QString::number(market) : QString(QChar(market));
}

std::shared_ptr<const BarSeries> Fail(QString* error, const QString& reason) {
    if (error != nullptr) {
        *error = reason;
    }
    return nullptr;
}

using BarsPointer = std::shared_ptr<const BarSeries>;

/// Prices, and the period codes from `first` to `last` whose bars can be made from them.
struct Source {
    PriceKind kind;
    int first;
    int last;
};

// The preferred ones first.
constexpr Source kSources[] = {
    {kDailyPrices, kDaily, kMonthly},
    {kMinutePrices, kDaily, kMinutes},
    {kTickPrices, kDaily, kSeconds},
    {kMonthlyPrices, kMonthly, kMonthly},
};

const Source* SourceOf(const Symbol& symbol, int period) {
    const auto serves = [&symbol, period](const Source& source) {
        return symbol.*source.kind.has && period >= source.first && period <= source.last;
    };
    const auto* found = std::ranges::find_if(kSources, serves);
    return found == std::end(kSources) ? nullptr : found;
}

bool IsProper(const BarsKey& key) {
    const bool counted = key.period == kMinutes || key.period == kSeconds;
    return !counted || (key.count >= 1 && key.count <= kLongestBar);
}

BarsPointer Made(BarSeries bars) {
    return std::make_shared<const BarSeries>(std::move(bars));
}

BarsPointer InPeriod(const BarsPointer& prices, const Source& source, const BarsKey& key) {
    const bool areTicks = source.last == kSeconds;
    if (key.period == kSeconds) {
        return Made(SecondBars(*prices, key.count));
    }
    if (key.period == kMinutes) {
        const BarsPointer minutes = areTicks ? Made(SecondBars(*prices, 60)) : prices;
        return Made(MinuteBars(*minutes, key.count));
    }
    const BarsPointer daily = source.last > kMonthly ? Made(DailyBars(*prices)) : prices;
    if (key.period == kDaily) {
        return daily;
    }
    return Made(key.period == kWeekly ? WeeklyBars(*daily) : MonthlyBars(*daily));
}

}  // namespace

QString DefaultDataFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(program.filePath("../share/tadialogs/data"));
    return QFileInfo(installed).isDir() ? installed : QString(TADIALOGS_SOURCE_DATA_DIR);
}

MarketData::MarketData(const QString& dataFolder, const QString& userFolder)
    : m_folder(dataFolder), m_user(userFolder) {
    if (QFileInfo(m_folder).isDir()) {
        m_catalogue = LoadCatalogue(m_folder, &m_problems);
    } else {
        m_problems.append(Tr("IDS_TERMINAL-QUOTES_FOLDER_MISSING").arg(m_folder));
    }
    m_catalogue.markets.push_back(UserMarket::Description());
    m_problems.append(m_user.Problems());
}

std::vector<const Commodity*> MarketData::CommoditiesOf(std::uint8_t market) const {
    std::vector<const Commodity*> found;
    for (const Commodity& commodity : m_catalogue.commodities) {
        if (commodity.market == market) {
            found.push_back(&commodity);
        }
    }
    return found;
}

std::vector<const Contract*> MarketData::ContractsOf(std::uint8_t market,
                                                     const CString& commodity) const {
    std::vector<const Contract*> found;
    for (const Contract& contract : m_catalogue.contracts) {
        if (contract.market == market && contract.commodity == commodity) {
            found.push_back(&contract);
        }
    }
    return found;
}

std::vector<const Symbol*> MarketData::AllSymbols() const {
    std::vector<const Symbol*> all;
    for (const Symbol& symbol : m_catalogue.symbols) {
        all.push_back(&symbol);
    }
    const auto own = m_user.Symbols();
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

std::vector<const Symbol*> MarketData::SymbolsOf(std::uint8_t market,
                                                 const CString& commodity) const {
    std::vector<const Symbol*> found = AllSymbols();
    std::erase_if(found, [market, &commodity](const Symbol* symbol) {
        return symbol->market != market || (!commodity.empty() && symbol->commodity != commodity);
    });
    return found;
}

const Symbol* MarketData::FindSymbol(std::uint8_t market, const CString& id) const {
    if (market == kUserMarket) {
        return m_user.Find(id);
    }
    const auto found = std::ranges::find_if(m_catalogue.symbols, [market, &id](const Symbol& s) {
        return s.market == market && s.id == id;
    });
    return found == m_catalogue.symbols.end() ? nullptr : &*found;
}

std::vector<const Symbol*> MarketData::Search(const CString& typed, std::size_t most) const {
    enum Rank { kExact, kFront, kName, kNone };
    const CString wanted = text::ToUpper(text::Trim(typed));
    const auto rank = [&wanted](const Symbol& symbol) {
        const CString id = text::ToUpper(symbol.id);
        if (id == wanted) {
            return kExact;
        }
        if (id.starts_with(wanted)) {
            return kFront;
        }
        const bool named = Holds(text::ToUpper(symbol.chineseName), wanted) ||
                           Holds(text::ToUpper(symbol.englishName), wanted);
        return named ? kName : kNone;
    };
    std::vector<std::pair<Rank, const Symbol*>> ranked;
    for (const Symbol* symbol : AllSymbols()) {
        if (const Rank found = rank(*symbol); found != kNone) {
            ranked.emplace_back(found, symbol);
        }
    }
    std::ranges::stable_sort(ranked, {}, [](const auto& entry) { return entry.first; });
    std::vector<const Symbol*> found;
    for (std::size_t i = 0; i < std::min(most, ranked.size()); ++i) {
        found.push_back(ranked[i].second);
    }
    return found;
}

bool MarketData::HasPeriod(std::uint8_t market, const CString& id, int period) const {
    const Symbol* symbol = FindSymbol(market, id);
    return symbol != nullptr && SourceOf(*symbol, period) != nullptr;
}

BarsPointer MarketData::LoadFile(const Symbol& symbol, const PriceKind& kind,
                                 QString* error) const {
    if (symbol.market == kUserMarket) {
        return m_user.Load(symbol, error);
    }
    const QString path = QDir(m_folder).filePath(
        QString("prices/%1/%2.%3.csv")
            .arg(MarketFolder(symbol.market), QString::fromStdString(symbol.id),
                 QString::fromLatin1(kind.word.data(), static_cast<qsizetype>(kind.word.size()))));
    CsvImportResult result = ImportCsvFile(path);
    if (!result.error.isEmpty()) {
        return Fail(error, result.error);
    }
    if (!result.badRows.empty()) {
        const CsvBadRow& bad = result.badRows.front();
        return Fail(
            error,
            Tr("IDS_TERMINAL-QUOTES_AT_LINE").arg(path).arg(bad.line).arg(FaultText(bad.fault)));
    }
    return std::make_shared<BarSeries>(std::move(result.bars));
}

BarsPointer MarketData::LoadBars(const BarsKey& key, QString* error) const {
    const QString id = QString::fromStdString(key.symbol);
    const Symbol* symbol = FindSymbol(key.market, key.symbol);
    if (symbol == nullptr) {
        return Fail(error, Tr("IDS_TERMINAL-QUOTES_NO_SYMBOL").arg(id));
    }
    const Source* source = SourceOf(*symbol, key.period);
    if (source == nullptr || !IsProper(key)) {
        return Fail(error, Tr("IDS_TERMINAL-QUOTES_NO_PERIOD").arg(id));
    }
    const BarsPointer prices = LoadFile(*symbol, source->kind, error);
    return prices ? InPeriod(prices, *source, key) : nullptr;
}

}  // namespace ta::terminal
