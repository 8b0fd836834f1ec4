#include "terminal/chart/ChartView.h"
#include "terminal/plot/PlotMapping.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <qcustomplot.h>
#include <QContextMenuEvent>
#include <QRadioButton>

namespace ta::tour {
namespace {

QWidget& Plot(Guide& guide) {
    return Find<QCustomPlot>(guide.Chart(), {});
}

/// Shares of the width of the chart and of the height of a pane.
QPoint PointOf(Guide& guide, double x, double y, std::size_t pane = 0) {
    const terminal::PlotMapping mapping = guide.Chart().Mapping();
    const auto& place = mapping.panes[pane];
    return QPointF(mapping.left + x * mapping.width, place.top + y * place.height).toPoint();
}

void Choose(Guide& guide, std::initializer_list<const char*> radios, const QString& picture = {}) {
    guide.Choose(Command::CursorLine, {[&](QWidget& dialog) {
                     for (const char* radio : radios) {
                         auto& button = Find<QRadioButton>(dialog, radio);
                         button.setFocus();
                         QTest::keyClick(&button, Qt::Key_Space);
                     }
                     if (!picture.isEmpty()) {
                         guide.Picture(picture);
                     }
                     Confirm(dialog);
                 }});
}

void ShowDialog(Guide& guide) {
    guide.Choose(Command::NewTab);
    guide.ChooseDefaultGroup();
    guide.Open("SPX");
    InBothLanguages(guide, [&guide](const QString& language) {
        Choose(guide, {}, "cursor-line-dialog-" + language);
    });
}

void ShowLocked(Guide& guide) {
    Choose(guide, {"highRadio"});
    QTest::mouseMove(&Plot(guide), PointOf(guide, 0.4, 0.6));
    guide.Picture("cursor-line-on-the-high");
    guide.DarkPicture("cursor-line-dark");
    Choose(guide, {"verticalRadio", "noneRadio"});
    QTest::mouseMove(&Plot(guide), PointOf(guide, 0.5, 0.3, 3));
    guide.Picture("cursor-line-vertical");
    Choose(guide, {"crossRadio", "intelligentRadio"});
}

void ShowContextMenu(Guide& guide) {
    const QPoint place = PointOf(guide, 0.4, 0.4);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, Plot(guide).mapToGlobal(place));
    QApplication::sendEvent(&Plot(guide), &event);
    guide.Picture("chart-context-menu");
    Find<QMenu>(guide.Chart(), {}).close();
}

void ShowHeights(Guide& guide) {
    const terminal::PlotMapping mapping = guide.Chart().Mapping();
    const QPoint border(500, static_cast<int>(mapping.panes[0].Bottom()) + 1);
    QTest::mousePress(&Plot(guide), Qt::LeftButton, {}, border);
    QTest::mouseMove(&Plot(guide), border - QPoint(0, 60));
    QTest::mouseMove(&Plot(guide), border - QPoint(0, 120));
    QTest::mouseRelease(&Plot(guide), Qt::LeftButton, {}, border - QPoint(0, 120));
    guide.Picture("pane-heights");
    const double now = guide.Chart().Mapping().panes[0].Bottom();
    Expect(now < mapping.panes[0].Bottom() - 100, "the border of the panes does not move");
    const QPoint moved(500, static_cast<int>(now) + 1);
    QTest::mouseDClick(&Plot(guide), Qt::LeftButton, {}, moved);
    Expect(guide.Chart().Mapping().panes[0].Bottom() == mapping.panes[0].Bottom(),
           "the panes do not get their own heights back");
}

void ShowCloses(Guide& guide) {
    guide.Open("AMZN");
    Expect(guide.Chart().PaneCount() == 3, "closes have a pane of volumes");
    guide.Picture("closes-alone");
    guide.Choose(Command::CloseTab);
}

}  // namespace

std::vector<Step> CursorSteps() {
    return {{"cursor dialog", ShowDialog},
            {"locked cursor", ShowLocked},
            {"context menu", ShowContextMenu},
            {"pane heights", ShowHeights},
            {"closes alone", ShowCloses}};
}

}  // namespace ta::tour
