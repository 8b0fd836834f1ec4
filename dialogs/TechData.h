#pragma once

#include "platform/Types.h"

#include <cstdint>
#include <vector>

/// One row of technical data: a bar and the values of the studies at it.
struct OneRecord {
    /// The integer part is the day number since 1970-01-01, the rest the time of day as a fraction
    /// of 86,400 seconds.
    double time = 0;
    std::vector<double> values;  ///< one a column after the first, in the order of the columns
};

namespace ta::techdata {

/// One column of technical data; the first column is the date's. In memory it has its natural
/// alignment: a packed one would put every second text at an address that it cannot live at.
struct HeaderInfo {
    CString name;  ///< the heading; those of volumes and amounts have a rule of their own
    std::uint32_t ownerData = 0;    ///< the owner's; the viewer does not read it
    std::uint8_t fractionCode = 0;  ///< of NumberDisplay: the denominator of fractional prices
    std::int32_t displayCode = -1;  ///< of NumberDisplay; -1 and -9 escape the unit rule
};

using Headers = std::vector<HeaderInfo>;
using Records = std::vector<OneRecord>;

/// The data type of bars of a day or more, which are shown without a time of day.
constexpr int kDailyData = 1;

/// A record whose values are as many as the columns after the first.
inline bool Fits(const OneRecord& record, const Headers& headers) {
    return record.values.size() + 1 == headers.size();
}

}  // namespace ta::techdata
