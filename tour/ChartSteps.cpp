#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/TaSettingHandle.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/openers/Openers.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

namespace ta::tour {
namespace {

using terminal::Market;
using terminal::Symbol;

constexpr int kDefaultPanes = 4;

const char* const kTrendGroup = "趨勢";
const char* const kOscillatorGroup = "擺盪指標";

/// Studies of the sample groups, a list for each pane; see the chart module's table for the
/// numbers.
const StudyLists kTrendStudies{{0, 7, 8}, {16}, {40}, {41}};
const StudyLists kOscillatorStudies{{0, 5}, {24}, {26}, {28}, {31}};

const Symbol& FirstSymbol(const std::vector<const Symbol*>& symbols,
                          const std::function<bool(const Symbol&)>& wanted) {
    const auto found =
        std::ranges::find_if(symbols, [&wanted](const Symbol* symbol) { return wanted(*symbol); });
    Expect(found != symbols.end(), "the catalogue lacks a kind of symbol");
    return **found;
}

std::vector<const Symbol*> Symbols(Guide& guide, std::uint8_t market) {
    return guide.Parts().session.Markets().SymbolsOf(market);
}

void ShowMainWindow(Guide& guide) {
    Settle();
    Expect(QFontMetrics(QApplication::font()).inFont(QChar(u'線')),
           "the font has no Chinese characters (package fonts-noto-cjk)");
    guide.ExpectChart(kDefaultPanes);
    Expect(guide.Chart().BarCount() > 5000, "the index lacks bars");
    guide.Picture("main-window");
}

void ShowCursor(Guide& guide) {
    for (int i = 0; i < 20; ++i) {
        QTest::keyClick(&guide.Chart(), Qt::Key_Left);
    }
    Expect(guide.Chart().CursorBar() >= 0, "there is no cursor line");
    guide.Picture("cursor-line");
    Dismiss(guide.Chart());
}

void ShowMenus(Guide& guide) {
    guide.MenuPicture(MenuId::Chart, "chart-menu");
    guide.MenuPicture(MenuId::Group, "group-menu");
}

/// Adds a group and gives it its studies.
void MakeGroup(Guide& guide, const char* name, const StudyLists& studies, const char* picture) {
    AddGroupInSheet(guide, name, picture);
    const CString group = ui::FromQString(name);
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    repository.SetStudyListByGroupName(group, studies);
    repository.SetStudyCountByGroupName(group, static_cast<int>(studies.size()));
    repository.SaveAllGroupSetting();
    repository.SendMsg2AllTechView(kGroupChangeMessage, repository.GetGroupIndexByName(group));
    guide.ExpectChart(static_cast<int>(studies.size()));
}

void ShowAddGroup(Guide& guide) {
    MakeGroup(guide, kTrendGroup, kTrendStudies, "add-group");
}

void ShowTrendGroup(Guide& guide) {
    guide.Picture("group-trend");
}

void ShowOscillatorGroup(Guide& guide) {
    MakeGroup(guide, kOscillatorGroup, kOscillatorStudies, nullptr);
    guide.Picture("group-oscillators");
}

void ShowDefaultGroup(Guide& guide) {
    guide.ChooseDefaultGroup();
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("group-default");
}

void ShowWeekly(Guide& guide) {
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_WEEK");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("weekly");
}

void ShowMonthly(Guide& guide) {
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_MONTH");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("monthly");
}

void ShowSymbolSearch(Guide& guide) {
    terminal::SymbolBox& box = guide.Parts().toolBar.Symbol();
    guide.Choose(Command::FindSymbol);
    box.selectAll();
    Type(box, "模擬");
    Expect(box.completer()->popup()->isVisible(), "the list of symbols does not open");
    guide.Picture("symbol-search");
    Dismiss(*box.completer()->popup());
    Dismiss(box);
}

void ShowFuture(Guide& guide) {
    const Symbol& future = FirstSymbol(Symbols(guide, 'm'), [](const Symbol& symbol) {
        return symbol.hasDaily && !symbol.contractMonth.empty();
    });
    guide.Open(ui::ToQString(future.id));
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("future");
}

void ShowMinutes(Guide& guide) {
    std::vector<const Symbol*> symbols;
    for (const Market& market : guide.Parts().session.Markets().Markets()) {
        std::ranges::copy(Symbols(guide, market.id), std::back_inserter(symbols));
    }
    guide.Choose(Command::NewTab);
    const Symbol& symbol =
        FirstSymbol(symbols, [](const Symbol& candidate) { return candidate.hasMinutes; });
    guide.Open(ui::ToQString(symbol.id));
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_MINUTE5");
    guide.ExpectChart(kDefaultPanes);
    guide.Picture("minutes");
}

void ShowTabs(Guide& guide) {
    guide.Choose(Command::NewTab);
    guide.ChooseGroup(kTrendGroup);
    guide.Choose(Command::ZoomOut);
    Expect(guide.Tabs().count() == 3, "there are not three tabs");
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
    Expect(file.open(QIODevice::WriteOnly), "the sample file cannot be written");
    file.write(text.toUtf8());
    return file.fileName();
}

void ShowCsv(Guide& guide) {
    const QTemporaryDir folder;
    const QString path = WriteSampleCsv(folder);
    guide.WithDialogs([&] { OpenPriceFile(guide.Parts(), path); }, {[&guide](QWidget& message) {
                          guide.Picture("csv-bad-rows");
                          Confirm(message);
                      }});
    Expect(guide.Chart().Market() == terminal::kUserMarket, "the file is not shown");
    guide.ExpectChart(static_cast<int>(kTrendStudies.size()));
    guide.Picture("csv-opened");
}

void ShowEnglish(Guide& guide) {
    guide.Open("SPX");
    guide.Choose(Command::English);
    guide.ExpectChart(static_cast<int>(kTrendStudies.size()));
    guide.Picture("english");
    guide.MenuPicture(MenuId::File, "english-menu");
    guide.Choose(Command::Chinese);
}

void ShowAbout(Guide& guide) {
    guide.Choose(Command::About, {[&guide](QWidget& message) {
                     guide.Picture("about");
                     Confirm(message);
                 }});
}

void ShowDark(Guide& guide) {
    guide.DarkPicture("dark");
}

}  // namespace

std::vector<Step> ChartSteps() {
    return {
        {"main window", ShowMainWindow},
        {"cursor line", ShowCursor},
        {"menus", ShowMenus},
        {"add group", ShowAddGroup},
        {"trend group", ShowTrendGroup},
        {"oscillator group", ShowOscillatorGroup},
        {"default group", ShowDefaultGroup},
        {"weekly", ShowWeekly},
        {"monthly", ShowMonthly},
        {"symbol search", ShowSymbolSearch},
        {"future", ShowFuture},
        {"minutes", ShowMinutes},
        {"several tabs", ShowTabs},
        {"price file", ShowCsv},
        {"english", ShowEnglish},
        {"about", ShowAbout},
        {"dark", ShowDark},
    };
}

}  // namespace ta::tour
