#include "terminal/tour/TourDrawing.h"

#include "terminal/chart/ChartView.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/tour/TourGuide.h"

#include <qcustomplot.h>
#include <QApplication>
#include <QMouseEvent>
#include <QTableWidget>

#include <algorithm>

namespace ta::terminal {
namespace {

/// A point of the price pane: shares of its width and height, from the left upper corner.
struct Share {
    double x = 0;
    double y = 0;
};

QWidget& Plot(TourGuide& guide) {
    auto* plot = guide.Chart().findChild<QCustomPlot*>();
    TourGuide::Expect(plot != nullptr, "the chart has no plot");
    return *plot;
}

QPoint PointOf(TourGuide& guide, const Share& share) {
    const PlotMapping mapping = guide.Chart().Mapping();
    const PlotMapping::Pane& prices = mapping.panes.front();
    return QPointF(mapping.left + share.x * mapping.width, prices.top + share.y * prices.height)
        .toPoint();
}

void MoveMouse(TourGuide& guide, const Share& to) {
    QWidget& plot = Plot(guide);
    const QPointF point(PointOf(guide, to));
    QMouseEvent event(QEvent::MouseMove, point, plot.mapToGlobal(point), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&plot, &event);
    TourGuide::Settle();
}

void Draw(TourGuide& guide, Command tool, const std::vector<Share>& points) {
    const int before = guide.Chart().Drawings().LineCount();
    guide.Choose(tool);
    for (const Share& point : points) {
        TourGuide::Click(Plot(guide), PointOf(guide, point));
    }
    TourGuide::Expect(guide.Chart().Drawings().LineCount() == before + 1, "a line is not drawn");
}

}  // namespace

void ShowDrawing(TourGuide& guide) {
    guide.Choose(Command::NewTab);
    QComboBox& groups = guide.Window().ToolBar().Group();
    TourGuide::Choose(groups, groups.itemText(0));
    guide.Open("SPX");
    TourGuide::Choose(guide.Window().ToolBar().Period(), Tr("IDS_TERMINAL-FRAME_PERIOD_DAY"));
    guide.Choose(Command::ShowLatest);
    Draw(guide, Command::DrawHorizontal, {{0.3, 0.13}});
    Draw(guide, Command::DrawLine, {{0.05, 0.42}, {0.4, 0.24}});
    guide.Choose(Command::DrawParallel);
    for (const Share& point : {Share{0.05, 0.6}, Share{0.45, 0.36}}) {
        TourGuide::Click(Plot(guide), PointOf(guide, point));
    }
    MoveMouse(guide, {0.3, 0.7});
    guide.Picture("drawing");
    TourGuide::Click(Plot(guide), PointOf(guide, {0.3, 0.7}));
    TourGuide::Expect(guide.Chart().Drawings().LineCount() == 3, "the parallel is not drawn");
}

void ShowTrendLines(TourGuide& guide) {
    Draw(guide, Command::DrawSegment, {{0.68, 0.1}, {0.84, 0.9}});
    Draw(guide, Command::DrawGoldenCut, {{0.7, 0.12}, {0.84, 0.92}});
    guide.Picture("trend-lines");
}

void ShowDrawingMenu(TourGuide& guide) {
    QMenu& menu = guide.Window().GetCommands().At(MenuId::Drawing);
    guide.Window().menuBar()->setActiveAction(menu.menuAction());
    TourGuide::Settle();
    TourGuide::Expect(menu.isVisible(), "the menu does not open");
    guide.Picture("drawing-menu");
    menu.hide();
    TourGuide::Settle();
}

void ShowTrendLinesTwice(TourGuide& guide) {
    const int lines = guide.Chart().Drawings().LineCount();
    const int first = guide.Window().TabCount() - 1;
    guide.Choose(Command::NewTab);
    guide.Choose(Command::ZoomOut);
    TourGuide::Expect(guide.Chart().Drawings().LineCount() == lines,
                      "the second window does not show the lines");
    Draw(guide, Command::DrawRailLine, {{0.35, 0.4}, {0.72, 0.16}, {0.5, 0.36}});
    TourGuide::Expect(guide.Window().ChartAt(first).Drawings().LineCount() == lines + 1,
                      "the first window does not show a line of the second");
    guide.Picture("trend-lines-second-window");
}

void ShowTrendLineList(TourGuide& guide) {
    guide.Open("AMZN");
    Draw(guide, Command::DrawLine, {{0.2, 0.7}, {0.7, 0.3}});
    guide.Choose(Command::ListLines, {[&guide](QWidget& dialog) {
                     auto* table = dialog.findChild<QTableWidget*>();
                     TourGuide::Expect(table != nullptr && table->rowCount() == 2,
                                       "the list has not two symbols");
                     guide.Picture("trend-line-list");
                     TourGuide::Press(*table, Qt::Key_Down);
                     TourGuide::Press(*table, Qt::Key_Up);
                     TourGuide::Press(dialog, Qt::Key_Return);
                 }});
    guide.Open("SPX");
}

void ShowTrendLinesInTheDark(TourGuide& guide) {
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    const QPalette light = QApplication::palette();
    QApplication::setPalette(dark);
    TourGuide::Choose(guide.Window().ToolBar().Period(), Tr("IDS_TERMINAL-FRAME_PERIOD_DAY"));
    TourGuide::Settle();
    guide.Picture("trend-lines-dark");
    QApplication::setPalette(light);
}

}  // namespace ta::terminal
