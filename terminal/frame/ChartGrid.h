#pragma once

#include "dialogs/WindowLayouts.h"
#include "terminal/frame/ChartLinks.h"
#include "terminal/frame/GridState.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace ta::terminal {

class ChartPage;
class MarketData;

/// The charts of one tab in one of the layouts. One of them is active, and framed where there are
/// several: the one that the user gave the focus to last. Charts that there is no window for are
/// parked: they stay as they are, unseen, and come back to their places when there are windows
/// again.
///
/// The lines between the windows can be dragged; a double click puts one back where the layout has
/// it.
class ChartGrid : public QWidget {
    Q_OBJECT

public:
    /// Begins without a chart; Add() the first one before anything else. `markets` stays the
    /// caller's and outlives the grid.
    explicit ChartGrid(const MarketData& markets, QWidget* parent = nullptr);

    /// Takes a chart, behind the others.
    void Add(ChartPage& chart);
    /// All of them in the order of their windows, parked ones too.
    const std::vector<ChartPage*>& Charts() const { return m_charts; }
    /// Window by window.
    std::vector<ChartPage*> InView() const;
    bool IsInView(const ChartPage& chart) const;
    int WindowCount() const;

    ChartPage& Active() const { return *m_charts[static_cast<std::size_t>(m_state.active)]; }
    /// Makes a chart that is in view the active one.
    void Activate(const ChartPage& chart);
    /// Gives the focus to the chart `step` windows on, round in a circle.
    void FocusNext(int step);

    /// Needs as many charts as the layout has windows. The active chart stays in view. Nothing
    /// happens when the layout is that one already.
    void SetFormat(int format);
    /// Makes the active window wider (Qt::Horizontal) or higher by a step, or less so for -1, as
    /// far as there is room.
    void ResizeActive(Qt::Orientation orientation, int steps);
    /// Puts all lines between the windows back where the layout has them.
    void ResetDividers();
    /// What the charts in view have in common; the others follow the active one at once.
    void SetLinks(const ChartLinkSwitches& switches);
    const ChartLinkSwitches& Links() const { return m_state.links; }

    const GridState& State() const { return m_state; }
    /// Takes it up as far as it makes sense with the charts that there are, at least as many as the
    /// layout has windows.
    void SetState(const GridState& state);

    QSize minimumSizeHint() const override;

signals:
    /// Another chart is active.
    void activeChanged();
    /// To be told to the user.
    void notice(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    const layout::Layout& Layout() const { return layout::LayoutOf(m_state.format); }
    layout::Places Places() const;
    std::size_t ChartOf(std::size_t window) const;
    void OnFocus(const ChartPage& chart, Qt::FocusReason reason);
    void Arrange();
    std::vector<QRect> Cells() const;
    std::optional<std::size_t> DividerAt(const QPointF& position) const;
    std::optional<std::size_t> DividerBeside(const layout::Area& window, bool isUpright,
                                             bool isBehind) const;
    bool MoveDivider(std::size_t divider, double to);
    void PlaceDivider(std::size_t divider, double place);
    void ShowDividerCursor(const QPointF& position);

    std::vector<ChartPage*> m_charts;
    GridState m_state;
    ChartLinks m_links;
    std::optional<std::size_t> m_dragged;  ///< index of the divider
};

}  // namespace ta::terminal
