#include "terminal/plot/TimeAxis.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace ta::terminal {
namespace {

constexpr int kSecondsPerDay = 24 * 60 * 60;
constexpr double kInstant =
    0.01 / kSecondsPerDay;  // what a time of day loses as a fraction of a day

struct TimeUnit {
    enum Kind { Seconds, Days, Weeks, Months, Years } kind;
    int count;
};

constexpr std::array kUnits{
    TimeUnit{TimeUnit::Seconds, 1},       TimeUnit{TimeUnit::Seconds, 5},
    TimeUnit{TimeUnit::Seconds, 10},      TimeUnit{TimeUnit::Seconds, 30},
    TimeUnit{TimeUnit::Seconds, 60},      TimeUnit{TimeUnit::Seconds, 5 * 60},
    TimeUnit{TimeUnit::Seconds, 10 * 60}, TimeUnit{TimeUnit::Seconds, 15 * 60},
    TimeUnit{TimeUnit::Seconds, 30 * 60}, TimeUnit{TimeUnit::Seconds, 60 * 60},
    TimeUnit{TimeUnit::Seconds, 7200},    TimeUnit{TimeUnit::Days, 1},
    TimeUnit{TimeUnit::Weeks, 1},         TimeUnit{TimeUnit::Months, 1},
    TimeUnit{TimeUnit::Months, 3},        TimeUnit{TimeUnit::Months, 6},
    TimeUnit{TimeUnit::Years, 1},         TimeUnit{TimeUnit::Years, 2},
    TimeUnit{TimeUnit::Years, 5},         TimeUnit{TimeUnit::Years, 10},
    TimeUnit{TimeUnit::Years, 20},        TimeUnit{TimeUnit::Years, 50},
};

QDate DateOf(double time) {
    return QDate(1970, 1, 1).addDays(static_cast<qint64>(std::floor(time + kInstant)));
}

double TimeOf(const QDate& date) {
    return static_cast<double>(QDate(1970, 1, 1).daysTo(date));
}

QTime ClockOf(double time) {
    const double fraction = time - std::floor(time + kInstant);
    const int seconds = static_cast<int>(std::lround(std::max(fraction, 0.0) * kSecondsPerDay));
    return QTime(0, 0).addSecs(seconds);
}

/// The first start of a unit after a time.
double NextStart(const TimeUnit& unit, double time) {
    const QDate date = DateOf(time);
    switch (unit.kind) {
        case TimeUnit::Seconds: {
            const double perDay = static_cast<double>(kSecondsPerDay) / unit.count;
            return (std::floor((time + kInstant) * perDay) + 1) / perDay;
        }
        case TimeUnit::Days:
            return TimeOf(date) + 1;
        case TimeUnit::Weeks:
            return TimeOf(date) + 8 - date.dayOfWeek();
        case TimeUnit::Months: {
            const int month = (date.month() - 1) / unit.count * unit.count + 1;
            return TimeOf(QDate(date.year(), month, 1).addMonths(unit.count));
        }
        case TimeUnit::Years:
            break;
    }
    return TimeOf(QDate(date.year() / unit.count * unit.count + unit.count, 1, 1));
}

/// The bars that begin a unit. Nothing when there are more than `most`.
std::optional<std::vector<int>> StartsOf(const TimeUnit& unit, const BarSeries& bars, int first,
                                         int last, int most) {
    std::vector<int> starts;
    if (first == 0) {
        starts.push_back(0);
    }
    int before = std::max(first - 1, 0);
    while (before < last) {
        const double start = NextStart(unit, bars[static_cast<std::size_t>(before)].time);
        const auto found =
            std::lower_bound(bars.begin() + before + 1, bars.begin() + last + 1, start - kInstant,
                             [](const Bar& bar, double time) { return bar.time < time; });
        before = static_cast<int>(found - bars.begin());
        if (before > last) {
            break;
        }
        starts.push_back(before);
        if (static_cast<int>(starts.size()) > most) {
            return std::nullopt;
        }
    }
    return starts;
}

bool BeginsDay(const BarSeries& bars, int bar) {
    return bar == 0 || DateOf(bars[static_cast<std::size_t>(bar)].time) !=
                           DateOf(bars[static_cast<std::size_t>(bar - 1)].time);
}

/// Leaves out starts that are too near to the one before; the first bar of a day stays, and the one
/// before goes.
std::vector<int> Thinned(const std::vector<int>& starts, const BarSeries& bars, double spacing) {
    std::vector<int> kept;
    for (const int bar : starts) {
        if (!kept.empty() && bar - kept.back() < spacing) {
            if (!BeginsDay(bars, bar) || BeginsDay(bars, kept.back())) {
                continue;
            }
            kept.pop_back();
        }
        if (kept.empty() || bar - kept.back() >= spacing) {
            kept.push_back(bar);
        }
    }
    return kept;
}

QString LabelText(const TimeUnit& unit, const BarSeries& bars, int bar, std::optional<int> before) {
    const double time = bars[static_cast<std::size_t>(bar)].time;
    const QDate date = DateOf(time);
    switch (unit.kind) {
        case TimeUnit::Seconds:
            return BeginsDay(bars, bar)
                       ? date.toString(u"MM/dd")
                       : ClockOf(time).toString(unit.count < 60 ? u"HH:mm:ss" : u"HH:mm");
        case TimeUnit::Days:
        case TimeUnit::Weeks: {
            const bool newYear =
                !before ||
                DateOf(bars[static_cast<std::size_t>(*before)].time).year() != date.year();
            return date.toString(newYear ? u"yyyy/MM/dd" : u"MM/dd");
        }
        case TimeUnit::Months:
            return date.toString(u"yyyy/MM");
        case TimeUnit::Years:
            break;
    }
    return date.toString(u"yyyy");
}

}  // namespace

