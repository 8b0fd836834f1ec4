#pragma once

#include "terminal/plot/PlotCursor.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/plot/PlotPane.h"
#include "terminal/plot/PlotRange.h"

#include <qcustomplot.h>
#include <QFont>
#include <QPointF>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QCPMarginGroup;

namespace ta::terminal {

class ChartAxes;
class CursorLine;
class LastPriceTag;

/// A value axis of a chart.
struct AxisPlace {
    int pane = -1;
    int scale = -1;  ///< in the pane's scales; 0: the labelled one

    bool IsThere() const { return pane >= 0; }
};

/// What there is to know of a value axis.
struct AxisState {
    int index = 0;  ///< in the draw info
    NumberKind numbers = NumberKind::Plain;
    bool byHand = false;
    double low = 0;  ///< what it shows
    double high = 1;
    ValueSpan values;  ///< of all bars
};

/// A model on a plot: its panes in their order, the cursor line over them, and the part
/// of the bars in view.
///
/// What changes is drawn at the next Update, once, and not before: by the view at once, before the
/// plot is painted, or when somebody asks for the geometry.
class ChartScene {
public:
    /// `plot`, `model` and `axes` outlive the scene.
    ChartScene(QCustomPlot& plot, const PlotModel& model, const ChartAxes& axes);
    ~ChartScene();

    PlotRange& Range() { return m_range; }
    const PlotRange& Range() const { return m_range; }

    /// The group, the colours or the font changed: panes are made anew.
    void Rebuild(const PlotTheme& theme, const QFont& font);
    /// The plot's size changed.
    void LayoutChanged();
    /// The bars, the part of them in view or the cursor changed.
    void Change(const PlotCursor& cursor);
    /// The range of a pane's axis changed, and nothing else: draws that pane alone, where the
    /// labels need no more room than they have.
    void RangeChanged(int pane);
    /// Draws what changed.
    void Update(QCustomPlot::RefreshPriority refresh = QCustomPlot::rpQueuedRefresh);
    /// Draws the cursor line and the legends over what is there.
    void DrawCursor(const PlotCursor& cursor);

    /// How the panes share the height: a part of it for each pane, from the top; 0, or one that is
    /// missing, for the part that a pane has by itself.
    void SetShares(std::vector<double> shares);
    const std::vector<double>& Shares() const { return m_shares; }
    /// The pane over the border at a pixel; -1 elsewhere.
    int BorderAt(const QPointF& position);
    /// Moves the border below a pane; both panes stay high enough to be seen.
    void MoveBorder(int pane, double y);

    PlotMapping Mapping();
    bool PaneShowsPrices(int pane) const;
    /// The height of the level line for a cursor at a pixel; see LockCursor(). The pixel's own
    /// where there is nothing to lock on, or no cursor line by the group's options.
    double LockedHeight(const PlotCursor& cursor);
    /// Of the cursor, of the last bar in view when the cursor is out of it, or of the latest bar
    /// without a cursor; -1 without bars.
    int LegendBar(const PlotCursor& cursor) const;
    std::vector<LegendEntry> LegendOf(int pane, const PlotCursor& cursor) const;
    /// The pane at a pixel and the study of the legend there, counted from 1 (0: none); (-1, 0)
    /// outside the panes.
    std::pair<int, int> PaneAndStudyAt(const QPointF& position);
    /// The value axis whose labels stand at a pixel, or none.
    AxisPlace AxisAt(const QPointF& position);
    /// Nothing when there is no such axis, or nothing to see on it.
    std::optional<AxisState> StateOf(const AxisPlace& place);

private:
    void Clear();
    void MakePanes();
    void StretchPanes();
    void LayOut();
    void Place();
    void Fill();
    PlotSlice Slice() const;
    void FillPane(std::size_t pane, const PlotSlice& slice);
    bool HasRoomForLabels(const PlotPane& pane) const;
    void FillLegends(const PlotCursor& cursor);
    void ShowCursor(const PlotCursor& cursor);
    void ArrangeOverlay();
    void ShowLastPrice();
    void KeepMargins();
    void NarrowAxes();

    QCustomPlot& m_plot;
    const PlotModel& m_model;
    const ChartAxes& m_axes;
    PlotRange m_range;
    PaneStyle m_style;
    std::vector<std::unique_ptr<PlotPane>> m_panes;
    std::unique_ptr<QCPMarginGroup> m_margins;
    std::unique_ptr<LastPriceTag> m_lastPrice;
    std::unique_ptr<CursorLine> m_cursorLine;
    PlotCursor m_cursor;
    double m_askedLeft = 0;  // by the labels of the value axes so far
    double m_askedRight = 0;
    std::vector<double> m_shares;
    bool m_panesAreOld = true;
    bool m_layoutIsOld = true;
    bool m_isOld = true;
};

}  // namespace ta::terminal
