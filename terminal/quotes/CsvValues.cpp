#include "terminal/quotes/CsvValues.h"

#include "platform/DayNumber.h"
#include "platform/Text.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QTime>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

namespace ta::terminal {
namespace {

constexpr int kFirstRocYear = 1911;
constexpr int kFirstYear = 1970;  // of a hundred that two digits name

QString ToQString(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

// ---- Numbers ----

/// Digits, perhaps with a point between them, as nearly all prices are: the quotient of two numbers
/// that are exact, and so the nearest there is. Nothing for all else.
std::optional<double> ShortNumber(std::string_view text) {
    constexpr std::size_t kExactDigits = 15;
    constexpr std::array kTens{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6, 1e7,
                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};
    if (text.empty() || text.size() > kExactDigits) {
        return std::nullopt;
    }
    std::uint64_t digits = 0;
    std::size_t decimals = 0;
    bool pointSeen = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= '0' && text[i] <= '9') {
            digits = digits * 10 + static_cast<unsigned>(text[i] - '0');
            decimals += pointSeen ? 1 : 0;
        } else if (text[i] == '.' && i > 0 && !pointSeen) {
            pointSeen = true;
        } else {
            return std::nullopt;
        }
    }
    const bool endsInPoint = pointSeen && decimals == 0;
    return endsInPoint ? std::nullopt
                       : std::optional(static_cast<double>(digits) / kTens[decimals]);
}

std::optional<double> PlainNumber(std::string_view text) {
    if (const auto number = ShortNumber(text)) {
        return number;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// The locale sees to it that separators part groups of three; it would take exponents as well.
std::optional<double> GroupedNumber(std::string_view text) {
    bool good = text.find_first_not_of("+-0123456789.,") == std::string_view::npos;
    const double value = good ? QLocale::c().toDouble(ToQString(text), &good) : 0;
    return good ? std::optional(value) : std::nullopt;
}

CsvFault ParseNumber(std::string_view text, double* value) {
    if (text.empty()) {
        return CsvFault::MissingField;
    }
    for (const char mark : {'+', '$'}) {
        text.remove_prefix(text.starts_with(mark) ? 1 : 0);
    }
    const bool grouped = text.find(',') != std::string_view::npos;
    const auto number = grouped ? GroupedNumber(text) : PlainNumber(text);
    *value = number.value_or(*value);
    return number ? CsvFault::None : CsvFault::NumberNotReadable;
}

int DecimalsIn(std::string_view text) {
    const std::size_t point = text.find('.');
    return point == std::string_view::npos ? 0
                                           : static_cast<int>(text.find_last_not_of('0') - point);
}

// ---- Dates ----

struct DateShape {
    const char* pattern;
    int firstYear = 0;  ///< the year before year 1
};

// The words stand for the patterns below them; after the date may come a time of day.
constexpr DateShape kDateShapes[] = {
    {"^(?<year>\\d{4})(?<month>\\d\\d)(?<day>\\d\\d)END"},
    {"^(?<year>\\d{4})MARK(?<month>\\d\\d?)MARK(?<day>\\d\\d?)END"},
    {"^(?<month>\\d\\d?)/(?<day>\\d\\d?)MARK(?<year>\\d{4})END"},
    {"^(?<year>\\d{1,3})MARK(?<month>\\d\\d?)MARK(?<day>\\d\\d?)END", kFirstRocYear},
    {"^(?<day>\\d\\d?)MARKNAMEMARK(?<year>\\d{4}|\\d\\d)END"},
    {"^NAMEMARK(?<day>\\d\\d?)MARK(?<year>\\d{4}|\\d\\d)END"},
};

QRegularExpression PatternOf(const DateShape& shape) {
    return QRegularExpression(QString(shape.pattern)
                                  .replace("MARK", "[-/., ][ \t]*")
                                  .replace("NAME", "(?<name>[A-Za-z]{3,9})\\.?")
                                  .replace("END", "(?!\\d)"));
}

// From the name or its beginning; 0 for no month.
int MonthOfName(const QString& name) {
    for (int month = 1; month <= 12; ++month) {
        if (QLocale::c().monthName(month).startsWith(name, Qt::CaseInsensitive)) {
            return month;
        }
    }
    return 0;
}

QDate DateOf(const QRegularExpressionMatch& match, int firstYear) {
    const QString name = match.captured("name");
    const int month = name.isEmpty() ? match.captured("month").toInt() : MonthOfName(name);
    int year = match.captured("year").toInt() + firstYear;
    if (!name.isEmpty() && match.capturedLength("year") == 2) {
        year += year < kFirstYear % 100 ? 2000 : 1900;
    }
    return {year, month, match.captured("day").toInt()};
}

// Takes the date from the front of the text; an invalid one when there is none.
QDate TakeDate(QString* text) {
    // Most files have this one, and the patterns take ten times as long.
    constexpr qsizetype kIsoSize = 10;
    if (text->size() >= kIsoSize) {
        const QDate date = QDate::fromString(QStringView(*text).left(kIsoSize), Qt::ISODate);
        if (date.isValid()) {
            text->remove(0, kIsoSize);
            return date;
        }
    }
    static const auto kPatterns = [] {
        std::vector<QRegularExpression> patterns;
        for (const DateShape& shape : kDateShapes) {
            patterns.push_back(PatternOf(shape));
        }
        return patterns;
    }();
    for (std::size_t i = 0; i < kPatterns.size(); ++i) {
        const QRegularExpressionMatch match = kPatterns[i].match(*text);
        if (match.hasMatch()) {
            text->remove(0, match.capturedLength());
            return DateOf(match, kDateShapes[i].firstYear);
        }
    }
    return {};
}

// A number of digits alone; -1 for anything else.
int Digits(std::string_view text) {
    int number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return -1;
        }
        number = number * 10 + (c - '0');
    }
    return number;
}

// The bare 2020-04-17, which is what the rows of daily files have; nothing for all else, which is
// read, or refused, the long way.
std::optional<long> PlainDay(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const int year = Digits(text.substr(0, 4));
    const int month = Digits(text.substr(5, 2));
    const int day = Digits(text.substr(8, 2));
    constexpr int kEveryMonthHas = 28;
    if (day > kEveryMonthHas && !QDate::isValid(year, month, day)) {
        return std::nullopt;
    }
    return DayNumberFromDate({year, month, day});
}

// ---- Times of day ----

QTime TimeOf(const QString& text) {
    if (text.size() == 5 && text[2] == ':' && text < "24") {
        return QTime::fromString(text, Qt::ISODate);
    }
    static const QRegularExpression kPattern(
        "^(?:(?<hour>\\d\\d?):(?<minute>\\d\\d?)(?::(?<second>\\d\\d?)(?:\\.\\d+)?)?"
        "|(?<compact>\\d{3,6}))[ \t]*(?:(?<half>[ap])m|z)?[ \t]*(?:[-+]\\d+(?::\\d+)?)?$",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = kPattern.match(text);
    int hour = match.captured("hour").toInt();
    int minute = match.captured("minute").toInt();
    int second = match.captured("second").toInt();
    if (const QString compact = match.captured("compact"); !compact.isEmpty()) {
        const int digits = compact.toInt() * (compact.size() > 4 ? 1 : 100);
        hour = digits / 10000;
        minute = digits / 100 % 100;
        second = digits % 100;
    }
    const QString half = match.captured("half").toLower();
    if (!match.hasMatch() || (!half.isEmpty() && (hour < 1 || hour > 12))) {
        return {};
    }
    if (!half.isEmpty()) {
        hour = hour % 12 + (half == "p" ? 12 : 0);
    }
    return {hour, minute, second};
}

}  // namespace

CsvFault ParsePrice(std::string_view text, double* value, int* decimals) {
    // Most of them need no more than this.
    const auto number = PlainNumber(text);
    const std::string_view plain = number ? text : text::Trim(text);
    const CsvFault fault = number ? CsvFault::None : ParseNumber(plain, value);
    *value = number.value_or(*value);
    if (fault == CsvFault::None && decimals != nullptr) {
        *decimals = std::max(*decimals, DecimalsIn(plain));
    }
    return fault;
}

CsvFault ParseVolume(std::string_view text, double* value) {
    static constexpr std::string_view kNothing[] = {"", "-", "--", "NULL", "N/A"};
    static constexpr std::pair<char, double> kUnits[] = {{'K', 1e3}, {'M', 1e6}, {'B', 1e9}};
    *value = 0;
    if (const auto number = PlainNumber(text); number && *number >= 0) {
        *value = *number;
        return CsvFault::None;
    }
    CString plain = text::ToUpper(text::Trim(text));
    if (std::ranges::find(kNothing, plain) != std::end(kNothing)) {
        return CsvFault::None;
    }
    const auto unit = std::ranges::find(kUnits, plain.back(), &std::pair<char, double>::first);
    if (unit != std::end(kUnits)) {
        plain.pop_back();
    }
    if (ParseNumber(plain, value) != CsvFault::None) {
        return CsvFault::NumberNotReadable;
    }
    *value *= unit == std::end(kUnits) ? 1 : unit->second;
    return *value < 0 ? CsvFault::NegativeVolume : CsvFault::None;
}

CsvFault ParseTime(std::string_view date, std::string_view timeOfDay, double* time) {
    if (const auto plain = timeOfDay.empty() ? PlainDay(date) : std::nullopt) {
        *time = static_cast<double>(*plain);
        return CsvFault::None;
    }
    QString rest = ToQString(date).trimmed();
    const QString clock = ToQString(timeOfDay).trimmed();
    if (rest.isEmpty()) {
        return CsvFault::MissingField;
    }
    const QDate day = TakeDate(&rest);
    QTime moment(0, 0);
    if (!rest.isEmpty()) {
        const bool parted = QStringView(u"Tt ,").contains(rest.front());
        moment = parted ? TimeOf(rest.mid(1).trimmed()) : QTime();
    }
    if (moment.isValid() && !clock.isEmpty()) {
        moment = TimeOf(clock);
    }
    if (!day.isValid() || !moment.isValid()) {
        return CsvFault::DateNotReadable;
    }
    const auto number = DayNumberFromDate({day.year(), day.month(), day.day()});
    if (!number) {
        return CsvFault::YearOutOfRange;
    }
    *time = static_cast<double>(*number) + moment.msecsSinceStartOfDay() / 86400000.0;
    return CsvFault::None;
}

}  // namespace ta::terminal
