#pragma once

#include <utility>

namespace ta::terminal {

/// The part of a bar series that is in view. A bar of index i covers i - 0.5 to i + 0.5 of the
/// range. It stays over the bars, but for the room after the latest one and when there are fewer
/// bars than the narrowest range shows.
class PlotRange {
public:
    static constexpr double kNarrowest = 20;  ///< bars
    static constexpr double kLatestBars = 130;
    static constexpr double kLeastRoom = 0.02;  ///< share of the width

    /// `bars` is how many there are. The view stays where it is as far as that is still possible.
    void SetBarCount(int bars);
    int BarCount() const { return m_count; }
    /// How much of the view stays free after the latest bar when it is scrolled there: `share` of
    /// its width, from a little (the beginning, and for less) to all but one bar (1). A view that
    /// shows the latest bars moves along.
    void SetRoomAfter(double share);

    double Lower() const { return m_lower; }
    double Upper() const { return m_lower + m_width; }
    double Width() const { return m_width; }
    /// First and last bar whose middle is in view; (-1, -1) without bars.
    std::pair<int, int> Bars() const;

    /// The latest bars, at the width that a chart begins with.
    void ShowLatest();
    void ShowAll();
    /// The same width, at the last (first) bars.
    void ScrollToLatest();
    void ScrollToFirst();
    void Scroll(double bars) { MoveTo(m_lower + bars); }
    /// Puts the lower end at `lower`, or as near as allowed.
    void MoveTo(double lower);
    /// The least scrolling that brings a bar into view.
    void ScrollTo(int bar);
    /// Makes the range `factor` times as wide, the point `anchor` keeping its place in it.
    void Zoom(double factor, double anchor);

private:
    double RoomAfter() const;
    double Widest() const;
    double Highest() const;

    int m_count = 0;
    double m_lower = -0.5;
    double m_width = kLatestBars;
    double m_roomShare = kLeastRoom;
};

}  // namespace ta::terminal
