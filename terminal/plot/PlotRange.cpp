#include "terminal/plot/PlotRange.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

// Of a view of all bars, which would be no more to be seen with much room.
constexpr double kMostRoomForAll = 0.5;

}  // namespace

double PlotRange::RoomAfter() const {
    return std::min(m_width * m_roomShare, std::max(m_width - 1, 0.0));
}

double PlotRange::Widest() const {
    return std::max(kNarrowest, m_count / (1 - std::min(m_roomShare, kMostRoomForAll)));
}

double PlotRange::Highest() const {
    return m_count - 0.5 + RoomAfter() - m_width;
}

void PlotRange::SetRoomAfter(double share) {
    const bool atLatest = m_lower >= Highest();
    m_roomShare = std::clamp(share, kLeastRoom, 1.0);
    m_width = std::min(m_width, Widest());
    MoveTo(atLatest ? m_count : m_lower);
}

void PlotRange::SetBarCount(int bars) {
    m_count = std::max(bars, 0);
    m_width = std::min(m_width, Widest());
    MoveTo(m_lower);
}

std::pair<int, int> PlotRange::Bars() const {
    if (m_count == 0) {
        return {-1, -1};
    }
    const int last = m_count - 1;
    return {std::clamp(static_cast<int>(std::ceil(Lower())), 0, last),
            std::clamp(static_cast<int>(std::floor(Upper())), 0, last)};
}

void PlotRange::ShowLatest() {
    m_width = std::min(kLatestBars, Widest());
    ScrollToLatest();
}

void PlotRange::ShowAll() {
    m_width = Widest();
    ScrollToFirst();
}

void PlotRange::ScrollToLatest() {
    MoveTo(m_count);
}

void PlotRange::ScrollToFirst() {
    MoveTo(-0.5);
}

void PlotRange::MoveTo(double lower) {
    m_lower = std::max(std::min(lower, Highest()), -0.5);
}

void PlotRange::ScrollTo(int bar) {
    if (bar - 0.5 < Lower()) {
        MoveTo(bar - 0.5);
    } else if (bar + 0.5 > Upper()) {
        MoveTo(bar + 0.5 - m_width);
    }
}

void PlotRange::Zoom(double factor, double anchor) {
    const double place = (anchor - m_lower) / m_width;
    m_width = std::clamp(m_width * factor, std::min(kNarrowest, Widest()), Widest());
    MoveTo(anchor - place * m_width);
}

}  // namespace ta::terminal
