#include "terminal/compare/Comparison.h"

#include "platform/DayNumber.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace ta::terminal {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kSecondsPerDay = 86400;
// Base dates beyond the years of four digits are as good as these.
constexpr double kFirstDay = -700000;
constexpr double kLastDay = 2900000;

enum Period { kDaily = 0, kWeekly = 1, kMonthly = 2 };

struct Place {
    std::int64_t place = 0;
    double time = 0;
};

using Places = std::vector<Place>;

Places PlacesOf(const BarSeries& bars, int period) {
    Places places;
    places.reserve(bars.size());
    for (const Bar& bar : bars) {
        places.push_back({PlaceOf(bar.time, period), bar.time});
    }
    return places;
}

/// Both in one, each place once at its latest time.
Places Joined(const Places& left, const Places& right) {
    Places joined;
    joined.reserve(std::max(left.size(), right.size()));
    auto a = left.begin();
    auto b = right.begin();
    const auto take = [&joined](const Place& next) {
        if (joined.empty() || joined.back().place != next.place) {
            joined.push_back(next);
        } else {
            joined.back().time = std::max(joined.back().time, next.time);
        }
    };
    while (a != left.end() || b != right.end()) {
        const bool isLeft = b == right.end() || (a != left.end() && a->place <= b->place);
        take(isLeft ? *a++ : *b++);
    }
    return joined;
}

/// ComparisonLine::bars.
std::vector<int> BarsAt(const Places& axis, const Places& own) {
    std::vector<int> bars(axis.size(), -1);
    int bar = -1;
    const int last = static_cast<int>(own.size()) - 1;
    for (std::size_t i = 0; i < axis.size() && last >= 0; ++i) {
        if (axis[i].place > own.back().place) {
            break;
        }
        while (bar < last && own[static_cast<std::size_t>(bar + 1)].place <= axis[i].place) {
            ++bar;
        }
        bars[i] = bar;
    }
    return bars;
}

std::shared_ptr<const BarSeries> AxisOf(const Places& places) {
    auto axis = std::make_shared<BarSeries>(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        (*axis)[i].time = places[i].time;
    }
    return axis;
}

/// The last place that a base date takes in.
std::int64_t BasePlace(double baseDate, int period) {
    const double date = std::clamp(baseDate, kFirstDay, kLastDay);
    const bool isWholeDay = period > kMonthly && date == std::floor(date);
    return isWholeDay ? PlaceOf(date + 1, period) - 1 : PlaceOf(date, period);
}

ComparisonBase BaseOf(const BarSeries& bars, std::int64_t place, int period) {
    const auto placeOf = [period](const Bar& bar) { return PlaceOf(bar.time, period); };
    const auto after = std::ranges::upper_bound(bars, place, {}, placeOf) - bars.begin();
    const auto bar = std::max<std::ptrdiff_t>(after - 1, 0);
    const Bar& found = bars[static_cast<std::size_t>(bar)];
    return {static_cast<int>(bar), found.time, found.close, after == 0};
}

double ValueOf(double price, double base, ComparisonMode mode) {
    switch (mode) {
        case ComparisonMode::Percent:
            return (price - base) / base * 100;
        case ComparisonMode::Indexed:
            return price / base * 100;
        case ComparisonMode::Prices:
            break;
    }
    return price;
}

void CountLine(ComparisonLine& line, const BarSeries& bars, ComparisonMode mode) {
    line.isDifference = mode != ComparisonMode::Prices && !(line.base.price > 0);
    line.values.assign(line.bars.size(), kNone);
    for (std::size_t i = 0; i < line.bars.size(); ++i) {
        if (line.bars[i] >= 0) {
            const double price = bars[static_cast<std::size_t>(line.bars[i])].close;
            line.values[i] =
                line.isDifference ? price - line.base.price : ValueOf(price, line.base.price, mode);
        }
    }
}

}  // namespace

std::int64_t PlaceOf(double time, int period) {
    const auto day = static_cast<std::int64_t>(std::floor(time));
    switch (period) {
        case kDaily:
            return day;
        case kWeekly:
            return day - WeekdayFromDayNumber(static_cast<long>(day));
        case kMonthly: {
            const CalendarDate date = DateFromDayNumber(static_cast<long>(day));
            return date.year * 12LL + date.month;
        }
        default:
            return std::llround(time * kSecondsPerDay);
    }
}

bool ComparisonLine::HasBarAt(int axisBar) const {
    if (axisBar < 0 || axisBar >= static_cast<int>(bars.size())) {
        return false;
    }
    const auto index = static_cast<std::size_t>(axisBar);
    return bars[index] >= 0 && (index == 0 || bars[index - 1] != bars[index]);
}

Comparison Align(const std::vector<std::shared_ptr<const BarSeries>>& histories, int period) {
    Places axis;
    std::vector<Places> all;
    for (const auto& history : histories) {
        all.push_back(history ? PlacesOf(*history, period) : Places());
        axis = Joined(axis, all.back());
    }
    Comparison comparison{AxisOf(axis), {}, period};
    for (const Places& places : all) {
        comparison.lines.emplace_back().bars = BarsAt(axis, places);
    }
    return comparison;
}

void Count(Comparison& comparison, const std::vector<std::shared_ptr<const BarSeries>>& histories,
           double baseDate, ComparisonMode mode) {
    const BarSeries& axis = *comparison.axis;
    const int period = comparison.period;
    const double first = axis.empty() ? 0 : axis.front().time;
    const std::int64_t place = baseDate == 0 ? PlaceOf(first, period) : BasePlace(baseDate, period);
    for (std::size_t i = 0; i < histories.size(); ++i) {
        ComparisonLine& line = comparison.lines[i];
        if (!histories[i] || histories[i]->empty()) {
            line = {{}, line.bars, std::vector<double>(line.bars.size(), kNone)};
            continue;
        }
        line.base = BaseOf(*histories[i], place, period);
        CountLine(line, *histories[i], mode);
    }
}

}  // namespace ta::terminal
