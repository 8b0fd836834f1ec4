#pragma once

#include "dialogs/TechData.h"
#include "dialogs/TechDataUnit.h"
#include "platform/Types.h"

namespace ta {
class NumberDisplay;
}

/// The texts of technical data: what the viewer shows, copies and saves.
namespace ta::techdata {

/// A time as calendar day and whole second of it.
struct DayAndSecond {
    long day = 0;     ///< since 1970-01-01
    long second = 0;  ///< 86,400 for a time less than 5 ms before midnight
};

/// The parts of a record's time; a time before 1970 has its time of day too. false for a time that
/// is not finite or outside the years 1 to 9999.
bool SplitTime(double time, DayAndSecond& parts);

/// The whole seconds of a fraction of a day: its seconds with two decimals, cut at the point. 0
/// for what is not finite or beyond the range of 32 bits.
long SecondsOfDay(double fraction);

/// The time of day as "13:05", or "13:05:07" when the seconds are not 0. 24 hours and more show
/// their hours less 24. The text stands in one buffer, which the next call overwrites.
const char* timeToString(double fraction);

/// Appends "2024/03/05", with another character in the place of "/" if wanted.
void AppendDay(CString& out, long day, char separator = '/');
/// Appends what timeToString gives for whole seconds.
void AppendTimeOfDay(CString& out, long seconds);

/// The cells of one table. Keeps what the back-end and the language say, so it is for one pass
/// over the rows, not for keeping across a change of language or symbol.
class CellTexts {
public:
    CellTexts(unsigned char market, const CString& symbol, int dataType);

    bool HasTimeOfDay() const { return m_dataType != kDailyData; }
    /// The text of a column, from 0, of a record. A record that does not fit the headers has its
    /// date and empty cells; so does no record (null), without the date.
    void AppendCell(CString& out, const OneRecord* record, const Headers& headers,
                    std::size_t column) const;
    /// The date, with the time of day unless the data are daily; nothing for a time that is none.
    void AppendDate(CString& out, double time) const;
    /// A value in its column: without decimals in the columns of volume, amount and open interest;
    /// else as a fraction, in the style of the settings, where the column's fraction code gives
    /// one; else by the unit rule.
    void AppendValue(CString& out, double value, const HeaderInfo& header) const;

private:
    bool IsWhole(const HeaderInfo& header) const;
    bool bIsFractionType(double value, unsigned char fractionCode) const;
    CString FractionText(double value, unsigned char fractionCode) const;

    UnitRule m_unit;
    int m_dataType;
    const NumberDisplay* m_display;  ///< null: values as short as they can be read back
    int m_fractionType;
    std::vector<CString> m_wholeNames;
};

/// The widest text of each column so far, from which its width follows: a digit counts for more
/// than a sign or a point, and for less than a letter.
class WidestTexts {
public:
    void Clear() { m_widest.clear(); }
    void Note(std::size_t column, const CString& text);
    /// Empty for a column without texts.
    const CString& At(std::size_t column) const;

private:
    struct Widest {
        CString text;
        int weight = 0;
    };

    std::vector<Widest> m_widest;
};

}  // namespace ta::techdata
