#include "terminal/quotes/CsvValues.h"

#include "platform/DayNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace ta::terminal {
namespace {

constexpr int kFirstRocYear = 1911;
constexpr std::size_t kLongestNumber = 40;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsLetter(char c) {
    return Lower(c) >= 'a' && Lower(c) <= 'z';
}

bool EqualText(std::string_view text, std::string_view lower) {
    return std::ranges::equal(text, lower, {}, Lower);
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    return text;
}

// Copies `text` without its thousands separators; nothing when they do not part groups of three.
std::optional<std::string_view> WithoutSeparators(std::string_view text,
                                                  std::array<char, kLongestNumber>* buffer) {
    if (text.size() > buffer->size()) {
        return std::nullopt;
    }
    const std::size_t wholeEnd = std::min(text.find('.'), text.size());
    std::size_t length = 0;
    std::size_t group = 0;
    bool first = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != ',') {
            (*buffer)[length++] = text[i];
            group += IsDigit(text[i]) && i < wholeEnd ? 1 : 0;
            continue;
        }
        if (i > wholeEnd || group == 0 || group > 3 || (!first && group != 3)) {
            return std::nullopt;
        }
        first = false;
        group = 0;
    }
    if (group != 3) {
        return std::nullopt;
    }
    return std::string_view(buffer->data(), length);
}

CsvFault ParseNumber(std::string_view text, double* value) {
    if (text.empty()) {
        return CsvFault::MissingField;
    }
    std::array<char, kLongestNumber> buffer;
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    if (text.starts_with('$')) {
        text.remove_prefix(1);
    }
    if (text.find(',') != std::string_view::npos) {
        const auto plain = WithoutSeparators(text, &buffer);
        if (!plain) {
            return CsvFault::NumberNotReadable;
        }
        text = *plain;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && std::isfinite(*value) ? CsvFault::None : CsvFault::NumberNotReadable;
}

int DecimalsIn(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) {
        return 0;
    }
    const std::size_t last = text.find_last_not_of('0');
    return static_cast<int>(last - point);
}

// Takes numbers, month names and separators from the front of a text.
class Cursor {
public:
    explicit Cursor(std::string_view text) : m_rest(text) {}

    struct Number {
        int value = 0;
        int digits = 0;
    };

    bool AtEnd() const { return m_rest.empty(); }
    bool AtLetter() const { return !m_rest.empty() && IsLetter(m_rest.front()); }

    bool Take(Number* number) {
        const auto stop = std::ranges::find_if_not(m_rest, IsDigit);
        const auto digits = static_cast<std::size_t>(stop - m_rest.begin());
        if (digits == 0 || digits > 8) {
            return false;
        }
        std::from_chars(m_rest.data(), m_rest.data() + digits, number->value);
        number->digits = static_cast<int>(digits);
        m_rest.remove_prefix(digits);
        return true;
    }

    std::string_view TakeLetters() {
        const auto stop = std::ranges::find_if_not(m_rest, IsLetter);
        const auto letters = static_cast<std::size_t>(stop - m_rest.begin());
        const std::string_view taken = m_rest.substr(0, letters);
        m_rest.remove_prefix(letters);
        return taken;
    }

    bool TakeOneOf(std::string_view separators) {
        if (m_rest.empty() || separators.find(m_rest.front()) == std::string_view::npos) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }

    void SkipBlanks() {
        while (TakeOneOf(" \t")) {
        }
    }

    // One separator of a date with blanks around it: "Apr 17, 2020", "17-Apr-2020".
    bool TakeDateSeparator() {
        const bool mark = TakeOneOf("-/., ");
        SkipBlanks();
        return mark;
    }

private:
    std::string_view m_rest;
};

bool TakeMonth(Cursor* cursor, int* month) {
    static constexpr std::array<std::string_view, 12> kMonths{
        "january", "february", "march",     "april",   "may",      "june",
        "july",    "august",   "september", "october", "november", "december"};
    const std::string_view name = cursor->TakeLetters();
    for (std::size_t i = 0; name.size() >= 3 && i < kMonths.size(); ++i) {
        if (EqualText(name, kMonths[i].substr(0, name.size()))) {
            *month = static_cast<int>(i) + 1;
            cursor->TakeOneOf(".");
            return true;
        }
    }
    return false;
}

// A year of two digits lies in 1970 to 2069.
int FullYear(Cursor::Number year) {
    if (year.digits != 2) {
        return year.value;
    }
    return year.value + (year.value < 70 ? 2000 : 1900);
}

bool FromNumbers(Cursor::Number first, Cursor::Number second, Cursor::Number third, char mark,
                 CalendarDate* date) {
    if (second.digits > 2) {
        return false;
    }
    if (first.digits == 4 && third.digits <= 2) {
        *date = {first.value, second.value, third.value};
    } else if (third.digits == 4 && first.digits <= 2 && mark == '/') {
        *date = {third.value, first.value, second.value};
    } else if (first.digits <= 3 && third.digits <= 2) {
        *date = {first.value + kFirstRocYear, second.value, third.value};
    } else {
        return false;
    }
    return true;
}

bool TakeMonthFirst(Cursor* cursor, CalendarDate* date) {
    Cursor::Number day;
    Cursor::Number year;
    if (!TakeMonth(cursor, &date->month) || !cursor->TakeDateSeparator() || !cursor->Take(&day) ||
        !cursor->TakeDateSeparator() || !cursor->Take(&year)) {
        return false;
    }
    date->day = day.value;
    date->year = FullYear(year);
    return true;
}

