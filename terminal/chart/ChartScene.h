#pragma once

#include "terminal/plot/PlotCursor.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/plot/PlotPane.h"
#include "terminal/plot/PlotRange.h"

#include <QFont>
#include <QPointF>

#include <memory>
#include <utility>
#include <vector>

class QCPMarginGroup;
class QCustomPlot;

namespace ta::terminal {

class CursorLine;

/// A chart model on a plot: the panes in the group's order, the cursor line over them, and the part
/// of the bars in view.
class ChartScene {
public:
    /// `plot` and `model` outlive the scene.
    ChartScene(QCustomPlot& plot, const ChartModel& model);
    ~ChartScene();

    PlotRange& Range() { return m_range; }
    const PlotRange& Range() const { return m_range; }

    /// Without panes, until Rebuild.
    void Clear();
    /// Makes the panes anew: after the group, the colours or the font changed.
    void Rebuild(const PlotTheme& theme, const QFont& font);
    /// To be called when the plot's size changed, before the next Draw.
    void LayoutChanged() { m_layoutIsOld = true; }
    /// Draws everything.
    void Draw(const PlotCursor& cursor);
    /// Draws the cursor line and the legends over what is there.
    void DrawCursor(const PlotCursor& cursor);

    PlotMapping Mapping() const;
    bool PaneShowsPrices(int pane) const;
    /// Of the cursor, or of the latest bar without one; -1 without bars.
    int LegendBar(const PlotCursor& cursor) const;
    std::vector<LegendEntry> LegendOf(int pane, const PlotCursor& cursor) const;
    /// The pane at a pixel and the study of the legend there, counted from 1 (0: none); (-1, 0)
    /// outside the panes.
    std::pair<int, int> PaneAndStudyAt(const QPointF& position) const;

private:
    void Fill();
    void FillLegends(const PlotCursor& cursor);
    void ShowCursor(const PlotCursor& cursor);
    void ArrangeOverlay();
    void KeepMargins();

    QCustomPlot& m_plot;
    const ChartModel& m_model;
    PlotRange m_range;
    PaneStyle m_style;
    std::vector<std::unique_ptr<PlotPane>> m_panes;
    std::unique_ptr<QCPMarginGroup> m_margins;
    std::unique_ptr<CursorLine> m_cursorLine;
    PlotCursor m_cursor;
    bool m_layoutIsOld = true;
};

}  // namespace ta::terminal
