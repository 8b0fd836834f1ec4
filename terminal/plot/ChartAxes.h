#pragma once

#include "platform/Types.h"
#include "terminal/plot/PlotNumbers.h"
#include "terminal/studies/TerminalDrawInfo.h"

#include <map>
#include <optional>

namespace ta::terminal {

/// The index under which a draw info has the range of a scale: the pane (from 0), how its values
/// are written, and the study that it belongs to, 0 for the prices. Another study in the pane's
/// place has another range. The numbers are kept between runs, see ChartAxesText.h.
int AxisIndex(int pane, NumberKind numbers, StudyType study);

/// How a chart's axes are as its user has set them. They are in a draw info of the chart's own,
/// which the axis dialogs write into: it outlives a reload of the settings repository, no other
/// chart shares it, and nothing of it is in the store. The ranges belong to one history each.
class ChartAxes {
public:
    TerminalDrawInfo& DrawInfo() { return m_drawInfo; }

    /// From now on the ranges are those of another history; these are there again when it comes
    /// back. `key` names the history.
    void ShowHistory(const CString& key);
    /// Those of every history that has ranges set by hand, by its key.
    std::map<CString, YAxisRanges> AllRanges() const;
    void SetAllRanges(std::map<CString, YAxisRanges> ranges);

    /// The range that was set by hand; nothing for an automatic one.
    std::optional<YAxisRange> RangeOf(int axis) const;
    bool HasRanges() const;
    void MakeAutomatic(int axis) { m_drawInfo.vSetYaxisRangeAutomatically(axis, true); }
    void MakeAllAutomatic() { m_drawInfo.SetYaxisRanges({}); }

    /// Of the value axes, in percent of what their labels ask for: 0 to 100.
    int WidthPercent() const;
    /// Of the view's width that stays free after the latest bar: 0 to 100.
    int EdgePercent() const;

private:
    CommonProp& Common() const { return m_drawInfo.CommonProperty(); }

    mutable TerminalDrawInfo m_drawInfo;  // which gives its properties to change alone
    CString m_history;
    std::map<CString, YAxisRanges> m_others;  // with ranges set by hand
};

}  // namespace ta::terminal
