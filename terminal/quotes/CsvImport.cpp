#include "terminal/quotes/CsvImport.h"

#include "platform/Text.h"
#include "platform/TextBytes.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/CsvReader.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <utility>

namespace ta::terminal {
namespace {

constexpr int kHeadingLinesSearched = 20;
constexpr std::size_t kRowsPerProgress = 8192;
constexpr qint64 kLargestFile = qint64{1} << 30;

enum Column { kDate, kTimeOfDay, kOpen, kHigh, kLow, kClose, kVolume, kColumnCount };

struct Heading {
    Column column;
    const char* text;
};

constexpr std::array kHeadings{
    Heading{kDate, "date"},      Heading{kDate, "datetime"},    Heading{kDate, "date/time"},
    Heading{kDate, "timestamp"}, Heading{kDate, "日期"},        Heading{kDate, "交易日期"},
    Heading{kDate, "日期時間"},  Heading{kTimeOfDay, "time"},   Heading{kTimeOfDay, "時間"},
    Heading{kOpen, "open"},      Heading{kOpen, "開盤價"},      Heading{kOpen, "開盤"},
    Heading{kHigh, "high"},      Heading{kHigh, "最高價"},      Heading{kHigh, "最高"},
    Heading{kLow, "low"},        Heading{kLow, "最低價"},       Heading{kLow, "最低"},
    Heading{kClose, "close"},    Heading{kClose, "close/last"}, Heading{kClose, "last"},
    Heading{kClose, "price"},    Heading{kClose, "收盤價"},     Heading{kClose, "收盤"},
    Heading{kClose, "收市"},     Heading{kVolume, "volume"},    Heading{kVolume, "vol"},
    Heading{kVolume, "vol."},    Heading{kVolume, "成交量"},    Heading{kVolume, "成交股數"},
    Heading{kVolume, "總量"},
};

using Columns = std::array<std::size_t, kColumnCount>;
constexpr std::size_t kNoColumn = std::numeric_limits<std::size_t>::max();

struct Table {
    CsvReader reader;
    Columns columns;
};

// The heading without blanks and angle brackets around it, ASCII letters in lower case.
std::string PlainHeading(std::string_view field) {
    constexpr std::string_view kAround = " \t<>\"";
    const std::size_t first = field.find_first_not_of(kAround);
    if (first == std::string_view::npos) {
        return {};
    }
    std::string text(field.substr(first, field.find_last_not_of(kAround) - first + 1));
    if (text::IsAscii(text)) {
        std::ranges::transform(text, text.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        });
    }
    return text;
}

// The file may be in UTF-8 or in the code page: a heading is looked for in both.
std::optional<Column> ColumnOf(std::string_view field) {
    const std::string text = PlainHeading(field);
    const bool ascii = text::IsAscii(text);
    for (const Heading& heading : kHeadings) {
        if (text == heading.text || (!ascii && text == text::FromUtf8(heading.text))) {
            return heading.column;
        }
    }
    return std::nullopt;
}

std::optional<Columns> ColumnsOf(const std::vector<std::string_view>& fields) {
    Columns columns;
    columns.fill(kNoColumn);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto column = ColumnOf(fields[i]);
        if (column && columns[*column] == kNoColumn) {
            columns[*column] = i;
        }
    }
    if (columns[kDate] == kNoColumn) {
        std::swap(columns[kDate], columns[kTimeOfDay]);
    }
    const bool complete =
        std::ranges::all_of(std::array{kDate, kOpen, kHigh, kLow, kClose},
                            [&columns](Column column) { return columns[column] != kNoColumn; });
    return complete ? std::optional(columns) : std::nullopt;
}

std::optional<Table> FindTable(std::string_view text) {
    for (const char separator : {',', ';', '\t'}) {
        CsvReader reader(text, separator);
        for (int i = 0; i < kHeadingLinesSearched && reader.Next(); ++i) {
            if (const auto columns = ColumnsOf(reader.Fields())) {
                return Table{std::move(reader), *columns};
            }
        }
    }
    return std::nullopt;
}

