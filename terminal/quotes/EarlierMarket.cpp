#include "terminal/quotes/EarlierMarket.h"

#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/CsvReader.h"
#include "terminal/quotes/CsvValues.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <type_traits>

namespace ta::terminal {
namespace {

static_assert(sizeof(Bar) == 6 * sizeof(double) && std::is_trivially_copyable_v<Bar>);

// A mark, the order of bytes (01020304) and the size of a bar; the count of bars follows.
constexpr std::string_view kHead("TABARS1\n\4\3\2\1\60\0\0\0", 16);
constexpr qsizetype kHeadSize = 24;

std::optional<BarSeries> BarsOf(const QByteArray& bytes) {
    const auto size = static_cast<std::size_t>(bytes.size() - kHeadSize);
    std::uint64_t count = 0;
    if (bytes.size() <= kHeadSize || size % sizeof(Bar) != 0 ||
        !bytes.startsWith({kHead.data(), kHead.size()})) {
        return std::nullopt;
    }
    std::memcpy(&count, bytes.constData() + kHead.size(), sizeof count);
    BarSeries bars(size / sizeof(Bar));
    std::memcpy(bars.data(), bytes.constData() + kHeadSize, size);
    return count == bars.size() && IsProper(bars) ? std::optional(std::move(bars)) : std::nullopt;
}

std::optional<Symbol> SymbolOf(const CsvReader& line) {
    const auto& fields = line.Fields();
    Symbol symbol;
    if (line.QuoteOpen() || fields.size() != 4 || !IsSymbolId(fields[0]) ||
        !SetKind(fields[2], &symbol) ||
        ParsePrice(fields[3], &symbol.priceStep) != CsvFault::None || symbol.priceStep <= 0) {
        return std::nullopt;
    }
    symbol.id = CString(fields[0]);
    symbol.chineseName = symbol.englishName = text::FromUtf8(fields[1]);
    return symbol;
}

QString Unreadable(const QFile& file) {
    const QString reason = file.error() == QFile::NoError
                               ? Tr("IDS_TERMINAL-QUOTES_USER_BARS_DAMAGED")
                               : file.errorString();
    return Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(file.fileName(), reason);
}

}  // namespace

QString EarlierIndex(const QString& folder) {
    return QDir(folder).filePath("index.csv");
}

std::optional<std::vector<UserSymbol>> ReadEarlierMarket(const QString& folder,
                                                         QStringList* problems) {
    QFile index(EarlierIndex(folder));
    if (!index.open(QIODevice::ReadOnly)) {
        problems->append(Unreadable(index));
        return std::nullopt;
    }
    std::vector<UserSymbol> found;
    const std::string bytes = index.readAll().toStdString();
    CsvReader lines(bytes);
    for (lines.Next(); lines.Next();) {  // the first one is the heading
        const std::optional<Symbol> symbol = SymbolOf(lines);
        if (!symbol) {
            problems->append(Tr("IDS_TERMINAL-QUOTES_AT_LINE")
                                 .arg(index.fileName())
                                 .arg(lines.Line())
                                 .arg(Tr("IDS_TERMINAL-QUOTES_USER_BARS_DAMAGED")));
            continue;
        }
        QFile file(QDir(folder).filePath(QString::fromStdString(symbol->id) + ".bars"));
        const bool open = file.open(QIODevice::ReadOnly);
        if (auto bars = BarsOf(open ? file.readAll() : QByteArray())) {
            found.push_back({*symbol, std::move(*bars)});
        } else {
            problems->append(Unreadable(file));
        }
    }
    return found;
}

}  // namespace ta::terminal
