#pragma once

#include "platform/TaData.h"
#include "platform/Types.h"

#include <QString>

#include <array>
#include <bitset>
#include <cstdint>

namespace ta::terminal {

class MarketData;

/// A data period that the frame offers.
struct FramePeriod {
    int code = 0;   ///< 0 daily, 1 weekly, 2 monthly, 3 minute
    int count = 0;  ///< minutes of a bar; 0 for the other periods
    const char* textKey = "";
    const char* shortcut = "";
};

inline constexpr std::array kPeriods{
    FramePeriod{0, 0, "IDS_TERMINAL-FRAME_PERIOD_DAY", "Ctrl+1"},
    FramePeriod{1, 0, "IDS_TERMINAL-FRAME_PERIOD_WEEK", "Ctrl+2"},
    FramePeriod{2, 0, "IDS_TERMINAL-FRAME_PERIOD_MONTH", "Ctrl+3"},
    FramePeriod{3, 1, "IDS_TERMINAL-FRAME_PERIOD_MINUTE1", "Ctrl+4"},
    FramePeriod{3, 5, "IDS_TERMINAL-FRAME_PERIOD_MINUTE5", "Ctrl+5"},
    FramePeriod{3, 15, "IDS_TERMINAL-FRAME_PERIOD_MINUTE15", "Ctrl+6"},
    FramePeriod{3, 30, "IDS_TERMINAL-FRAME_PERIOD_MINUTE30", "Ctrl+7"},
    FramePeriod{3, 60, "IDS_TERMINAL-FRAME_PERIOD_MINUTE60", "Ctrl+8"},
};

/// "5 分線" for a data period that the frame offers or any other, in the language in use.
QString PeriodText(int code, int count);

using PeriodSet = std::bitset<kPeriods.size()>;  ///< bit i: kPeriods[i]

/// The periods that the market data have for a symbol.
PeriodSet AvailablePeriods(const MarketData& markets, std::uint8_t market, const CString& id);

/// Whether the market data have a history and the user may see it.
bool IsThere(const MarketData& markets, const BarsKey& history);
/// The history when it is there, else the symbol's first period that the frame offers; the history
/// all the same when the symbol has none.
BarsKey NearestHistory(const MarketData& markets, const BarsKey& history);

/// Whether any of the periods is of this code.
constexpr bool HasPeriod(const PeriodSet& periods, int code) {
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        if (periods[i] && kPeriods[i].code == code) {
            return true;
        }
    }
    return false;
}

/// Position in kPeriods; -1 when the frame does not offer the period.
constexpr int PeriodIndex(int code, int count) {
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        if (kPeriods[i].code == code && kPeriods[i].count == count) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace ta::terminal
