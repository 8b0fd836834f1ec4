#pragma once

#include "platform/Types.h"
#include "terminal/frame/FrameState.h"
#include "terminal/frame/Periods.h"

#include <QHash>
#include <QTabWidget>

#include <cstdint>
#include <utility>
#include <vector>

class QMenu;

namespace ta::terminal {

class ChartPage;
class ChartView;
class ComparisonView;
class MarketData;
class PaneHeights;

/// The chart windows, one a tab. What makes another chart or another symbol come to the front gives
/// it the focus too.
class ChartTabs : public QTabWidget {
    Q_OBJECT

public:
    /// Begins without a tab; Add() the first one before anything else. `markets` stays the caller's
    /// and outlives the tabs.
    explicit ChartTabs(MarketData& markets, QWidget* parent = nullptr);
    ~ChartTabs() override;

    /// The chart in front, of either kind.
    ChartPage& Current() const { return At(currentIndex()); }
    /// `tab` is 0 to count() - 1.
    ChartPage& At(int tab) const;
    /// The same when it is a chart of a symbol and a group, or a comparison; null for the other.
    ChartView* ChartAt(int tab) const;
    ComparisonView* ComparisonAt(int tab) const;
    ChartView* CurrentChart() const { return ChartAt(currentIndex()); }
    ComparisonView* CurrentComparison() const { return ComparisonAt(currentIndex()); }

    /// A new tab, behind the others. A group that is not there leaves it on the default one.
    ChartPage& Add(const TabState& state);
    /// Shows a comparison in the tab in front when that is one, else in a new tab in front.
    void Compare(const ComparisonSet& set);
    /// A new tab with what the current one shows, in front.
    void AddCopy();
    /// Closes a tab, unless it is the only one.
    void Close(int tab);
    void CloseCurrent() { Close(currentIndex()); }

    /// Shows a symbol in the current chart, in the chart's period when the symbol has it, else in
    /// the first one that it has. Where a comparison is in front, in a new tab.
    void OpenSymbol(std::uint8_t market, const CString& id);
    /// `index` is a position in kPeriods. The dates in view stay as far as they can; see
    /// ChartPage::ShowPeriod().
    void SelectPeriod(int index);
    /// Any period code, and how many minutes.
    void ShowPeriod(int period, int count);
    /// A name that is not known is ignored, as a comparison in front ignores any.
    void SelectGroup(const CString& name);
    /// For every chart, those to come included; see ChartView.
    void SetRisingRed(bool risingRed);

    /// Of the panes of all groups' charts.
    PaneHeights& Heights() const { return *m_heights; }

    /// What each tab shows.
    QList<TabState> States() const;
    /// The tabs that show a group: title and position.
    std::vector<std::pair<CString, int>> ViewsOfGroup(int uniNum) const;
    void Retranslate();
    /// Of the current chart; of a comparison what any of its symbols has.
    PeriodSet AvailablePeriods() const;

signals:
    /// Another chart is in front, it shows something else, or there are more or fewer tabs.
    void changed();
    void cursorMoved(const QString& text);
    /// To be told to the user, once.
    void notice(const QString& text);
    /// To be shown until the next one comes; may be empty.
    void hint(const QString& text);
    /// As ChartPage::legendDoubleClicked, of the chart in front.
    void legendDoubleClicked(int pane, int study);
    /// As ChartPage::menuRequested.
    void menuRequested(QMenu* menu);

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    TabState StateOf(int tab) const;
    ChartPage& MakePage(const TabState& state);
    ChartPage& MakeChart(const TabState& state);
    ChartPage& MakeComparison(const TabState& state);
    void Connect(ChartPage& page);
    void ConnectChart(ChartView& chart);
    void KeepTold(const ChartPage& page, const QString& text);
    ChartView& ChartForSymbol();
    void ShowTitle(const ChartPage& page);

    MarketData& m_markets;
    PaneHeights* m_heights;
    bool m_risingRed = true;
    QHash<const QWidget*, QString> m_told;  ///< what each tab's last load had to tell
};

}  // namespace ta::terminal
