#pragma once

#include "platform/Types.h"

#include <cstdint>

/// The options that are common to all panes of a group's chart, and the state of its axes.
class CommonProp {
public:
    bool operator==(const CommonProp&) const = default;

    // The common chart options, in the order in which they are stored.
    std::uint32_t uScalePos = 0;  ///< side of the value axis: 0 right, 1 left, 2 both
    bool bChartGrid = true;
    bool bCursor = true;
    bool bCursorOld = false;  ///< the old-style cursor: a short cross at the mouse
    bool bShowTAInfo = true;  ///< study names and values at the top of each pane
    bool bCrossLine = true;   ///< cursor as a cross; false: vertical line alone
    bool bLowIdx = false;     ///< a dotted level line at the lowest low in view, with its date
    bool bHighLow = true;     ///< marks at the highest high and lowest low in view
    bool bCDP = false;        ///< the levels AH, NH, CDP, NL, AL from the previous day's prices
    std::uint32_t uCursorLineLockMode = 0;  ///< 0 intelligent, 1 open, 2 high, 3 low, 4 close, 5 no
    std::uint32_t uCursorMoveStyle = 0;     ///< 0 the cursor line follows the mouse, 1 the click

    // Axes.
    int iCurrentAxis = 0;  ///< index of the value axis that an axis dialog works on
    bool bYaxisWidthDefault = true;
    bool bEdgeSpaceDefault = true;

    /// Width of the value axis in percent of its default, 0 to 100.
    void vSetYaxisWidth(int percent) { m_yAxisWidth = percent; }
    int iGetYaxisWidth() const { return m_yAxisWidth; }

    /// Space kept free at the chart's edge, in percent 0 to 100, and the caller's bar width that
    /// goes with it.
    void SetDrawChartMovePixel(int halfBarWidth, int percent) {
        m_halfBarWidth = halfBarWidth;
        m_edgeSpace = percent;
    }
    int iGetEdgeSpace() const { return m_edgeSpace; }
    int iGetMoveHalfBarWidth() const { return m_halfBarWidth; }

private:
    int m_yAxisWidth = 100;
    int m_edgeSpace = 0;
    int m_halfBarWidth = 0;
};