bool TakeNumberFirst(Cursor* cursor, CalendarDate* date) {
    Cursor::Number first;
    if (!cursor->Take(&first)) {
        return false;
    }
    if (first.digits == 8) {
        *date = {first.value / 10000, first.value / 100 % 100, first.value % 100};
        return true;
    }
    const bool slash = cursor->TakeOneOf("/");
    if (!slash && !cursor->TakeDateSeparator()) {
        return false;
    }
    Cursor::Number second;
    Cursor::Number third;
    if (cursor->AtLetter()) {
        date->day = first.value;
        if (!TakeMonth(cursor, &date->month) || !cursor->TakeDateSeparator() ||
            !cursor->Take(&third)) {
            return false;
        }
        date->year = FullYear(third);
        return true;
    }
    return cursor->Take(&second) && cursor->TakeDateSeparator() && cursor->Take(&third) &&
           FromNumbers(first, second, third, slash ? '/' : '-', date);
}

bool DayIsInMonth(const CalendarDate& date) {
    static constexpr std::array<int, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date.month < 1 || date.month > 12 || date.day < 1) {
        return false;
    }
    const bool leap = (date.year % 4 == 0 && date.year % 100 != 0) || date.year % 400 == 0;
    const int days = kDays[static_cast<std::size_t>(date.month - 1)];
    return date.day <= days + (leap && date.month == 2 ? 1 : 0);
}

// "09:30:15.250" or "0930" or "093015" to seconds of the day.
bool TakeClock(Cursor* cursor, int* seconds) {
    Cursor::Number hour;
    Cursor::Number minute;
    Cursor::Number second;
    if (!cursor->Take(&hour)) {
        return false;
    }
    if (hour.digits > 2) {
        const int compact = hour.digits > 4 ? hour.value : hour.value * 100;
        if (hour.digits > 6) {
            return false;
        }
        hour.value = compact / 10000;
        minute.value = compact / 100 % 100;
        second.value = compact % 100;
    } else if (!cursor->TakeOneOf(":") || !cursor->Take(&minute)) {
        return false;
    } else if (cursor->TakeOneOf(":")) {
        Cursor::Number fraction;
        if (!cursor->Take(&second) || (cursor->TakeOneOf(".") && !cursor->Take(&fraction))) {
            return false;
        }
    }
    *seconds = (hour.value * 60 + minute.value) * 60 + second.value;
    return hour.value <= 23 && minute.value <= 59 && second.value <= 59;
}

bool TakeHalfOfDay(Cursor* cursor, int* seconds) {
    constexpr int kHalfDay = 12 * 60 * 60;
    const std::string_view half = cursor->TakeLetters();
    if (EqualText(half, "z") || half.empty()) {
        return true;
    }
    const int hour = *seconds / 3600;
    if ((!EqualText(half, "am") && !EqualText(half, "pm")) || hour < 1 || hour > 12) {
        return false;
    }
    *seconds = *seconds % kHalfDay + (EqualText(half, "pm") ? kHalfDay : 0);
    return true;
}

bool TakeTimeOfDay(Cursor* cursor, int* seconds) {
    if (!TakeClock(cursor, seconds)) {
        return false;
    }
    cursor->SkipBlanks();
    if (!TakeHalfOfDay(cursor, seconds)) {
        return false;
    }
    Cursor::Number offset;
    if (cursor->TakeOneOf("+-") &&
        (!cursor->Take(&offset) || (cursor->TakeOneOf(":") && !cursor->Take(&offset)))) {
        return false;
    }
    return cursor->AtEnd();
}

}  // namespace

CsvFault ParsePrice(std::string_view text, double* value, int* decimals) {
    text = Trimmed(text);
    const CsvFault fault = ParseNumber(text, value);
    if (fault == CsvFault::None && decimals != nullptr) {
        *decimals = std::max(*decimals, DecimalsIn(text));
    }
    return fault;
}

CsvFault ParseVolume(std::string_view text, double* value) {
    text = Trimmed(text);
    *value = 0;
    if (text.empty() || text == "-" || text == "--" || EqualText(text, "null") ||
        EqualText(text, "n/a")) {
        return CsvFault::None;
    }
    double unit = 1;
    switch (Lower(text.back())) {
        case 'k':
            unit = 1e3;
            break;
        case 'm':
            unit = 1e6;
            break;
        case 'b':
            unit = 1e9;
            break;
        default:
            break;
    }
    if (unit != 1) {
        text.remove_suffix(1);
    }
    if (ParseNumber(text, value) != CsvFault::None) {
        return CsvFault::NumberNotReadable;
    }
    *value *= unit;
    return *value < 0 ? CsvFault::NegativeVolume : CsvFault::None;
}

CsvFault ParseTime(std::string_view date, std::string_view timeOfDay, double* time) {
    date = Trimmed(date);
    timeOfDay = Trimmed(timeOfDay);
    if (date.empty()) {
        return CsvFault::MissingField;
    }
    Cursor cursor(date);
    CalendarDate day;
    if (!(cursor.AtLetter() ? TakeMonthFirst(&cursor, &day) : TakeNumberFirst(&cursor, &day)) ||
        !DayIsInMonth(day)) {
        return CsvFault::DateNotReadable;
    }
    int seconds = 0;
    if (cursor.TakeOneOf("Tt ,")) {
        cursor.SkipBlanks();
        if (!TakeTimeOfDay(&cursor, &seconds)) {
            return CsvFault::DateNotReadable;
        }
    }
    Cursor clock(timeOfDay);
    if (!cursor.AtEnd() || (!clock.AtEnd() && !TakeTimeOfDay(&clock, &seconds))) {
        return CsvFault::DateNotReadable;
    }
    const auto number = DayNumberFromDate(day);
    if (!number) {
        return CsvFault::YearOutOfRange;
    }
    *time = static_cast<double>(*number) + seconds / 86400.0;
    return CsvFault::None;
}

}  // namespace ta::terminal
