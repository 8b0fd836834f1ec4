#pragma once

#include "platform/Clock.h"
#include "platform/SyncInfo.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/lang/Language.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/quotes/MarketData.h"
#include "terminal/quotes/TerminalQuotes.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/support/MemoryConfigStore.h"
#include "tests/support/MemoryServices.h"
#include "tests/support/ScriptedPrompts.h"

#include <gtest/gtest.h>

#include <qcustomplot.h>
#include <QApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

namespace ta::terminal {

inline constexpr std::uint8_t kUser = kUserMarket;
inline constexpr double kFirstDay = 16000;  // the time of a test's first bar: 2013-10-22

// Services that live as long as the process, as the settings repository does.
inline test::MemoryConfigStore g_store;
inline test::MemoryEntitlement g_entitlement;
inline test::FixedClock g_clock{1'699'945'200};  // 2023-11-14 07:00 UTC

/// Daily bars from the first day on, each made from its open and its close.
template <class OpenAndClose>
BarSeries MakeBars(int count, OpenAndClose openAndClose) {
    BarSeries bars;
    for (int i = 0; i < count; ++i) {
        const auto [open, close] = openAndClose(i);
        bars.push_back({kFirstDay + i, open, std::max(open, close) + 0.5,
                        std::min(open, close) - 0.25, close, 1000.0 + i});
    }
    return bars;
}

/// A chart view on the terminal's own studies, in a market of the test's own, and the user's mouse
/// and keys on it. Points are given by bar and value.
class ChartFixture : public testing::Test {
protected:
    ChartFixture() : data(DefaultDataFolder(), folder.path()), quotes(data) {
        static TerminalChartModule chartModule;
        Services services;
        services.configStore = &g_store;
        services.entitlement = &g_entitlement;
        services.chartModule = &chartModule;
        CSyncInfo::GetSettingCFG().SetServices(services);
        BKQuoteInterface::SetBKInterface(&quotes);
        SetClock(&g_clock);
        g_store = {};
        g_entitlement = {};
        g_store.names.emplace();
        Repository().ReleaseTrendLine("-");  // of every class; a reload drops the charts' alone
    }
    ~ChartFixture() override {
        if (view) {
            Release({});  // the next test's mouse begins with no button down
        }
        view.reset();
        SetClock(nullptr);
        BKQuoteInterface::SetBKInterface(nullptr);
    }

    static void StoreGroup(const CString& name, int uniNum,
                           const std::vector<std::vector<std::int32_t>>& panes, int shown) {
        const auto group = static_cast<unsigned>(g_store.names->size());
        g_store.names->push_back(name);
        g_store.uniNums[group] = uniNum;
        g_store.showCounts[group] = shown;
        for (std::size_t i = 0; i < panes.size(); ++i) {
            g_store.studyLists[{group, "StudyTypeLogKey0" + std::to_string(i + 1)}] = panes[i];
        }
    }
    /// What another terminal's save does to this process.
    static void Reload() {
        g_store.reloadFlag = true;
        Repository().ReloadTASetting();
    }
    BarsKey Add(const BarSeries& series) {
        QString error;
        const Symbol* symbol = data.User().Add("bars.csv", series, 0.01, &error);
        EXPECT_NE(symbol, nullptr) << error.toStdString();
        return symbol ? BarsKey{kUser, symbol->id, 0, 0} : BarsKey();
    }
    std::unique_ptr<ChartView> MakeView(const BarsKey& history) {
        auto made = std::make_unique<ChartView>(data);
        made->resize(900, 640);
        made->show();
        made->Show(history);
        return made;
    }

    QWidget* Plot() { return view->findChild<QCustomPlot*>(); }
    QPoint Point(double bar, double value, std::size_t pane = 0) {
        const PlotMapping mapping = view->Mapping();
        return QPointF(mapping.XOf(bar), mapping.panes[pane].YOf(value)).toPoint();
    }
    void Click(const QPoint& point) { QTest::mouseClick(Plot(), Qt::LeftButton, {}, point); }
    void Press(const QPoint& point) { QTest::mousePress(Plot(), Qt::LeftButton, {}, point); }
    void Move(const QPoint& point) { QTest::mouseMove(Plot(), point); }
    void Release(const QPoint& point) { QTest::mouseRelease(Plot(), Qt::LeftButton, {}, point); }
    void Drag(const QPoint& from, const QPoint& to) {
        Press(from);
        Move((from + to) / 2);
        Move(to);
        Release(to);
    }
    void Leave() {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(Plot(), &leave);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(view.get(), key, modifiers);
    }

    QTemporaryDir folder;
    Language language;
    test::ScriptedPrompts prompts;
    MarketData data;
    TerminalQuotes quotes;
    std::unique_ptr<ChartView> view;
};

}  // namespace ta::terminal
