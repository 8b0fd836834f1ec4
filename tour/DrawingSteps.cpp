#include "terminal/chart/ChartView.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/PlotMapping.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <qcustomplot.h>
#include <QTableWidget>

#include <algorithm>

namespace ta::tour {
namespace {

/// A point of the price pane: shares of its width and height, from the left upper corner.
struct Share {
    double x = 0;
    double y = 0;
};

QWidget& Plot(Guide& guide) {
    return Find<QCustomPlot>(guide.Chart(), {});
}

QPoint PointOf(Guide& guide, const Share& share) {
    const terminal::PlotMapping mapping = guide.Chart().Mapping();
    const terminal::PlotMapping::Pane& prices = mapping.panes.front();
    return QPointF(mapping.left + share.x * mapping.width, prices.top + share.y * prices.height)
        .toPoint();
}

void Click(Guide& guide, const Share& at) {
    QTest::mouseClick(&Plot(guide), Qt::LeftButton, {}, PointOf(guide, at));
    Settle();
}

void Draw(Guide& guide, Command tool, const std::vector<Share>& points) {
    const int before = guide.Chart().Drawings().LineCount();
    guide.Choose(tool);
    for (const Share& point : points) {
        Click(guide, point);
    }
    Expect(guide.Chart().Drawings().LineCount() == before + 1, "a line is not drawn");
}

void ShowDrawing(Guide& guide) {
    guide.Choose(Command::NewTab);
    guide.ChooseDefaultGroup();
    guide.Open("SPX");
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    guide.Choose(Command::ShowLatest);
    Draw(guide, Command::DrawHorizontal, {{0.3, 0.13}});
    Draw(guide, Command::DrawLine, {{0.05, 0.42}, {0.4, 0.24}});
    guide.Choose(Command::DrawParallel);
    for (const Share& point : {Share{0.05, 0.6}, Share{0.45, 0.36}}) {
        Click(guide, point);
    }
    QTest::mouseMove(&Plot(guide), PointOf(guide, {0.3, 0.7}));
    guide.Picture("drawing");
    Click(guide, {0.3, 0.7});
    Expect(guide.Chart().Drawings().LineCount() == 3, "the parallel is not drawn");
}

void ShowTrendLines(Guide& guide) {
    Draw(guide, Command::DrawSegment, {{0.68, 0.1}, {0.84, 0.9}});
    Draw(guide, Command::DrawGoldenCut, {{0.7, 0.12}, {0.84, 0.92}});
    guide.Picture("trend-lines");
}

void ShowDrawingMenu(Guide& guide) {
    guide.MenuPicture(MenuId::Drawing, "drawing-menu");
}

void ShowTrendLinesTwice(Guide& guide) {
    const int lines = guide.Chart().Drawings().LineCount();
    const int first = guide.Tabs().count() - 1;
    guide.Choose(Command::NewTab);
    guide.Choose(Command::ZoomOut);
    Expect(guide.Chart().Drawings().LineCount() == lines,
           "the second window does not show the lines");
    Draw(guide, Command::DrawRailLine, {{0.35, 0.4}, {0.72, 0.16}, {0.5, 0.36}});
    Expect(guide.Tabs().ChartAt(first)->Drawings().LineCount() == lines + 1,
           "the first window does not show a line of the second");
    guide.Picture("trend-lines-second-window");
}

void ShowTrendLineList(Guide& guide) {
    guide.Open("AMZN");
    Draw(guide, Command::DrawLine, {{0.2, 0.7}, {0.7, 0.3}});
    guide.Choose(Command::ListLines, {[&guide](QWidget& dialog) {
                     auto& table = Find<QTableWidget>(dialog, {});
                     Expect(table.rowCount() == 2, "the list has not two symbols");
                     guide.Picture("trend-line-list");
                     QTest::keyClick(&table, Qt::Key_Down);
                     QTest::keyClick(&table, Qt::Key_Up);
                     Confirm(dialog);
                 }});
    guide.Open("SPX");
}

void ShowTrendLinesInTheDark(Guide& guide) {
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    guide.DarkPicture("trend-lines-dark");
}

}  // namespace

std::vector<Step> DrawingSteps() {
    return {{"drawing", ShowDrawing},          {"trend lines", ShowTrendLines},
            {"drawing menu", ShowDrawingMenu}, {"second window", ShowTrendLinesTwice},
            {"line list", ShowTrendLineList},  {"dark trend lines", ShowTrendLinesInTheDark}};
}

}  // namespace ta::tour
