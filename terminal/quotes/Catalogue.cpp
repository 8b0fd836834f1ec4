#include "terminal/quotes/Catalogue.h"

#include "platform/Text.h"
#include "terminal/lang/NameIn.h"
#include "terminal/quotes/CsvReader.h"
#include "terminal/quotes/CsvValues.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <charconv>
#include <functional>
#include <optional>

namespace ta::terminal {
namespace {

using Fields = std::vector<std::string_view>;
/// Takes one line of a table into the catalogue; the reason when it cannot, else empty.
using TakeLine = std::function<QString(const Fields&)>;

QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A market id is written as a number, or as the character of that code when it is no digit.
std::optional<std::uint8_t> MarketId(std::string_view text) {
    if (text.size() == 1 && text[0] > '9' && text[0] < 0x7F) {
        return static_cast<std::uint8_t>(text[0]);
    }
    std::uint8_t id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    if (error != std::errc() || end != text.data() + text.size() || id == 0) {
        return std::nullopt;
    }
    return id;
}

class Loader {
public:
    Loader(const QString& folder, QStringList* problems) : m_folder(folder), m_problems(problems) {}

    Catalogue Load();

private:
    void ReadTable(const char* fileName, const char* heading, const TakeLine& take);
    void ReadLines(CsvReader* reader, const QString& file, std::size_t fieldCount,
                   const TakeLine& take);

    QString TakeMarket(const Fields& fields);
    QString TakeCommodity(const Fields& fields);
    QString TakeContract(const Fields& fields);
    QString TakeSymbol(const Fields& fields);

    QString FindMarket(std::string_view text, std::uint8_t* id) const;
    bool HasCommodity(std::uint8_t market, const CString& id) const;
    QString CheckCommodity(const Symbol& symbol) const;

