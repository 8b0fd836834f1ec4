#include "dialogs/MXChangeSymbols.h"
#include "dialogs/MXTechDataDlg.h"
#include "terminal/chart/ChartView.h"
#include "terminal/compare/ComparisonModel.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/DataViewer.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace ta::tour {
namespace {

const char* const kOthers[] = {"9901", "9902",     "9903",     "9904",    "9905",
                               "SXF1", "GLD-SPOT", "OIL-SPOT", "CRN-SPOT"};

void Search(QWidget& dialog, const QString& text) {
    auto& edit = Find<QLineEdit>(dialog, "searchEdit");
    edit.clear();
    Type(edit, text);
}

/// One more than the list takes.
void AddTooMany(Guide& guide, QWidget& dialog, const QString& language) {
    for (const char* symbol : kOthers) {
        Search(dialog, symbol);
        Push(dialog, "addButton");
    }
    Search(dialog, "GLD-1KG");
    guide.Picture("compare-chosen-" + language);
    auto& tree = Find<QTreeView>(dialog, "symbolTree");
    const QPoint leaf = tree.visualRect(tree.currentIndex()).center();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, leaf);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, leaf);
}

void ShowDialog(Guide& guide, const QString& language) {
    guide.Choose(Command::Compare, {[&](QWidget& dialog) {
                                        Find<QTreeView>(dialog, "symbolTree").expandAll();
                                        guide.Picture("compare-markets-" + language);
                                        Search(dialog, "99");
                                        guide.Picture("compare-search-" + language);
                                        AddTooMany(guide, dialog, language);
                                        Push(dialog, "okButton");
                                    },
                                    [&](QWidget& message) {
                                        guide.Picture("compare-limit-" + language);
                                        Confirm(message);
                                    }});
}

/// The base date in each of its modes: none, with a time, and a day.
void ShowBaseDateModes(Guide& guide, const QString& language) {
    for (const unsigned mode : {0U, 1U, 2U}) {
        MXChangeSymbols dialog({{2, "SPX"}, {16, "9901"}}, terminal::kMostCompared, {}, mode,
                               18000.5, &guide.Window());
        const auto name = QString("compare-base-mode%1-%2").arg(mode).arg(language);
        guide.WithDialogs([&] { dialog.DoModal(); }, {[&](QWidget& shown) {
                              guide.Picture(name);
                              Dismiss(shown);
                          }});
    }
}

void ShowChart(Guide& guide, const QString& language) {
    const terminal::ComparisonView* chart = guide.Tabs().CurrentComparison();
    Expect(chart != nullptr && chart->Model().Sources().size() == 10, "ten are not compared");
    Expect(chart->BarCount() > 1000, "the comparison lacks bars");
    guide.Picture("comparison-percent-" + language);
    guide.DarkPicture("comparison-percent-dark-" + language);
    guide.Choose(Command::CompareIndexed);
    guide.Tabs().Current().SetCursorBar(chart->BarCount() - 40);
    guide.Choose(Command::CompareBaseCursor);
    guide.Tabs().Current().ShowLatest();
    guide.Picture("comparison-indexed-" + language);
    guide.DarkPicture("comparison-indexed-dark-" + language);
    guide.Choose(Command::ComparePrices);
    guide.Picture("comparison-prices-" + language);
    guide.MenuPicture(MenuId::Chart, "comparison-chart-menu-" + language);
}

/// A column a symbol.
void ShowNumbers(Guide& guide, const QString& language) {
    guide.Choose(Command::ViewData);
    MXTechDataDlg* const viewer = terminal::DataViewer::Of(guide.Tabs().Current()).Window();
    Expect(viewer != nullptr, "the data viewer does not open");
    viewer->ShowData();
    guide.Picture("comparison-data-" + language);
    Push(*viewer, "closeButton");
}

void Show(Guide& guide, const QString& language) {
    guide.Choose(Command::NewTab);
    guide.Open("SPX");
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    ShowBaseDateModes(guide, language);
    ShowDialog(guide, language);
    ShowChart(guide, language);
    ShowNumbers(guide, language);
    guide.Choose(Command::CloseTab);
    guide.Choose(Command::CloseTab);
}

void ShowInChinese(Guide& guide) {
    Show(guide, "zh");
}

void ShowInEnglish(Guide& guide) {
    guide.Choose(Command::English);
    Show(guide, "en");
    guide.Choose(Command::Chinese);
}

}  // namespace

std::vector<Step> CompareSteps() {
    return {{"comparison in Chinese", ShowInChinese}, {"comparison in English", ShowInEnglish}};
}

}  // namespace ta::tour
