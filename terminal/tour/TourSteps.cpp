#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/TaSettingHandle.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/Session.h"
#include "terminal/tour/TourDrawing.h"
#include "terminal/tour/TourExchange.h"
#include "terminal/tour/TourGuide.h"
#include "terminal/tour/TourSheet.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QFile>
#include <QMenuBar>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr int kDefaultPanes = 4;

const char* const kTrendGroup = "趨勢";
const char* const kOscillatorGroup = "擺盪指標";

/// Studies of the sample groups, a list for each pane; see the chart module's table for the
/// numbers.
const StudyLists kTrendStudies{{0, 7, 8}, {16}, {40}, {41}};
const StudyLists kOscillatorStudies{{0, 5}, {24}, {26}, {28}, {31}};

void Confirm(QWidget& dialog) {
    TourGuide::Press(dialog, Qt::Key_Return);
}

const Symbol& FirstSymbol(const std::vector<const Symbol*>& symbols,
                          const std::function<bool(const Symbol&)>& wanted) {
    const auto found =
        std::ranges::find_if(symbols, [&wanted](const Symbol* symbol) { return wanted(*symbol); });
    TourGuide::Expect(found != symbols.end(), "the catalogue lacks a kind of symbol");
    return **found;
}

/// All symbols whose id or name holds a text.
std::vector<const Symbol*> Symbols(TourGuide& guide, std::uint8_t market) {
    return guide.Window().GetSession().Markets().SymbolsOf(market);
}

void ChoosePeriod(TourGuide& guide, const char* textKey) {
    TourGuide::Choose(guide.Window().ToolBar().Period(), Tr(textKey));
}

void ShowMainWindow(TourGuide& guide) {
    TourGuide::Settle();
    TourGuide::Expect(QFontMetrics(QApplication::font()).inFont(QChar(u'線')),
                      "the font has no Chinese characters (package fonts-noto-cjk)");
    guide.ExpectChart(kDefaultPanes);
    TourGuide::Expect(guide.Chart().BarCount() > 5000, "the index lacks bars");
    guide.Picture("main-window");
}

void ShowCursor(TourGuide& guide) {
    for (int i = 0; i < 20; ++i) {
        TourGuide::Press(guide.Chart(), Qt::Key_Left);
    }
    TourGuide::Expect(guide.Chart().CursorBar() >= 0, "there is no cursor line");
    guide.Picture("cursor-line");
    TourGuide::Press(guide.Chart(), Qt::Key_Escape);
}

void ShowMenu(TourGuide& guide, MenuId id, const char* picture) {
    QMenu& menu = guide.Window().GetCommands().At(id);
    guide.Window().menuBar()->setActiveAction(menu.menuAction());
    TourGuide::Settle();
    TourGuide::Expect(menu.isVisible(), "the menu does not open");
    guide.Picture(picture);
    menu.hide();
    TourGuide::Settle();
}

void ShowGroupMenu(TourGuide& guide) {
    ShowMenu(guide, MenuId::Group, "group-menu");
}

void ShowChartMenu(TourGuide& guide) {
    ShowMenu(guide, MenuId::Chart, "chart-menu");
}

/// Adds a group and gives it its studies.
void MakeGroup(TourGuide& guide, const char* name, const StudyLists& studies, const char* picture) {
    AddGroupInSheet(guide, name, picture);
    const CString group = ui::FromQString(name);
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    repository.SetStudyListByGroupName(group, studies);
    repository.SetStudyCountByGroupName(group, static_cast<int>(studies.size()));
    repository.SaveAllGroupSetting();
    repository.SendMsg2AllTechView(kGroupChangeMessage, repository.GetGroupIndexByName(group));
    guide.ExpectChart(static_cast<int>(studies.size()));
}

void ShowAddGroup(TourGuide& guide) {
    MakeGroup(guide, kTrendGroup, kTrendStudies, "add-group");
}

void ShowTrendGroup(TourGuide& guide) {
    guide.Picture("group-trend");
}

void ShowOscillatorGroup(TourGuide& guide) {
    MakeGroup(guide, kOscillatorGroup, kOscillatorStudies, nullptr);
    guide.Picture("group-oscillators");
}

void ShowDefaultGroup(TourGuide& guide) {
    QComboBox& box = guide.Window().ToolBar().Group();
    TourGuide::Choose(box, box.itemText(0));
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("group-default");
}

void ShowWeekly(TourGuide& guide) {
    ChoosePeriod(guide, "IDS_TERMINAL-FRAME_PERIOD_WEEK");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("weekly");
}

void ShowMonthly(TourGuide& guide) {
    ChoosePeriod(guide, "IDS_TERMINAL-FRAME_PERIOD_MONTH");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("monthly");
}

void ShowSymbolSearch(TourGuide& guide) {
    SymbolBox& box = guide.Window().ToolBar().Symbol();
    guide.Choose(Command::FindSymbol);
    box.selectAll();
    TourGuide::Type(box, "模擬");
    TourGuide::Expect(box.completer()->popup()->isVisible(), "the list of symbols does not open");
    guide.Picture("symbol-search");
    TourGuide::Press(*box.completer()->popup(), Qt::Key_Escape);
    TourGuide::Press(box, Qt::Key_Escape);
}

