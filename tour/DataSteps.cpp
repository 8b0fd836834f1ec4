#include "dialogs/MXTechDataDlg.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/DataViewer.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QTableView>

namespace ta::tour {
namespace {

constexpr int kLongestFill = 10000;  // milliseconds

void ShowViewer(Guide& guide, const QString& language) {
    guide.Choose(Command::ViewData);
    MXTechDataDlg* viewer = terminal::DataViewer::Of(guide.Chart()).Window();
    Expect(viewer != nullptr, "the data viewer does not open");
    guide.Picture("data-viewer-filling-" + language);
    const auto& button = Find<QPushButton>(*viewer, "profileButton");
    Expect(QTest::qWaitFor([&] { return button.isEnabled(); }, kLongestFill),
           "the data viewer is never full");
    Expect(Find<QTableView>(*viewer, "dataTable").model()->rowCount() == guide.Chart().BarCount(),
           "the data viewer lacks bars");
    guide.Picture("data-viewer-" + language);
    guide.WithDialogs([&] { Push(*viewer, "profileButton"); }, {[&](QWidget& dialog) {
                          guide.Picture("data-export-" + language);
                          Dismiss(dialog);
                      }});
    Push(*viewer, "closeButton");
}

void ShowInChinese(Guide& guide) {
    ShowViewer(guide, "zh");
}

void ShowInEnglish(Guide& guide) {
    guide.Choose(Command::English);
    ShowViewer(guide, "en");
    guide.Choose(Command::Chinese);
}

}  // namespace

std::vector<Step> DataSteps() {
    return {{"data in Chinese", ShowInChinese}, {"data in English", ShowInEnglish}};
}

}  // namespace ta::tour
