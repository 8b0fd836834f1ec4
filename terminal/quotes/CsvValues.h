#pragma once

#include <cstdint>
#include <string_view>

namespace ta::terminal {

/// Why a row of a price file is bad.
enum class CsvFault : std::uint8_t {
    None,
    MissingField,
    NumberNotReadable,
    DateNotReadable,
    YearOutOfRange,  ///< outside 1970 to 2069
    HighBelowLow,
    OutsideHighLow,  ///< open or close above the high or below the low
    NegativeVolume,
    DuplicateTime,
    QuoteNotClosed,
};

/// A price: digits with thousands separators in groups of three, a point, a sign or a dollar sign
/// before it. `decimals` (may be null) becomes the count of decimals without trailing zeros when
/// that is more than it was.
CsvFault ParsePrice(std::string_view text, double* value, int* decimals = nullptr);

/// A volume: a number as above that may end in K, M or B; 0 for an empty text, "-", "--", "null" or
/// "n/a", which sites write where they have none.
CsvFault ParseVolume(std::string_view text, double* value);

/// A date, with or without a time of day, and a time of day in a field of its own (may be empty),
/// as a bar's time. Dates: 2020-04-17, 2020/4/17, 20200417, 04/17/2020, 17-Apr-2020, Apr 17 2020,
/// 109/04/17 (year of the Republic of China: + 1911). Times: 9:05, 09:05:30, 0905, 090530, with
/// AM or PM; parts of a second and an offset from UTC are left out.
CsvFault ParseTime(std::string_view date, std::string_view timeOfDay, double* time);

}  // namespace ta::terminal
