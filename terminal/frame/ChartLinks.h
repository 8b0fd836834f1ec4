#pragma once

#include "platform/TaData.h"
#include "terminal/frame/GridState.h"

#include <QObject>

#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace ta::terminal {

class ChartPage;
class ChartView;
class MarketData;

/// Lets the charts in view of one tab follow each other in what the switches say. The chart that
/// the user changes leads; parked charts neither lead nor follow.
class ChartLinks : public QObject {
    Q_OBJECT

public:
    using Charts = std::function<std::vector<ChartPage*>()>;

    /// `inView` gives the charts in view, and `markets` stays the caller's; both outlive this.
    ChartLinks(Charts inView, const MarketData& markets);

    /// The chart is one of the tab's from now on.
    void Add(ChartView& chart);
    /// In what they follow from now on.
    void SetSwitches(const ChartLinkSwitches& switches) { m_switches = switches; }
    /// Lets the others in view follow in all that is switched on.
    void Follow(const ChartPage& leader);

signals:
    /// Why some charts do not follow, in the language in use.
    void notice(const QString& text);

private:
    std::vector<ChartView*> Followers(const ChartPage& leader) const;
    void FollowHistory(const ChartPage& leader);
    void FollowCursor(const ChartPage& leader);
    bool Show(ChartView& chart, const BarsKey& wanted);
    void ShowSymbol(ChartView& chart, BarsKey wanted);

    Charts m_inView;
    const MarketData& m_markets;
    ChartLinkSwitches m_switches;
    bool m_following = false;
    /// Code and count of the followers whose symbol does not have their own period.
    std::map<const ChartView*, std::pair<int, int>> m_ownPeriods;
};

}  // namespace ta::terminal
