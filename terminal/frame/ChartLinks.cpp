#include "terminal/frame/ChartLinks.h"

#include "terminal/chart/ChartView.h"
#include "terminal/frame/BarAtTime.h"
#include "terminal/frame/Periods.h"
#include "terminal/lang/Language.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/quotes/MarketData.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <tuple>
#include <utility>

namespace ta::terminal {

ChartLinks::ChartLinks(Charts inView, const MarketData& markets)
    : m_inView(std::move(inView)), m_markets(markets) {}

void ChartLinks::Add(ChartView& chart) {
    connect(&chart, &ChartPage::symbolChanged, this, [this, &chart] {
        if (!m_following) {
            m_ownPeriods.erase(&chart);
            Follow(chart);  // its cursor line may be gone, too
        }
    });
    connect(&chart, &ChartPage::cursorMoved, this, [this, &chart] { FollowCursor(chart); });
}

void ChartLinks::Follow(const ChartPage& leader) {
    FollowHistory(leader);
    FollowCursor(leader);
}

/// Empty when the leader is not in view.
std::vector<ChartView*> ChartLinks::Followers(const ChartPage& leader) const {
    std::vector<ChartView*> followers;
    bool leads = false;
    for (ChartPage* page : m_inView()) {
        leads = leads || page == &leader;
        auto* chart = qobject_cast<ChartView*>(page);
        if (chart != nullptr && chart != &leader) {
            followers.push_back(chart);
        }
    }
    return leads ? followers : std::vector<ChartView*>();
}

void ChartLinks::FollowHistory(const ChartPage& leader) {
    if (m_following || !(m_switches.symbol || m_switches.period)) {
        return;
    }
    const QScopedValueRollback guard(m_following, true);
    const BarsKey led = leader.Shown();
    QStringList without;
    for (ChartView* chart : Followers(leader)) {
        BarsKey wanted = chart->Shown();
        if (m_switches.symbol) {
            wanted.market = led.market;
            wanted.symbol = led.symbol;
        }
        if (m_switches.period) {
            wanted.period = led.period;
            wanted.count = led.count;
        }
        if (!Show(*chart, wanted)) {
            without.append(chart->Name());
        }
    }
    if (!without.empty()) {
        emit notice(Tr("IDS_TERMINAL-FRAME_LAYOUT_NO_PERIOD").arg(without.join(u'、')));
    }
}

/// false when the chart's symbol does not have the wanted period.
bool ChartLinks::Show(ChartView& chart, const BarsKey& wanted) {
    const BarsKey& shown = chart.Shown();
    if (wanted == shown) {
        return true;
    }
    const bool sameSymbol = wanted.market == shown.market && wanted.symbol == shown.symbol;
    if (!sameSymbol) {
        ShowSymbol(chart, wanted);
    } else if (IsThere(m_markets, wanted)) {
        chart.ShowPeriod(wanted.period, wanted.count);
    } else {
        return false;
    }
    return true;
}

/// In the chart's own period, which it has again after symbols without it.
void ChartLinks::ShowSymbol(ChartView& chart, BarsKey wanted) {
    const auto own = m_ownPeriods.extract(&chart);
    if (!own.empty() && !m_switches.period) {
        std::tie(wanted.period, wanted.count) = own.mapped();
    }
    const BarsKey nearest = NearestHistory(m_markets, wanted);
    if (nearest != wanted && !m_switches.period) {
        m_ownPeriods[&chart] = {wanted.period, wanted.count};
    }
    chart.Show(nearest);
}

void ChartLinks::FollowCursor(const ChartPage& leader) {
    if (m_following || !m_switches.cursor) {
        return;
    }
    const QScopedValueRollback guard(m_following, true);
    const int cursor = leader.CursorBar();
    for (ChartView* chart : Followers(leader)) {
        int bar = -1;
        if (cursor >= 0) {
            const double time = leader.Model().Bars()[static_cast<std::size_t>(cursor)].time;
            bar = BarAtTime(chart->Model().Bars(), chart->Period(), time, leader.Period());
        }
        if (bar != chart->CursorBar()) {
            chart->SetCursorBar(bar);
        }
    }
}

}  // namespace ta::terminal