// UTF-8 without its mark; UTF-16 with a mark is converted into `buffer`.
std::string_view TextOf(std::string_view bytes, QByteArray* buffer) {
    constexpr std::string_view kUtf16Marks[] = {"\xFF\xFE", "\xFE\xFF"};
    if (bytes.starts_with(text::kUtf8Mark)) {
        return bytes.substr(text::kUtf8Mark.size());
    }
    if (bytes.starts_with(kUtf16Marks[0]) || bytes.starts_with(kUtf16Marks[1])) {
        QStringDecoder decoder(QStringDecoder::Utf16);
        const QString text =
            decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
        *buffer = text.toUtf8();
        return {buffer->constData(), static_cast<std::size_t>(buffer->size())};
    }
    return bytes;
}

/// Reads the rows of one table.
class RowReader {
public:
    RowReader(Table table, std::size_t size) : m_table(std::move(table)), m_size(size) {}

    bool ReadAll(const CsvProgress& progress);
    void Order();
    CsvImportResult TakeResult();

private:
    CsvFault ReadRow(Bar* bar);
    void AddBad(std::size_t line, CsvFault fault);
    void SortByTime();
    double PriceStep() const;

    Table m_table;
    std::size_t m_size;
    CsvImportResult m_result;
    std::vector<std::uint32_t> m_lines;  // of each bar
    int m_decimals = 0;
};

CsvFault RowFault(const Bar& bar) {
    if (bar.high < bar.low) {
        return CsvFault::HighBelowLow;
    }
    const auto [lower, upper] = std::minmax(bar.open, bar.close);
    return lower < bar.low || upper > bar.high ? CsvFault::OutsideHighLow : CsvFault::None;
}

CsvFault RowReader::ReadRow(Bar* bar) {
    const auto& fields = m_table.reader.Fields();
    const Columns& columns = m_table.columns;
    if (m_table.reader.QuoteOpen()) {
        return CsvFault::QuoteNotClosed;
    }
    const auto isMissing = [&fields](std::size_t column) {
        return column != kNoColumn && column >= fields.size();
    };
    if (std::ranges::any_of(columns, isMissing)) {
        return CsvFault::MissingField;
    }
    const auto field = [&fields, &columns](Column column) {
        return columns[column] == kNoColumn ? std::string_view() : fields[columns[column]];
    };
    CsvFault fault = ParseTime(field(kDate), field(kTimeOfDay), &bar->time);
    const std::array<std::pair<Column, double*>, 4> prices{
        {{kOpen, &bar->open}, {kHigh, &bar->high}, {kLow, &bar->low}, {kClose, &bar->close}}};
    int decimals = m_decimals;
    for (const auto& [column, value] : prices) {
        if (fault == CsvFault::None) {
            fault = ParsePrice(field(column), value, &decimals);
        }
    }
    if (fault == CsvFault::None) {
        fault = ParseVolume(field(kVolume), &bar->volume);
    }
    if (fault == CsvFault::None) {
        fault = RowFault(*bar);
    }
    if (fault == CsvFault::None) {
        m_decimals = decimals;
    }
    return fault;
}

void RowReader::AddBad(std::size_t line, CsvFault fault) {
    ++m_result.badRowCount;
    if (m_result.badRows.size() < kMaxBadRowsKept) {
        m_result.badRows.push_back({line, fault});
    }
}

// false when cancelled.
bool RowReader::ReadAll(const CsvProgress& progress) {
    std::size_t rows = 0;
    Bar bar;
    while (m_table.reader.Next()) {
        if (const CsvFault fault = ReadRow(&bar); fault != CsvFault::None) {
            AddBad(m_table.reader.Line(), fault);
        } else {
            m_result.bars.push_back(bar);
            m_lines.push_back(static_cast<std::uint32_t>(m_table.reader.Line()));
        }
        const double done = static_cast<double>(m_table.reader.Position());
        if (++rows % kRowsPerProgress == 0 && progress &&
            !progress(done / static_cast<double>(m_size))) {
            return false;
        }
    }
    return !progress || progress(1);
}

void RowReader::SortByTime() {
    BarSeries& bars = m_result.bars;
    if (std::ranges::is_sorted(bars, std::ranges::less_equal(), &Bar::time)) {
        return;
    }
    std::vector<std::uint32_t> order(bars.size());
    std::iota(order.begin(), order.end(), 0U);
    // Rows of one time stay in the order of the file.
    std::ranges::stable_sort(order, {}, [&bars](std::uint32_t i) { return bars[i].time; });
    BarSeries sorted;
    std::vector<std::uint32_t> lines;
    sorted.reserve(bars.size());
    lines.reserve(bars.size());
    for (const std::uint32_t i : order) {
        sorted.push_back(bars[i]);
        lines.push_back(m_lines[i]);
    }
    bars = std::move(sorted);
    m_lines = std::move(lines);
}