void ShowFuture(TourGuide& guide) {
    const Symbol& future = FirstSymbol(Symbols(guide, 'm'), [](const Symbol& symbol) {
        return symbol.hasDaily && !symbol.contractMonth.empty();
    });
    guide.Open(ui::ToQString(future.id));
    ChoosePeriod(guide, "IDS_TERMINAL-FRAME_PERIOD_DAY");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("future");
}

void ShowMinutes(TourGuide& guide) {
    std::vector<const Symbol*> symbols;
    for (const Market& market : guide.Window().GetSession().Markets().Markets()) {
        std::ranges::copy(Symbols(guide, market.id), std::back_inserter(symbols));
    }
    guide.Choose(Command::NewTab);
    const Symbol& symbol =
        FirstSymbol(symbols, [](const Symbol& candidate) { return candidate.hasMinutes; });
    guide.Open(ui::ToQString(symbol.id));
    ChoosePeriod(guide, "IDS_TERMINAL-FRAME_PERIOD_MINUTE5");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("minutes");
}

void ShowTabs(TourGuide& guide) {
    guide.Choose(Command::NewTab);
    TourGuide::Choose(guide.Window().ToolBar().Group(), kTrendGroup);
    guide.Choose(Command::ZoomOut);
    TourGuide::Expect(guide.Window().TabCount() == 3, "there are not three tabs");
    guide.ExpectChart(static_cast<int>(kTrendStudies.size()));
    guide.Picture("several-tabs");
}

/// A price file of the user's with two rows that cannot be used.
QString WriteSampleCsv(const QTemporaryDir& folder) {
    QString text = "Date,Open,High,Low,Close,Volume\n";
    const QDate date(2020, 1, 1);
    const auto price = [](int i) {
        return 100 + 0.15 * i + 9 * std::sin(i / 17.0) + 2.5 * std::sin(i / 2.7);
    };
    for (int i = 0; i < 120; ++i) {
        const double open = price(i);
        const double close = price(i + 1);
        text += QString("%1,%2,%3,%4,%5,%6\n")
                    .arg(date.addDays(i).toString(Qt::ISODate))
                    .arg(open, 0, 'f', 2)
                    .arg(std::max(open, close) + 0.4 + 0.1 * (i % 5), 0, 'f', 2)
                    .arg(std::min(open, close) - 0.3 - 0.1 * (i % 7), 0, 'f', 2)
                    .arg(close, 0, 'f', 2)
                    .arg(1000 + 300 * (i % 4) + i * 37 % 500);
    }
    text += "2020-05-01,110,bad,108,109,1200\n2020-13-40,110,111,108,109,1200\n";
    QFile file(folder.filePath("my-prices.csv"));
    TourGuide::Expect(file.open(QIODevice::WriteOnly), "the sample file cannot be written");
    file.write(text.toUtf8());
    return file.fileName();
}

void ShowCsv(TourGuide& guide) {
    const QTemporaryDir folder;
    const QString path = WriteSampleCsv(folder);
    guide.WithDialogs([&] { guide.Window().OpenCsv(path); }, {[&guide](QWidget& message) {
                          guide.Picture("csv-bad-rows");
                          Confirm(message);
                      }});
    TourGuide::Expect(guide.Chart().Market() == UserMarket::kId, "the file is not shown");
    guide.ExpectChart(static_cast<int>(kTrendStudies.size()));
    guide.Picture("csv-opened");
}

void ShowEnglish(TourGuide& guide) {
    guide.Open("SPX");
    guide.Choose(Command::English);
    guide.ExpectChart(static_cast<int>(kTrendStudies.size()));
    guide.Picture("english");
    ShowMenu(guide, MenuId::File, "english-menu");
    guide.Choose(Command::Chinese);
}

void ShowAbout(TourGuide& guide) {
    guide.Choose(Command::About, {[&guide](QWidget& message) {
                     guide.Picture("about");
                     Confirm(message);
                 }});
}

void ShowDark(TourGuide& guide) {
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    const QPalette light = QApplication::palette();
    QApplication::setPalette(dark);
    guide.ExpectChart(static_cast<int>(kTrendStudies.size()));
    guide.Picture("dark");
    QApplication::setPalette(light);
}

}  // namespace

const std::vector<TourStep>& TourSteps() {
    static const std::vector<TourStep> steps{
        {"main-window", ShowMainWindow},
        {"cursor-line", ShowCursor},
        {"chart-menu", ShowChartMenu},
        {"group-menu", ShowGroupMenu},
        {"add-group", ShowAddGroup},
        {"group-name-in-use", ShowNameInUse},
        {"group-trend", ShowTrendGroup},
        {"group-oscillators", ShowOscillatorGroup},
        {"group-default", ShowDefaultGroup},
        {"weekly", ShowWeekly},
        {"monthly", ShowMonthly},
        {"symbol-search", ShowSymbolSearch},
        {"future", ShowFuture},
        {"minutes", ShowMinutes},
        {"several-tabs", ShowTabs},
        {"csv", ShowCsv},
        {"group-export", ShowExport},
        {"group-import", ShowImport},
        {"sheet", ShowSheet},
        {"english", ShowEnglish},
        {"about", ShowAbout},
        {"dark", ShowDark},
        {"drawing", ShowDrawing},
        {"trend-lines", ShowTrendLines},
        {"drawing-menu", ShowDrawingMenu},
        {"trend-lines-second-window", ShowTrendLinesTwice},
        {"trend-line-list", ShowTrendLineList},
        {"trend-lines-dark", ShowTrendLinesInTheDark},
    };
    return steps;
}

}  // namespace ta::terminal
