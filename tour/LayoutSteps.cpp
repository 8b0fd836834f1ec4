#include "dialogs/MXSELTAWND.h"
#include "dialogs/WindowLayouts.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartGrid.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QMessageBox>
#include <QPainter>
#include <QTabBar>

namespace ta::tour {
namespace {

using terminal::ChartGrid;

constexpr QSize kTabSize(400, 240);  // on the sheet of all layouts

QString RadioOf(int format) {
    return QString("format%1Radio").arg(format);
}

/// Chooses a layout, with pictures of the dialog when `picture` is not empty.
void ChooseFormat(Guide& guide, int format, const QString& picture = {}) {
    guide.Choose(Command::ChooseLayout, {[&](QWidget& dialog) {
                     Push(dialog, RadioOf(format));
                     if (!picture.isEmpty()) {
                         guide.Picture(picture);
                         guide.DarkPicture(picture + "-dark");
                     }
                     Push(dialog, "okButton");
                 }});
    const int windows = layout::LayoutOf(format).WindowCount();
    Expect(guide.Tabs().CurrentGrid().WindowCount() == windows, "the layout is another one");
}

void ShowDialog(Guide& guide) {
    InBothLanguages(guide, [&guide](const QString& language) {
        for (const int format : {1, 4, 12, 10}) {
            ChooseFormat(guide, format, QString("layout-dialog-%1-%2").arg(format).arg(language));
        }
        guide.MenuPicture(MenuId::Layout, "layout-menu-" + language);
    });
}

void FillCharts(Guide& guide) {
    ChooseFormat(guide, 10);
    for (const char* symbol : {"SPX", "9901", "9902", "SXF1", "GLD-SPOT", "OIL-SPOT", "CRN-SPOT",
                               "9903", "9904", "9905"}) {
        guide.Open(symbol);
        guide.Choose(Command::NextChart);
    }
}

/// A row of the sheet: the dialog's picture of a layout, and the tab in it.
void PaintRow(QPainter& painter, const QPoint& at, Guide& guide, int format) {
    ChooseFormat(guide, format);
    MXSELTAWND dialog(format);
    dialog.Create();
    auto* picture = dialog.findChild<QWidget*>(QString("format%1Picture").arg(format));
    picture->resize(picture->sizeHint());
    painter.drawPixmap(at + QPoint(10, 90), picture->grab());
    painter.drawText(at + QPoint(10, 80), QString::number(format));
    painter.drawPixmap(QRect(at + QPoint(150, 5), kTabSize),
                       guide.Tabs().CurrentGrid().grab().scaled(kTabSize, Qt::IgnoreAspectRatio,
                                                                Qt::SmoothTransformation));
}

void ShowEveryLayout(Guide& guide) {
    FillCharts(guide);
    const QSize cell(kTabSize.width() + 160, kTabSize.height() + 10);
    QPixmap sheet(cell.width() * 3, cell.height() * 5);
    sheet.fill(guide.Window().palette().color(QPalette::Window));
    QPainter painter(&sheet);
    for (int i = 0; i < layout::kLastFormat; ++i) {
        PaintRow(painter, {i % 3 * cell.width(), i / 3 * cell.height()}, guide, i + 1);
        guide.Picture(QString("layout-%1").arg(i + 1, 2, 10, QChar('0')));
    }
    painter.end();
    guide.Save(sheet, "layouts");
}

void ShowLinks(Guide& guide) {
    ChooseFormat(guide, 13);
    guide.Choose(Command::SameCursor);
    guide.Tabs().Current().SetCursorBar(guide.Tabs().Current().BarCount() - 30);
    guide.Picture("layout-same-cursor");
    guide.DarkPicture("layout-same-cursor-dark");
    guide.Choose(Command::SameSymbol);
    guide.Picture("layout-same-symbol");
    guide.Choose(Command::SamePeriod);
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_WEEK");
    guide.Picture("layout-same-period");
}

void ShowDividers(Guide& guide) {
    ChooseFormat(guide, 4);
    ChartGrid& grid = guide.Tabs().CurrentGrid();
    const QPoint from(grid.width() / 2, grid.height() / 4);
    const QPoint to(grid.width() * 2 / 3, grid.height() / 4);
    QTest::mousePress(&grid, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, grid.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&grid, &move);
    QTest::mouseRelease(&grid, Qt::LeftButton, {}, to);
    guide.Picture("layout-divider");
}

void ShowTabMenu(Guide& guide) {
    QTabBar& bar = *guide.Tabs().tabBar();
    const QPoint at = bar.tabRect(guide.Tabs().currentIndex()).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, bar.mapToGlobal(at));
    QCoreApplication::sendEvent(&bar, &event);
    guide.Picture("layout-tab-menu");
    bar.findChild<QMenu*>("tabMenu")->hide();
}

void CloseAll(Guide& guide) {
    ChooseFormat(guide, 2);
    guide.Choose(Command::CloseTab, {[&guide](QWidget& question) {
                     guide.Picture("layout-close");
                     auto* box = qobject_cast<QMessageBox*>(&question);
                     Expect(box != nullptr, "there is no question");
                     QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
                 }});
}

void ShowLayouts(Guide& guide) {
    guide.Choose(Command::NewTab);
    guide.ChooseDefaultGroup();
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    ShowDialog(guide);
    ShowEveryLayout(guide);
    ShowLinks(guide);
    ShowDividers(guide);
    ShowTabMenu(guide);
    CloseAll(guide);
}

}  // namespace

std::vector<Step> LayoutSteps() {
    return {{"layouts", ShowLayouts}};
}

}  // namespace ta::tour