QString TimeText(double time, int period) {
    const QDate date = DateOf(time);
    if (period < 3) {
        return date.toString(u"yyyy/MM/dd");
    }
    return date.toString(u"yyyy/MM/dd ") +
           ClockOf(time).toString(period == 3 ? u"HH:mm" : u"HH:mm:ss");
}

std::vector<TimeLabel> MakeTimeLabels(const BarSeries& bars, int first, int last, double spacing) {
    last = std::min(last, static_cast<int>(bars.size()) - 1);
    first = std::max(first, 0);
    if (first > last) {
        return {};
    }
    spacing = std::max(spacing, 1.0);
    const int most = std::max(2, static_cast<int>((last - first + 1) / spacing) + 1);

    std::vector<TimeLabel> labels;
    for (const TimeUnit& unit : kUnits) {
        const auto starts = StartsOf(unit, bars, first, last, most);
        const auto beginsDay = [&bars](int bar) { return BeginsDay(bars, bar); };
        if (!starts ||
            (unit.kind == TimeUnit::Seconds && std::ranges::all_of(*starts, beginsDay))) {
            continue;
        }
        std::optional<int> before;
        for (const int bar : Thinned(*starts, bars, spacing)) {
            labels.push_back({bar, LabelText(unit, bars, bar, before)});
            before = bar;
        }
        break;
    }
    return labels;
}

void TimeAxisTicker::generate(const QCPRange& range, const QLocale&, QChar, int,
                              QVector<double>& ticks, QVector<double>* subTicks,
                              QVector<QString>* tickLabels) {
    ticks.clear();
    if (subTicks) {
        subTicks->clear();
    }
    if (tickLabels) {
        tickLabels->clear();
    }
    if (!m_bars) {
        return;
    }
    for (TimeLabel& label : MakeTimeLabels(*m_bars, static_cast<int>(std::ceil(range.lower)),
                                           static_cast<int>(std::floor(range.upper)), m_spacing)) {
        ticks.append(label.bar);
        if (tickLabels) {
            tickLabels->append(std::move(label.text));
        }
    }
}

}  // namespace ta::terminal
