#include "terminal/quotes/BarPeriods.h"

#include "platform/DayNumber.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr int kSecondsPerDay = 86400;

// One bar from each run of bars with one key.
template <class Key>
BarSeries Merge(const BarSeries& bars, Key key) {
    BarSeries merged;
    long current = 0;
    for (const Bar& bar : bars) {
        const long wanted = key(bar);
        if (merged.empty() || wanted != current) {
            current = wanted;
            merged.push_back(bar);
            continue;
        }
        Bar& whole = merged.back();
        whole.time = bar.time;
        whole.high = std::max(whole.high, bar.high);
        whole.low = std::min(whole.low, bar.low);
        whole.close = bar.close;
        whole.volume += bar.volume;
    }
    return merged;
}

/// The whole minute of the earliest time of day, in seconds.
int SessionOf(const BarSeries& bars) {
    int session = kSecondsPerDay;
    for (const Bar& bar : bars) {
        session = std::min(session, SecondsOfDay(bar.time) / 60 * 60);
    }
    return session;
}

}  // namespace

int SecondsOfDay(double time) {
    const double fraction = time - std::floor(time);
    return std::min(static_cast<int>(std::lround(fraction * kSecondsPerDay)), kSecondsPerDay - 1);
}

long DayOf(double time) {
    return static_cast<long>(std::floor(time));
}

BarSeries DailyBars(const BarSeries& bars) {
    BarSeries daily = Merge(bars, [](const Bar& bar) { return DayOf(bar.time); });
    for (Bar& bar : daily) {
        bar.time = std::floor(bar.time);
    }
    return daily;
}

BarSeries WeeklyBars(const BarSeries& daily) {
    return Merge(daily, [](const Bar& bar) {
        const long day = DayOf(bar.time);
        return day - WeekdayFromDayNumber(day);
    });
}

BarSeries MonthlyBars(const BarSeries& daily) {
    return Merge(daily, [](const Bar& bar) {
        const CalendarDate date = DateFromDayNumber(DayOf(bar.time));
        return date.year * 12L + date.month;
    });
}

BarSeries MinuteBars(const BarSeries& bars, int minutes) {
    const int session = SessionOf(bars);
    const int length = minutes * 60;
    return Merge(bars, [session, length](const Bar& bar) {
        const int slot = (SecondsOfDay(bar.time) - session) / length;
        return DayOf(bar.time) * kSecondsPerDay + slot;
    });
}

BarSeries SecondBars(const BarSeries& trades, int seconds) {
    const int session = SessionOf(trades);
    const auto slotOf = [session, seconds](const Bar& bar) {
        return std::max(SecondsOfDay(bar.time) - session - 1, 0) / seconds;
    };
    BarSeries bars = Merge(trades, [&slotOf](const Bar& bar) {
        return DayOf(bar.time) * kSecondsPerDay + slotOf(bar);
    });
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const long day = DayOf(bars[i].time);
        const bool isLast = i + 1 == bars.size() || DayOf(bars[i + 1].time) != day;
        const int minuteEnd = (SecondsOfDay(bars[i].time) + 59) / 60 * 60;
        const int end = session + (slotOf(bars[i]) + 1) * seconds;
        const int shown = std::min(isLast ? std::min(end, minuteEnd) : end, kSecondsPerDay - 1);
        bars[i].time = static_cast<double>(day) + static_cast<double>(shown) / kSecondsPerDay;
    }
    return bars;
}

}  // namespace ta::terminal
