#include "terminal/frame/ChartTabs.h"

#include "platform/ui/LangText.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/Periods.h"
#include "terminal/frame/SymbolTexts.h"
#include "terminal/frame/TypingBox.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/quotes/MarketData.h"

#include <QCoreApplication>
#include <QTabBar>

namespace ta::terminal {
namespace {

TabState StateOf(const ChartView& chart) {
    return {chart.Market(),      ui::ToQString(chart.SymbolId()),
            chart.Period(),      chart.Count(),
            chart.GroupUniNum(), chart.Depths()};
}

}  // namespace

ChartTabs::ChartTabs(MarketData& markets, QWidget* parent)
    : QTabWidget(parent), m_markets(markets) {
    setDocumentMode(true);
    setMovable(true);
    setTabsClosable(true);
    setElideMode(Qt::ElideRight);
    connect(this, &QTabWidget::tabCloseRequested, this, &ChartTabs::Close);
    connect(this, &QTabWidget::currentChanged, this, &ChartTabs::changed);
}

ChartTabs::~ChartTabs() {
    disconnect();  // the tabs go one by one
}

ChartView& ChartTabs::At(int tab) const {
    return *static_cast<ChartView*>(widget(tab));
}

ChartView& ChartTabs::Add(const TabState& state) {
    auto* chart = new ChartView(m_markets);
    Connect(*chart);
    chart->SetRisingRed(m_risingRed);
    chart->SetGroup(Repository().GetGroupNameByUniNum(state.group));
    chart->SetDepths(state.depths);
    chart->Show({state.market, ui::FromQString(state.symbol), state.period, state.count});
    addTab(chart, QString());
    ShowTitle(*chart);
    return *chart;
}

void ChartTabs::Connect(ChartView& chart) {
    const auto forward = [this, &chart](auto signal) {
        return [this, &chart, signal](const auto&... values) {
            if (currentWidget() == &chart) {
                emit(this->*signal)(values...);
            }
        };
    };
    connect(&chart, &ChartView::symbolChanged, this, [this, &chart] { ShowTitle(chart); });
    connect(&chart, &ChartView::symbolChanged, this, forward(&ChartTabs::changed));
    connect(&chart, &ChartView::groupChanged, this, forward(&ChartTabs::changed));
    connect(&chart, &ChartView::cursorMoved, this, forward(&ChartTabs::cursorMoved));
    connect(&chart, &ChartView::legendDoubleClicked, this,
            forward(&ChartTabs::legendDoubleClicked));
    connect(&chart, &ChartView::loadFailed, this, &ChartTabs::notice);
    connect(&chart, &ChartView::historyShort, this, &ChartTabs::notice);
    connect(&chart, &ChartView::groupVanished, this, [this](const QString& newGroup) {
        emit notice(Tr("IDS_TERMINAL-FRAME_GROUP_VANISHED").arg(newGroup));
    });
    const auto* typing = new TypingBox(chart, m_markets);
    connect(typing, &TypingBox::minutesChosen, this,
            [this](int minutes) { ShowPeriod(kMinutes, minutes); });
    connect(typing, &TypingBox::symbolChosen, this, &ChartTabs::OpenSymbol);
    connect(typing, &TypingBox::refused, this, &ChartTabs::notice);
    connect(&chart.Drawings(), &DrawingBoard::notice, this, &ChartTabs::notice);
    connect(&chart.Drawings(), &DrawingBoard::hint, this, &ChartTabs::hint);
}

void ChartTabs::AddCopy() {
    setCurrentWidget(&Add(StateOf(Current())));
    Current().setFocus();
}

void ChartTabs::Close(int tab) {
    if (count() > 1 && tab >= 0 && tab < count()) {
        QWidget* chart = widget(tab);
        removeTab(tab);
        delete chart;
    }
}

void ChartTabs::tabInserted(int) {
    emit changed();
}

void ChartTabs::tabRemoved(int) {
    emit changed();
}

void ChartTabs::OpenSymbol(std::uint8_t market, const CString& id) {
    ChartView& chart = Current();
    const PeriodSet available = AvailablePeriods(m_markets, market, id);
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
    ChartView& chart = Current();
    chart.Show({chart.Market(), chart.SymbolId(), period.code, period.count});
    chart.setFocus();
}

void ChartTabs::ShowPeriod(int period, int count) {
    Current().ShowPeriod(period, count);
    Current().setFocus();
}

void ChartTabs::SelectGroup(const CString& name) {
    Current().SetGroup(name);
    Current().setFocus();
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
        states.append(StateOf(At(i)));
    }
    return states;
}

std::vector<std::pair<CString, int>> ChartTabs::ViewsOfGroup(int uniNum) const {
    std::vector<std::pair<CString, int>> views;
    for (int i = 0; i < count(); ++i) {
        if (At(i).GroupUniNum() == uniNum) {
            views.emplace_back(ui::FromQString(tabToolTip(i)), i);
        }
    }
    return views;
}

void ChartTabs::Retranslate() {
    for (int i = 0; i < count(); ++i) {
        ShowTitle(At(i));
    }
}

void ChartTabs::ShowTitle(const ChartView& chart) {
    const Symbol* symbol = m_markets.FindSymbol(chart.Market(), chart.SymbolId());
    const QString name = ui::ToQString(symbol == nullptr ? chart.SymbolId() : NameOf(*symbol));
    const QString text = name + ' ' + PeriodText(chart.Period(), chart.Count());
    const int tab = indexOf(&chart);
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