// Sorts, and takes rows of a time that was there before out.
void RowReader::Order() {
    SortByTime();
    BarSeries& bars = m_result.bars;
    std::vector<CsvBadRow> doubled;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        if (kept > 0 && bars[i].time == bars[kept - 1].time) {
            doubled.push_back({m_lines[i], CsvFault::DuplicateTime});
        } else {
            bars[kept++] = bars[i];
        }
    }
    bars.resize(kept);
    m_result.badRowCount += doubled.size();
    auto& bad = m_result.badRows;
    bad.insert(bad.end(), doubled.begin(), doubled.end());
    std::ranges::sort(bad, {}, &CsvBadRow::line);
    bad.resize(std::min(bad.size(), kMaxBadRowsKept));
}

// More than four decimals are mostly noise of binary numbers, but rates below ten have five.
double RowReader::PriceStep() const {
    const double highest =
        m_result.bars.empty() ? 0 : std::ranges::max(m_result.bars, {}, &Bar::high).high;
    const int noisy = highest < 10 ? 5 : 2;
    return std::pow(10.0, -(m_decimals > 4 ? noisy : m_decimals));
}

CsvImportResult RowReader::TakeResult() {
    m_result.priceStep = PriceStep();
    return std::move(m_result);
}

CsvImportResult Failed(const QString& error) {
    CsvImportResult result;
    result.error = error;
    return result;
}

struct FaultKey {
    CsvFault fault;
    const char* key;
};

constexpr std::array kFaultKeys{
    FaultKey{CsvFault::MissingField, "IDS_TERMINAL-QUOTES_ROW_MISSING_FIELD"},
    FaultKey{CsvFault::NumberNotReadable, "IDS_TERMINAL-QUOTES_ROW_NUMBER"},
    FaultKey{CsvFault::DateNotReadable, "IDS_TERMINAL-QUOTES_ROW_DATE"},
    FaultKey{CsvFault::YearOutOfRange, "IDS_TERMINAL-QUOTES_ROW_YEAR"},
    FaultKey{CsvFault::HighBelowLow, "IDS_TERMINAL-QUOTES_ROW_HIGH_LOW"},
    FaultKey{CsvFault::OutsideHighLow, "IDS_TERMINAL-QUOTES_ROW_OPEN_CLOSE"},
    FaultKey{CsvFault::NegativeVolume, "IDS_TERMINAL-QUOTES_ROW_VOLUME"},
    FaultKey{CsvFault::DuplicateTime, "IDS_TERMINAL-QUOTES_ROW_DUPLICATE"},
    FaultKey{CsvFault::QuoteNotClosed, "IDS_TERMINAL-QUOTES_QUOTE_OPEN"},
};

}  // namespace

CsvImportResult ImportCsv(std::string_view bytes, const CsvProgress& progress) {
    QByteArray buffer;
    const std::string_view text = TextOf(bytes, &buffer);
    auto table = FindTable(text);
    if (!table) {
        return Failed(Tr("IDS_TERMINAL-QUOTES_CSV_NO_HEADING"));
    }
    RowReader rows(std::move(*table), text.size());
    if (!rows.ReadAll(progress)) {
        CsvImportResult result;
        result.cancelled = true;
        return result;
    }
    rows.Order();
    CsvImportResult result = rows.TakeResult();
    if (result.bars.empty() && result.badRowCount == 0) {
        return Failed(Tr("IDS_TERMINAL-QUOTES_CSV_NO_ROWS"));
    }
    return result;
}

CsvImportResult ImportCsvFile(const QString& path, const CsvProgress& progress) {
    QFile file(path);
    const auto failed = [&path](const QString& reason) {
        return Failed(Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(path, reason));
    };
    if (QFileInfo(path).isFile() && file.size() > kLargestFile) {
        return failed(Tr("IDS_TERMINAL-QUOTES_FILE_TOO_LARGE"));
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return failed(file.errorString());
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError) {
        return failed(file.errorString());
    }
    return ImportCsv({bytes.constData(), static_cast<std::size_t>(bytes.size())}, progress);
}

QString FaultText(CsvFault fault) {
    const auto found = std::ranges::find(kFaultKeys, fault, &FaultKey::fault);
    return found == kFaultKeys.end() ? QString() : Tr(found->key);
}

}  // namespace ta::terminal
