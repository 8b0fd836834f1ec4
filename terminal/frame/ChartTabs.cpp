#include "terminal/frame/ChartTabs.h"

#include "platform/ui/LangText.h"
#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "terminal/chart/ChartView.h"
#include "terminal/chart/PaneHeights.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/ChartGrid.h"
#include "terminal/frame/ChartStates.h"
#include "terminal/frame/TypingBox.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/quotes/MarketData.h"

#include <QCoreApplication>
#include <QTabBar>

namespace ta::terminal {

ChartTabs::ChartTabs(MarketData& markets, QWidget* parent)
    : QTabWidget(parent), m_markets(markets), m_heights(new PaneHeights(this)) {
    setDocumentMode(true);
    setMovable(true);
    setTabsClosable(true);
    setElideMode(Qt::ElideRight);
    connect(this, &QTabWidget::tabCloseRequested, this, &ChartTabs::Close);
    // What was told of another tab goes.
    connect(this, &QTabWidget::currentChanged, this,
            [this](int tab) { emit notice(tab < 0 ? QString() : m_told.value(&At(tab))); });
    connect(this, &QTabWidget::currentChanged, this, &ChartTabs::changed);
}

ChartTabs::~ChartTabs() {
    disconnect();  // the tabs go one by one
}

ChartGrid& ChartTabs::GridAt(int tab) const {
    return *static_cast<ChartGrid*>(widget(tab));
}

ChartPage& ChartTabs::At(int tab) const {
    return GridAt(tab).Active();
}

ChartView* ChartTabs::ChartAt(int tab) const {
    return qobject_cast<ChartView*>(&At(tab));
}

ComparisonView* ChartTabs::ComparisonAt(int tab) const {
    return qobject_cast<ComparisonView*>(&At(tab));
}

ChartGrid& ChartTabs::GridOf(const ChartPage& page) const {
    return *static_cast<ChartGrid*>(page.parentWidget());
}

ChartView* ChartTabs::ChartOf(const BarsKey& history) const {
    if (ChartView* current = CurrentChart(); current && current->Shown() == history) {
        return current;
    }
    ChartView* parked = nullptr;
    for (int i = 0; i < count(); ++i) {
        const ChartGrid& grid = GridAt((currentIndex() + i) % count());
        for (ChartPage* page : grid.Charts()) {
            auto* chart = qobject_cast<ChartView*>(page);
            if (chart == nullptr || chart->Shown() != history) {
                continue;
            }
            if (grid.IsInView(*chart)) {
                return chart;
            }
            parked = chart;
        }
    }
    return parked;
}

bool ChartTabs::BringToFront(const ChartView& chart) {
    ChartGrid& grid = GridOf(chart);
    if (!grid.IsInView(chart)) {
        return false;
    }
    grid.Activate(chart);
    setCurrentWidget(&grid);
    Current().setFocus();
    return true;
}

bool ChartTabs::IsCurrent(const ChartPage& page) const {
    return currentWidget() == page.parentWidget() && &Current() == &page;
}

// ---- Tabs ----

ChartGrid& ChartTabs::Add(const TabState& state) {
    auto* grid = new ChartGrid(m_markets);
    QList<ChartState> charts = state.charts;
    if (charts.empty()) {
        charts.append(ChartState());
    }
    for (const ChartState& chart : charts) {
        AddChart(*grid, chart);
    }
    const auto active = std::clamp<qsizetype>(state.grid.active, 0, charts.size() - 1);
    FillWindows(*grid, state.grid.format, charts[active]);
    grid->SetState(state.grid);
    ConnectGrid(*grid);
    addTab(grid, QString());
    ShowTitle(*grid);
    return *grid;
}

void ChartTabs::FillWindows(ChartGrid& grid, int format, const ChartState& like) {
    const int windows = layout::LayoutOf(format).WindowCount();
    while (static_cast<int>(grid.Charts().size()) < windows) {
        AddChart(grid, like);
    }
}

ChartPage& ChartTabs::AddChart(ChartGrid& grid, const ChartState& state) {
    ChartPage& page = *NewChart(state, m_markets);
    grid.Add(page);
    Connect(page);
    if (auto* chart = qobject_cast<ChartView*>(&page)) {
        ConnectChart(*chart);
        chart->SetPaneHeights(*m_heights);
    }
    page.SetRisingRed(m_risingRed);
    ShowState(page, state);
    return page;
}

void ChartTabs::ConnectGrid(ChartGrid& grid) {
    connect(&grid, &ChartGrid::activeChanged, this, [this, &grid] {
        ShowTitle(grid);
        if (currentWidget() == &grid) {
            emit notice(m_told.value(&grid.Active()));
            emit changed();
        }
    });
    connect(&grid, &ChartGrid::notice, this, &ChartTabs::notice);
}

void ChartTabs::Connect(ChartPage& page) {
    const auto forward = [this, &page](auto signal) {
        return [this, &page, signal](const auto&... values) {
            if (IsCurrent(page)) {
                emit(this->*signal)(values...);
            }
        };
    };
    connect(&page, &ChartPage::symbolChanged, this, [this, &page] { ShowTitle(GridOf(page)); });
    connect(&page, &ChartPage::symbolChanged, this, forward(&ChartTabs::changed));
    connect(&page, &ChartPage::cursorMoved, this, forward(&ChartTabs::cursorMoved));
    connect(&page, &ChartPage::legendDoubleClicked, this, forward(&ChartTabs::legendDoubleClicked));
    connect(&page, &ChartPage::axisMenuRequested, this, forward(&ChartTabs::axisMenuRequested));
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
    if (IsCurrent(page)) {
        emit notice(text);
    }
}

void ChartTabs::ConnectChart(ChartView& chart) {
    connect(&chart, &ChartView::groupChanged, this, [this, &chart] {
        if (IsCurrent(chart)) {
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
    setCurrentWidget(&Add({{StateOf(Current())}}));
    Current().setFocus();
}

void ChartTabs::Compare(const ComparisonSet& set) {
    if (ComparisonView* comparison = CurrentComparison()) {
        comparison->Compare(set);
    } else {
        ChartState state;
        state.comparison = {set};
        setCurrentWidget(&Add({{state}}));
    }
}

void ChartTabs::Close(int tab) {
    if (count() > 1 && tab >= 0 && tab < count() && MayClose(GridAt(tab))) {
        ChartGrid* grid = &GridAt(tab);
        removeTab(tab);
        for (const ChartPage* chart : grid->Charts()) {
            m_told.remove(chart);
        }
        delete grid;
    }
}

/// Parked charts cannot be seen, and so are named.
bool ChartTabs::MayClose(const ChartGrid& grid) {
    if (grid.Charts().size() < 2) {
        return true;
    }
    QStringList charts;
    for (const ChartPage* chart : grid.Charts()) {
        const QString title = TitleOf(*chart);
        charts.append(grid.IsInView(*chart)
                          ? title
                          : Tr("IDS_TERMINAL-FRAME_ASK_CLOSE_TAB_PARKED").arg(title));
    }
    const QString question =
        Tr("IDS_TERMINAL-FRAME_ASK_CLOSE_TAB").arg(charts.size()).arg(charts.join('\n'));
    return ui::CurrentPrompts().AskYesNo(this, ui::PromptIcon::Question,
                                         Tr("IDS_TERMINAL-FRAME_TITLE"), question,
                                         ui::Answer::No) == ui::Answer::Yes;
}

void ChartTabs::tabInserted(int) {
    emit changed();
}

void ChartTabs::tabRemoved(int) {
    emit changed();
}

// ---- The layout of the tab in front ----

void ChartTabs::SetFormat(int format) {
    if (CurrentComparison() != nullptr) {
        return;
    }
    ChartGrid& grid = CurrentGrid();
    FillWindows(grid, format, StateOf(grid.Active()));
    grid.SetFormat(format);
    ShowTitle(grid);
    grid.Active().setFocus();
    emit changed();
}

void ChartTabs::StepFocus(int step) {
    CurrentGrid().FocusNext(step);
}

// ---- The current chart ----

/// The current chart, or a new one in the data period of the comparison.
ChartView& ChartTabs::ChartForSymbol() {
    if (CurrentComparison() != nullptr) {
        ChartState state;
        state.period = Current().Period();
        state.count = Current().Count();
        setCurrentWidget(&Add({{state}}));
    }
    return *CurrentChart();
}

void ChartTabs::OpenSymbol(std::uint8_t market, const CString& id) {
    ChartView& chart = ChartForSymbol();
    chart.Show(NearestHistory(m_markets, {market, id, chart.Period(), chart.Count()}));
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

// ---- All charts ----

void ChartTabs::SetRisingRed(bool risingRed) {
    m_risingRed = risingRed;
    for (int tab = 0; tab < count(); ++tab) {
        for (ChartPage* chart : GridAt(tab).Charts()) {
            chart->SetRisingRed(risingRed);
        }
    }
}

QList<TabState> ChartTabs::States() const {
    QList<TabState> states;
    for (int tab = 0; tab < count(); ++tab) {
        const ChartGrid& grid = GridAt(tab);
        TabState& state = states.emplace_back();
        for (const ChartPage* chart : grid.Charts()) {
            state.charts.append(StateOf(*chart));
        }
        state.grid = grid.State();
    }
    return states;
}

std::vector<std::pair<CString, int>> ChartTabs::ViewsOfGroup(int uniNum) const {
    std::vector<std::pair<CString, int>> views;
    for (int tab = 0; tab < count(); ++tab) {
        for (const ChartPage* page : GridAt(tab).Charts()) {
            const auto* chart = qobject_cast<const ChartView*>(page);
            if (chart != nullptr && chart->GroupUniNum() == uniNum) {
                views.emplace_back(ui::FromQString(TitleOf(*chart)), tab);
            }
        }
    }
    return views;
}

// ---- Titles ----

void ChartTabs::Retranslate() {
    for (int tab = 0; tab < count(); ++tab) {
        ShowTitle(GridAt(tab));
    }
}

/// Of the active chart, with the number of windows; the tip names them all.
void ChartTabs::ShowTitle(const ChartGrid& grid) {
    const int tab = indexOf(&grid);
    if (tab < 0) {
        return;  // it is being made
    }
    QStringList titles;
    for (const ChartPage* chart : grid.InView()) {
        titles.append(TitleOf(*chart));
    }
    const QString text = TitleOf(grid.Active());
    const QString count = titles.size() > 1 ? QString(" (%1)").arg(titles.size()) : QString();
    setTabText(tab, ui::WithBareAmpersands(text) + count);
    setTabToolTip(tab, titles.join('\n'));
    for (const auto side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget* close = tabBar()->tabButton(tab, side)) {
            // The toolkit's own text, which it sets in the language of the beginning.
            close->setToolTip(QCoreApplication::translate("CloseButton", "Close Tab"));
        }
    }
}

}  // namespace ta::terminal
