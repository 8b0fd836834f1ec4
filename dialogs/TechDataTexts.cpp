#include "dialogs/TechDataTexts.h"

#include "platform/DayNumber.h"
#include "platform/NumberDisplay.h"
#include "platform/NumberText.h"
#include "platform/SyncInfo.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace ta::techdata {
namespace {

constexpr double kSecondsOfDay = 86400;
// The days of 0001-01-01 and 9999-12-31.
constexpr double kFirstDay = -719162;
constexpr double kLastDay = 2932896;

using FractionOperation = CString (NumberDisplay::*)(double, unsigned char) const;

/// How wide a text may come out, roughly: in halves of a digit.
int WeightOf(const CString& text) {
    int weight = 0;
    for (const char byte : text) {
        const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        const bool isNarrow = byte >= ' ' && byte <= '/';
        weight += isLetter ? 3 : isNarrow ? 1 : 2;
    }
    return weight;
}

FractionOperation FractionStyle(int type) {
    switch (type) {
        case 1:
            return &NumberDisplay::CApi_DisplayFraction2Dot;
        case 2:
            return &NumberDisplay::CApi_DisplayFraction2SpecialDecimail;
        case 3:
            return &NumberDisplay::CApi_DisplayFraction2MixType;
        default:
            return &NumberDisplay::CApi_DisplayDenominator;
    }
}

}  // namespace

bool SplitTime(double time, DayAndSecond& parts) {
    const double day = std::floor(time);
    if (!(day >= kFirstDay && day <= kLastDay)) {
        return false;
    }
    parts = {static_cast<long>(day), SecondsOfDay(time - day)};
    return true;
}

long SecondsOfDay(double fraction) {
    const double seconds = fraction * kSecondsOfDay;
    if (!(std::abs(seconds) < std::numeric_limits<std::int32_t>::max())) {
        return 0;
    }
    std::int64_t hundredths = 0;
    if (ScaleToInteger(seconds, 2, hundredths)) {
        return static_cast<long>(hundredths / 100);
    }
    CString text;
    AppendFixed(text, seconds, 2);
    return std::strtol(text.c_str(), nullptr, 10);
}

const char* timeToString(double fraction) {
    static CString text;
    text.clear();
    AppendTimeOfDay(text, SecondsOfDay(fraction));
    return text.c_str();
}

void AppendDay(CString& out, long day, char separator) {
    const CalendarDate date = DateFromDayNumber(day);
    AppendPadded(out, date.year, 4);
    out += separator;
    AppendPadded(out, date.month, 2);
    out += separator;
    AppendPadded(out, date.day, 2);
}

void AppendTimeOfDay(CString& out, long seconds) {
    if (seconds < 0) {
        out += '-';
        seconds = -seconds;
    }
    const long hours = seconds / 3600;
    AppendPadded(out, hours > 23 ? hours - 24 : hours, 2);
    out += ':';
    AppendPadded(out, seconds % 3600 / 60, 2);
    if (seconds % 60 != 0) {
        out += ':';
        AppendPadded(out, seconds % 60, 2);
    }
}

CellTexts::CellTexts(unsigned char market, const CString& symbol, int dataType)
    : m_unit(market, symbol),
      m_dataType(dataType),
      m_display(CSyncInfo::GetSettingCFG().GetServices().numberDisplay),
      m_fractionType(CSyncInfo::GetSettingCFG().SYS_GetSpecificFractionType()) {
    const BKQuoteInterface& quotes = BKQuoteInterface::GetBKInterface();
    for (const char* key :
         {"IDC_TECHVIEW-STRING_TECHDATA_DEAL_VOL", "IDC_TECHVIEW-STRING_TECHDATA_DEAL_AMT",
          "IDC_TECHVIEW-STRING_TECHDATA_OI_VOL"}) {
        m_wholeNames.push_back(quotes.LangGetLangString(key));
    }
}

void CellTexts::AppendCell(CString& out, const OneRecord* record, const Headers& headers,
                           std::size_t column) const {
    if (record == nullptr) {
        return;
    }
    if (column == 0) {
        AppendDate(out, record->time);
    } else if (column < headers.size() && Fits(*record, headers)) {
        AppendValue(out, record->values[column - 1], headers[column]);
    }
}

void CellTexts::AppendDate(CString& out, double time) const {
    DayAndSecond parts;
    if (!SplitTime(time, parts)) {
        return;
    }
    AppendDay(out, parts.day);
    if (HasTimeOfDay()) {
        out += ' ';
        AppendTimeOfDay(out, parts.second);
    }
}

void CellTexts::AppendValue(CString& out, double value, const HeaderInfo& header) const {
    if (IsWhole(header)) {
        AppendFixed(out, value, 0);
    } else if (m_display == nullptr) {
        AppendShortest(out, value);
    } else if (bIsFractionType(value, header.fractionCode)) {
        out += FractionText(value, header.fractionCode);
    } else {
        out += m_display->CApi_DisplayDouble(value, m_unit.vSetBaseUnit(value, header.displayCode));
    }
}

bool CellTexts::IsWhole(const HeaderInfo& header) const {
    return std::ranges::find(m_wholeNames, header.name) != m_wholeNames.end();
}

bool CellTexts::bIsFractionType(double value, unsigned char fractionCode) const {
    const CString text = m_display->CApi_DisplayDenominator(value, fractionCode);
    return !text.empty() && text != "N/A";
}

CString CellTexts::FractionText(double value, unsigned char fractionCode) const {
    return (m_display->*FractionStyle(m_fractionType))(value, fractionCode);
}

void WidestTexts::Note(std::size_t column, const CString& text) {
    if (column >= m_widest.size()) {
        m_widest.resize(column + 1);
    }
    const int weight = WeightOf(text);
    if (weight > m_widest[column].weight) {
        m_widest[column] = {text, weight};
    }
}

const CString& WidestTexts::At(std::size_t column) const {
    static const CString kNone;
    return column < m_widest.size() ? m_widest[column].text : kNone;
}

}  // namespace ta::techdata
