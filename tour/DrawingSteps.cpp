#include "dialogs/MXSetPenStyleWidthDlg.h"
#include "platform/ui/PenSamples.h"
#include "platform/ui/TextBridge.h"
#include "terminal/chart/ChartView.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/PlotMapping.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <qcustomplot.h>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTableView>

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

void Click(QWidget& widget) {
    QTest::mouseClick(&widget, Qt::LeftButton);
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
    InBothLanguages(guide, [&](const QString& language) {
        guide.Choose(Command::ListLines,
                     {[&](QWidget& dialog) {
                          auto& table = Find<QTableView>(dialog, {});
                          Expect(table.model()->rowCount() > 6, "lines are missing");
                          QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
                          QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
                          guide.Picture("trend-line-list-" + language);
                          QTest::keyClick(&table, Qt::Key_Delete);
                          QTest::keyClick(&dialog, Qt::Key_Return);
                      },
                      [&](QWidget& question) {
                          guide.Picture("trend-line-list-question-" + language);
                          Deny(question);
                      }});
    });
    guide.Open("SPX");
}

void ShowTrendLinesInTheDark(Guide& guide) {
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    guide.DarkPicture("trend-lines-dark");
}

// ---- Pens ----

/// Gives the selected line a pen by its dialog.
void ChoosePen(Guide& guide, const QString& style, const QString& width) {
    guide.Choose(Command::LinePen, {[&](QWidget& dialog) {
                     for (const QString& sample : {"width" + width, "style" + style}) {
                         Click(Find<ui::PenSample>(dialog, sample + "Sample"));
                     }
                     Confirm(dialog);
                 }});
}

void DrawInEveryPen(Guide& guide) {
    guide.Open("GLD-SPOT");
    const char* const pens[][2] = {{"0", "1"}, {"1", "1"}, {"2", "1"}, {"3", "1"}, {"4", "1"},
                                   {"0", "2"}, {"0", "3"}, {"0", "4"}, {"0", "5"}};
    double y = 0.1;
    for (const auto& [style, width] : pens) {
        Draw(guide, Command::DrawSegment, {{0.1, y + 0.04}, {0.6, y}});
        ChoosePen(guide, style, width);
        y += 0.09;
    }
    Expect(guide.Chart().Drawings().SelectedLine()->pen.width == 5, "the pen is not taken");
}

void ShowPenDialog(Guide& guide, const QString& language) {
    guide.Choose(Command::LinePen, {[&](QWidget& dialog) {
                     Click(Find<ui::PenSample>(dialog, "width1Sample"));
                     Click(Find<ui::PenSample>(dialog, "style3Sample"));
                     guide.Picture("pen-thin-" + language);
                     Click(Find<ui::PenSample>(dialog, "width3Sample"));
                     guide.Picture("pen-wide-" + language);
                     Dismiss(dialog);
                 }});
    MXSetPenStyleWidthDlg cursor(
        1, 2, ui::FromQString(qtTrId("IDS_TECHWND-CANVAS_COMMON_CURSORHEAD_OPEN")),
        &guide.Window());
    guide.WithDialogs([&] { cursor.DoModal(); }, {[&](QWidget& dialog) {
                          guide.Picture("pen-cursor-line-" + language);
                          Dismiss(dialog);
                      }});
}

/// The context menu, at the selected line.
void ShowLineMenu(Guide& guide, const QString& language) {
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(&guide.Chart(), &key);
    Settle();
    guide.Picture("line-menu-" + language);
    Find<QMenu>(guide.Chart(), {}).close();
    guide.Choose(Command::UndoLine);
    guide.MenuPicture(MenuId::Drawing, "drawing-menu-undo-" + language);
    guide.Choose(Command::RedoLine);
}

void ShowPens(Guide& guide) {
    DrawInEveryPen(guide);
    guide.Picture("pens");
    guide.DarkPicture("pens-dark");
    InBothLanguages(guide, [&](const QString& language) {
        ShowPenDialog(guide, language);
        ShowLineMenu(guide, language);
    });
    guide.Choose(Command::LinePen, {[&](QWidget& dialog) {
                     guide.DarkPicture("pen-dark");
                     Dismiss(dialog);
                 }});
    guide.Open("SPX");
}

}  // namespace

std::vector<Step> DrawingSteps() {
    return {{"drawing", ShowDrawing},
            {"trend lines", ShowTrendLines},
            {"drawing menu", ShowDrawingMenu},
            {"second window", ShowTrendLinesTwice},
            {"pens", ShowPens},
            {"line list", ShowTrendLineList},
            {"dark trend lines", ShowTrendLinesInTheDark}};
}

}  // namespace ta::tour
