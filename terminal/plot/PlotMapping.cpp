#include "terminal/plot/PlotMapping.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {

double PlotMapping::Pane::YOf(double value) const {
    return Bottom() - (value - low) / (high - low) * height;
}

double PlotMapping::Pane::ValueAt(double y) const {
    return low + (Bottom() - y) / height * (high - low);
}

int PlotMapping::NearestBarAt(double x) const {
    if (!bars || bars->empty()) {
        return -1;
    }
    const double last = static_cast<double>(bars->size() - 1);
    return static_cast<int>(std::clamp(std::round(BarAt(x)), 0.0, last));
}

double PlotMapping::BarOfTime(double time) const {
    if (!bars || bars->size() < 2) {
        return 0;
    }
    const auto after = std::ranges::lower_bound(*bars, time, {}, &Bar::time);
    const auto last = static_cast<std::ptrdiff_t>(bars->size()) - 1;
    const auto right = std::clamp<std::ptrdiff_t>(after - bars->begin(), 1, last);
    const double from = (*bars)[static_cast<std::size_t>(right - 1)].time;
    const double to = (*bars)[static_cast<std::size_t>(right)].time;
    return static_cast<double>(right - 1) + (time - from) / (to - from);
}

double PlotMapping::TimeOfBar(double bar) const {
    if (!bars || bars->size() < 2) {
        return bars && !bars->empty() ? bars->front().time : 0;
    }
    const double lastLeft = static_cast<double>(bars->size() - 2);
    const double index = std::clamp(std::floor(bar), 0.0, lastLeft);
    const Bar* before = bars->data() + static_cast<std::size_t>(index);
    return before[0].time + (bar - index) * (before[1].time - before[0].time);
}

int PlotMapping::PaneAt(double y) const {
    const auto found = std::ranges::find_if(
        panes, [y](const Pane& pane) { return y >= pane.top && y < pane.Bottom(); });
    return found == panes.end() ? -1 : static_cast<int>(found - panes.begin());
}

}  // namespace ta::terminal
