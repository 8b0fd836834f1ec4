#pragma once

#include "terminal/plot/PaneLegend.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/plot/PlotModel.h"
#include "terminal/plot/PlotScale.h"
#include "terminal/plot/PlotTheme.h"
#include "terminal/plot/PriceLevels.h"
#include "terminal/plot/TimeAxis.h"

#include <QFont>

#include <memory>
#include <vector>

class QCPAxis;
class QCPAxisRect;
class QCPItemText;
class QCustomPlot;

namespace ta::terminal {

class ChartAxes;

/// What the panes of a chart have in common.
struct PaneStyle {
    const ChartAxes* axes = nullptr;  ///< lives as long as the panes
    PlotTheme theme;
    QFont font;
    CommonProp options;
    QSharedPointer<TimeAxisTicker> timeTicker;
};

/// One pane on the plot: its axes, series and legend. Studies of prices share one scale, and those
/// of price differences (numbers of prices that are not on the price scale) another; each other
/// study has its own. The scale of the prices, or else of the first study that has outputs, is
/// labelled on the sides that the options say. Where that is one of prices, each other scale has
/// an axis of its own on the other side, or on the right outside of that of the prices, in the
/// colour of its study.
class PlotPane {
public:
    /// Takes a row of the plot's layout while it lives. `lowest`: has the labels of the time axis.
    PlotPane(QCustomPlot& plot, int row, const ChartPane& studies, const PaneStyle& style,
             bool lowest);
    ~PlotPane();
    PlotPane(const PlotPane&) = delete;
    PlotPane& operator=(const PlotPane&) = delete;

    QCPAxisRect& Rect() const { return *m_rect; }
    PaneLegend& Legend() { return *m_legend; }
    /// How values of the labelled scale are written, and whether they are prices.
    NumberKind Numbers() const { return m_scales.front().Numbers(); }
    bool ShowsPrices() const { return m_scales.front().IsOfPrices(); }
    /// The labelled one, then the others.
    const std::vector<PlotScale>& Scales() const { return m_scales; }
    std::vector<PlotScale>& Scales() { return m_scales; }

    /// Shows a slice of the pane's studies: `lower` to `upper` is the range of the time axis. Needs
    /// the place of Rect().
    void Fill(const PlotModel& model, const ChartPane& studies, const PlotSlice& slice,
              double lower, double upper);
    /// Gives the legend a strip of its own over Rect(), as high as its widest texts ask for. true:
    /// it had another height before, and the plot is to be laid out again.
    bool FitLegend();
    /// Places the legend's texts in its strip.
    void ArrangeLegend();
    /// Rect() and the legend's strip, pixels.
    QRectF Area() const;
    PlotMapping::Pane Geometry() const;

private:
    void ArrangeLegend(double height);
    void MakeAxes(bool lowest);
    void MakeScales(const ChartPane& studies);
    void MakeMainScale(const ChartStudy* study);
    PlotScale& ScaleFor(const ChartStudy& study);
    void LabelOwnAxis(PlotScale& scale, const ChartStudy& study);
    void MakeMarks(const ChartPane& studies);
    ScaleRoom RoomOf(const PlotScale& scale) const;
    void PlaceMarks(const PlotModel& model, int first, int end);
    void PlaceMark(QCPItemText& mark, int bar, double price, Qt::Alignment vertical);

    QCustomPlot& m_plot;
    const int m_row;
    const PaneStyle m_style;
    QCPAxisRect* m_rect;
    QCPAxis* m_timeAxis = nullptr;
    std::vector<PlotScale> m_scales;
    std::unique_ptr<LevelLines> m_levels;  // where there are candles
    std::unique_ptr<PaneLegend> m_legend;
    int m_legendHeight = 0;             // of its strip
    QCPItemText* m_highMark = nullptr;  // the plot's
    QCPItemText* m_lowMark = nullptr;
};

}  // namespace ta::terminal
