#include "terminal/frame/ChartTabs.h"

#include "platform/ui/LangText.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/chart/PaneHeights.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/SymbolTexts.h"
#include "terminal/frame/TypingBox.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/quotes/MarketData.h"

#include <QCoreApplication>
#include <QTabBar>

namespace ta::terminal {
namespace {}  // namespace

ChartTabs::ChartTabs(MarketData& markets, QWidget* parent)
    : QTabWidget(parent), m_markets(markets), m_heights(new PaneHeights(this)) {
    setDocumentMode(true);
    setMovable(true);
    setTabsClosable(true);
    setElideMode(Qt::ElideRight);
    connect(this, &QTabWidget::tabCloseRequested, this, &ChartTabs::Close);
    // What was told of another tab goes.
    connect(this, &QTabWidget::currentChanged, this,
            [this](int tab) { emit notice(m_told.value(widget(tab))); });
    connect(this, &QTabWidget::currentChanged, this, &ChartTabs::changed);
}

ChartTabs::~ChartTabs() {
    disconnect();  // the tabs go one by one
}

ChartPage& ChartTabs::At(int tab) const {
    return *static_cast<ChartPage*>(widget(tab));
}

ChartView* ChartTabs::ChartAt(int tab) const {
    return qobject_cast<ChartView*>(widget(tab));
}

ComparisonView* ChartTabs::ComparisonAt(int tab) const {
    return qobject_cast<ComparisonView*>(widget(tab));
}

// ---- Tabs ----

ChartPage& ChartTabs::Add(const TabState& state) {
    ChartPage& page = MakePage(state);
    addTab(&page, QString());
    ShowTitle(page);
    return page;
}

ChartPage& ChartTabs::MakePage(const TabState& state) {
    return state.comparison ? MakeComparison(state) : MakeChart(state);
}

ChartPage& ChartTabs::MakeChart(const TabState& state) {
    auto* chart = new ChartView(m_markets);
    Connect(*chart);
    ConnectChart(*chart);
    chart->SetPaneHeights(*m_heights);
    chart->SetRisingRed(m_risingRed);
    chart->SetGroup(Repository().GetGroupNameByUniNum(state.group));
    chart->SetDepths(state.depths);
    chart->Show({state.market, ui::FromQString(state.symbol), state.period, state.count});
    return *chart;
}

ChartPage& ChartTabs::MakeComparison(const TabState& state) {
    auto* comparison = new ComparisonView(m_markets);
    Connect(*comparison);
    comparison->SetRisingRed(m_risingRed);
    comparison->SetMode(state.comparison->mode);
    comparison->SetDepths(state.depths);
    comparison->Compare(state.comparison->set);
    return *comparison;
}

TabState ChartTabs::StateOf(int tab) const {
    if (const ComparisonView* comparison = ComparisonAt(tab)) {
        TabState state;
        state.comparison = {comparison->Set(), comparison->Mode()};
        state.depths = comparison->Depths();
        return state;
    }
    const ChartView& chart = *ChartAt(tab);
    return {chart.Market(),      ui::ToQString(chart.SymbolId()),
            chart.Period(),      chart.Count(),
            chart.GroupUniNum(), chart.Depths()};
}

void ChartTabs::Connect(ChartPage& page) {
    const auto forward = [this, &page](auto signal) {
        return [this, &page, signal](const auto&... values) {
            if (currentWidget() == &page) {
                emit(this->*signal)(values...);
            }
        };
    };
    connect(&page, &ChartPage::symbolChanged, this, [this, &page] { ShowTitle(page); });
    connect(&page, &ChartPage::symbolChanged, this, forward(&ChartTabs::changed));
    connect(&page, &ChartPage::cursorMoved, this, forward(&ChartTabs::cursorMoved));
    connect(&page, &ChartPage::legendDoubleClicked, this, forward(&ChartTabs::legendDoubleClicked));
    connect(&page, &ChartPage::menuRequested, this, forward(&ChartTabs::menuRequested));
    const auto keepTold = [this, &page](const QString& text) { KeepTold(page, text); };
    connect(&page, &ChartPage::loadFailed, this, keepTold);
    connect(&page, &ChartPage::historyShort, this, keepTold);
    const auto* typing =
        new TypingBox(page, m_markets, [this] { return HasPeriod(AvailablePeriods(), kMinutes); });
    connect(typing, &TypingBox::minutesChosen, this,
            [this](int minutes) { ShowPeriod(kMinutes, minutes); });
    connect(typing, &TypingBox::symbolChosen, this, &ChartTabs::OpenSymbol);
    connect(typing, &TypingBox::refused, this, &ChartTabs::notice);
}

void ChartTabs::KeepTold(const ChartPage& page, const QString& text) {
    m_told[&page] = text;
    if (currentWidget() == &page) {
        emit notice(text);
    }
}

void ChartTabs::ConnectChart(ChartView& chart) {
    connect(&chart, &ChartView::groupChanged, this, [this, &chart] {
        if (currentWidget() == &chart) {
            emit changed();
        }
    });
    connect(&chart, &ChartView::groupVanished, this, [this](const QString& newGroup) {
        emit notice(Tr("IDS_TERMINAL-FRAME_GROUP_VANISHED").arg(newGroup));
    });
    connect(&chart.Drawings(), &DrawingBoard::notice, this, &ChartTabs::notice);
    connect(&chart.Drawings(), &DrawingBoard::hint, this, &ChartTabs::hint);
}

void ChartTabs::AddCopy() {
    setCurrentWidget(&Add(StateOf(currentIndex())));
    Current().setFocus();
}

void ChartTabs::Compare(const ComparisonSet& set) {
    if (ComparisonView* comparison = CurrentComparison()) {
        comparison->Compare(set);
    } else {
        TabState state;
        state.comparison = {set};
        setCurrentWidget(&Add(state));
    }
}

void ChartTabs::Close(int tab) {
    if (count() > 1 && tab >= 0 && tab < count()) {
        QWidget* page = widget(tab);
        removeTab(tab);
        m_told.remove(page);
        delete page;
    }
}

void ChartTabs::tabInserted(int) {
    emit changed();
}

void ChartTabs::tabRemoved(int) {
    emit changed();
}

// ---- The tab in front ----

/// The current chart, or a new one in the data period of the comparison.
ChartView& ChartTabs::ChartForSymbol() {
    if (CurrentComparison() != nullptr) {
        TabState state;
        state.period = Current().Period();
        state.count = Current().Count();
        setCurrentWidget(&Add(state));
    }
    return *CurrentChart();
}

void ChartTabs::OpenSymbol(std::uint8_t market, const CString& id) {
    ChartView& chart = ChartForSymbol();
    const PeriodSet available = terminal::AvailablePeriods(m_markets, market, id);
    BarsKey wanted{market, id, chart.Period(), chart.Count()};
    const bool isThere = m_markets.HasPeriod(market, id, wanted.period) && MayShow(wanted);
    if (available.any() && !isThere) {
        std::size_t first = 0;
        while (!available[first]) {
            ++first;
        }
        wanted.period = kPeriods[first].code;
        wanted.count = kPeriods[first].count;
    }
    chart.Show(wanted);
    chart.setFocus();
}

void ChartTabs::SelectPeriod(int index) {
    const FramePeriod& period = kPeriods[static_cast<std::size_t>(index)];
    ShowPeriod(period.code, period.count);
}

void ChartTabs::ShowPeriod(int period, int count) {
    Current().ShowPeriod(period, count);
    Current().setFocus();
}

void ChartTabs::SelectGroup(const CString& name) {
    if (ChartView* chart = CurrentChart()) {
        chart->SetGroup(name);
        chart->setFocus();
    }
}

void ChartTabs::SetRisingRed(bool risingRed) {
    m_risingRed = risingRed;
    for (int i = 0; i < count(); ++i) {
        At(i).SetRisingRed(risingRed);
    }
}

QList<TabState> ChartTabs::States() const {
    QList<TabState> states;
    for (int i = 0; i < count(); ++i) {
        states.append(StateOf(i));
    }
    return states;
}

std::vector<std::pair<CString, int>> ChartTabs::ViewsOfGroup(int uniNum) const {
    std::vector<std::pair<CString, int>> views;
    for (int i = 0; i < count(); ++i) {
        if (const ChartView* chart = ChartAt(i); chart && chart->GroupUniNum() == uniNum) {
            views.emplace_back(ui::FromQString(tabToolTip(i)), i);
        }
    }
    return views;
}

PeriodSet ChartTabs::AvailablePeriods() const {
    if (const ComparisonView* comparison = CurrentComparison()) {
        PeriodSet available;
        for (const ComparedSymbol& symbol : comparison->Set().symbols) {
            available |= terminal::AvailablePeriods(m_markets, symbol.market, symbol.code);
        }
        return available;
    }
    const BarsKey& shown = Current().Shown();
    return terminal::AvailablePeriods(m_markets, shown.market, shown.symbol);
}

// ---- Titles ----

void ChartTabs::Retranslate() {
    for (int i = 0; i < count(); ++i) {
        ShowTitle(At(i));
    }
}

void ChartTabs::ShowTitle(const ChartPage& page) {
    const QString text = page.Name() + ' ' + PeriodText(page.Period(), page.Count());
    const int tab = indexOf(&page);
    setTabText(tab, ui::WithBareAmpersands(text));
    setTabToolTip(tab, text);
    for (const auto side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget* close = tabBar()->tabButton(tab, side)) {
            // The toolkit's own text, which it sets in the language of the beginning.
            close->setToolTip(QCoreApplication::translate("CloseButton", "Close Tab"));
        }
    }
}

}  // namespace ta::terminal