    QString m_folder;
    QStringList* m_problems;
    Catalogue m_catalogue;
};

QString TakeKinds(std::string_view text, Symbol* symbol) {
    CsvReader reader(text, '+');
    reader.Next();
    for (const std::string_view kind : reader.Fields()) {
        const PriceKind* known = KindOfWord(kind);
        if (known == nullptr) {
            return Tr("IDS_TERMINAL-QUOTES_BAD_KIND").arg(FromUtf8(text));
        }
        symbol->*known->has = true;
    }
    return {};
}

template <class Named>
QString CheckNamed(const Named& named) {
    if (named.chineseName.empty() || named.englishName.empty()) {
        return Tr("IDS_TERMINAL-QUOTES_EMPTY_NAME");
    }
    return {};
}

QString Loader::FindMarket(std::string_view text, std::uint8_t* id) const {
    const auto parsed = MarketId(text);
    if (!parsed ||
        std::ranges::find(m_catalogue.markets, *parsed, &Market::id) == m_catalogue.markets.end()) {
        return Tr("IDS_TERMINAL-QUOTES_UNKNOWN_MARKET").arg(FromUtf8(text));
    }
    *id = *parsed;
    return {};
}

bool Loader::HasCommodity(std::uint8_t market, const CString& id) const {
    return std::ranges::any_of(m_catalogue.commodities, [market, &id](const Commodity& commodity) {
        return commodity.market == market && commodity.id == id;
    });
}

QString Loader::TakeMarket(const Fields& fields) {
    const auto id = MarketId(fields[0]);
    if (!id || *id == kUserMarket) {
        return Tr("IDS_TERMINAL-QUOTES_BAD_ID").arg(FromUtf8(fields[0]));
    }
    if (std::ranges::find(m_catalogue.markets, *id, &Market::id) != m_catalogue.markets.end()) {
        return Tr("IDS_TERMINAL-QUOTES_DUPLICATE_ID").arg(FromUtf8(fields[0]));
    }
    const Market market{*id, text::FromUtf8(fields[1]), text::FromUtf8(fields[2])};
    const QString fault = CheckNamed(market);
    if (fault.isEmpty()) {
        m_catalogue.markets.push_back(market);
    }
    return fault;
}

QString Loader::TakeCommodity(const Fields& fields) {
    Commodity commodity{0, CString(fields[1]), text::FromUtf8(fields[2]),
                        text::FromUtf8(fields[3])};
    if (const QString fault = FindMarket(fields[0], &commodity.market); !fault.isEmpty()) {
        return fault;
    }
    if (!IsSymbolId(fields[1])) {
        return Tr("IDS_TERMINAL-QUOTES_BAD_ID").arg(FromUtf8(fields[1]));
    }
    if (HasCommodity(commodity.market, commodity.id)) {
        return Tr("IDS_TERMINAL-QUOTES_DUPLICATE_ID").arg(FromUtf8(fields[1]));
    }
    const QString fault = CheckNamed(commodity);
    if (fault.isEmpty()) {
        m_catalogue.commodities.push_back(commodity);
    }
    return fault;
}

QString Loader::TakeContract(const Fields& fields) {
    Contract contract{0, CString(fields[1]), CString(fields[2]), CString(fields[3])};
    if (const QString fault = FindMarket(fields[0], &contract.market); !fault.isEmpty()) {
        return fault;
    }
    if (!HasCommodity(contract.market, contract.commodity)) {
        return Tr("IDS_TERMINAL-QUOTES_UNKNOWN_COMMODITY").arg(FromUtf8(fields[1]));
    }
    if (!IsSymbolId(fields[2])) {
        return Tr("IDS_TERMINAL-QUOTES_BAD_ID").arg(FromUtf8(fields[2]));
    }
    m_catalogue.contracts.push_back(contract);
    return {};
}

// In a market with commodities each symbol has one; a month is one of the commodity's.
QString Loader::CheckCommodity(const Symbol& symbol) const {
    const bool needed = std::ranges::find(m_catalogue.commodities, symbol.market,
                                          &Commodity::market) != m_catalogue.commodities.end();
    if (needed != !symbol.commodity.empty() ||
        (needed && !HasCommodity(symbol.market, symbol.commodity))) {
        return Tr("IDS_TERMINAL-QUOTES_UNKNOWN_COMMODITY").arg(FromUtf8(symbol.commodity));
    }
    return {};
}

QString Loader::TakeSymbol(const Fields& fields) {
    Symbol symbol;
    if (const QString fault = FindMarket(fields[0], &symbol.market); !fault.isEmpty()) {
        return fault;
    }
    symbol.id = CString(fields[1]);
    symbol.chineseName = text::FromUtf8(fields[2]);
    symbol.englishName = text::FromUtf8(fields[3]);
    symbol.commodity = CString(fields[4]);
    symbol.contractMonth = CString(fields[5]);
    if (!IsSymbolId(symbol.id)) {
        return Tr("IDS_TERMINAL-QUOTES_BAD_ID").arg(FromUtf8(fields[1]));
    }
    const auto isSame = [&symbol](const Symbol& other) {
        return other.market == symbol.market && other.id == symbol.id;
    };
    if (std::ranges::any_of(m_catalogue.symbols, isSame)) {
        return Tr("IDS_TERMINAL-QUOTES_DUPLICATE_ID").arg(FromUtf8(fields[1]));
    }
    if (ParsePrice(fields[6], &symbol.priceStep) != CsvFault::None || symbol.priceStep <= 0) {
        return Tr("IDS_TERMINAL-QUOTES_BAD_STEP").arg(FromUtf8(fields[6]));
    }
    const auto isContract = [&symbol](const Contract& contract) {
        return contract.market == symbol.market && contract.commodity == symbol.commodity &&
               contract.month == symbol.contractMonth;
    };
    const auto contract = std::ranges::find_if(m_catalogue.contracts, isContract);
    if (contract != m_catalogue.contracts.end()) {
        symbol.isWeekly = !contract->weeklyId.empty();
    } else if (!symbol.contractMonth.empty()) {
        return Tr("IDS_TERMINAL-QUOTES_UNKNOWN_MONTH").arg(FromUtf8(fields[5]));
    }
    for (const QString& fault :
         {CheckNamed(symbol), CheckCommodity(symbol), TakeKinds(fields[7], &symbol)}) {
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    m_catalogue.symbols.push_back(symbol);
    return {};
}

void Loader::ReadLines(CsvReader* reader, const QString& file, std::size_t fieldCount,
                       const TakeLine& take) {
    while (reader->Next()) {
        QString fault;
        if (reader->QuoteOpen()) {
            fault = Tr("IDS_TERMINAL-QUOTES_QUOTE_OPEN");
        } else if (reader->Fields().size() != fieldCount) {
            fault =
                Tr("IDS_TERMINAL-QUOTES_FIELD_COUNT").arg(fieldCount).arg(reader->Fields().size());
        } else {
            fault = take(reader->Fields());
        }
        if (!fault.isEmpty()) {
            m_problems->append(
                Tr("IDS_TERMINAL-QUOTES_AT_LINE").arg(file).arg(reader->Line()).arg(fault));
        }
    }
}

void Loader::ReadTable(const char* fileName, const char* heading, const TakeLine& take) {
    const QString path = QDir(m_folder).filePath(fileName);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problems->append(Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(path, file.errorString()));
        return;
    }
    const QByteArray bytes = file.readAll();
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    CsvReader reader(text);
    CsvReader wanted(heading);
    wanted.Next();
    if (!reader.Next() || reader.Fields() != wanted.Fields()) {
        const QString fault = Tr("IDS_TERMINAL-QUOTES_HEADING_WRONG").arg(heading);
        m_problems->append(Tr("IDS_TERMINAL-QUOTES_AT_LINE")
                               .arg(path)
                               .arg(std::max<std::size_t>(reader.Line(), 1))
                               .arg(fault));
        return;
    }
    ReadLines(&reader, path, wanted.Fields().size(), take);
}

Catalogue Loader::Load() {
    const auto taker = [this](QString (Loader::*take)(const Fields&)) {
        return [this, take](const Fields& fields) { return (this->*take)(fields); };
    };
    ReadTable("markets.csv", "id,chinese,english", taker(&Loader::TakeMarket));
    ReadTable("commodities.csv", "market,id,chinese,english", taker(&Loader::TakeCommodity));
    ReadTable("contracts.csv", "market,commodity,month,weekly", taker(&Loader::TakeContract));
    ReadTable("symbols.csv", "market,id,chinese,english,commodity,month,step,prices",
              taker(&Loader::TakeSymbol));
    return std::move(m_catalogue);
}

}  // namespace

const PriceKind* KindOfWord(std::string_view word) {
    const auto found = std::ranges::find(kPriceKinds, word, &PriceKind::word);
    return found == kPriceKinds.end() ? nullptr : &*found;
}

CString NameOf(const Market& market) {
    return NameIn(market);
}

CString NameOf(const Commodity& commodity) {
    return NameIn(commodity);
}

CString NameOf(const Symbol& symbol) {
    return NameIn(symbol);
}

CString TitleOf(const Symbol& symbol) {
    const CString name = NameOf(symbol);
    return name == symbol.id ? name : symbol.id + ' ' + name;
}

bool IsSymbolId(std::string_view text) {
    const auto isSafe = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               c == '-' || c == '_' || c == '.';
    };
    return !text.empty() && text.size() <= 32 && text[0] != '.' &&
           std::ranges::all_of(text, isSafe);
}

Catalogue LoadCatalogue(const QString& folder, QStringList* problems) {
    return Loader(folder, problems).Load();
}

}  // namespace ta::terminal
