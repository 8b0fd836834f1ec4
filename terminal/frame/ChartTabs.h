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

class ChartGrid;
class ChartPage;
class ChartView;
class ComparisonView;
class MarketData;
class PaneHeights;

/// The chart windows: each tab holds the charts of a layout, a comparison has its tab to itself.
/// The active chart of the tab in front is the current one. What makes another chart or another
/// symbol come to the front gives it the focus too.
class ChartTabs : public QTabWidget {
    Q_OBJECT

public:
    /// Begins without a tab; Add() the first one before anything else. `markets` stays the caller's
    /// and outlives the tabs.
    explicit ChartTabs(MarketData& markets, QWidget* parent = nullptr);
    ~ChartTabs() override;

    /// The current chart, of either kind.
    ChartPage& Current() const { return At(currentIndex()); }
    /// The active chart of a tab, 0 to count() - 1.
    ChartPage& At(int tab) const;
    /// The same when it is a chart of a symbol and a group, or a comparison; null for the other.
    ChartView* ChartAt(int tab) const;
    ComparisonView* ComparisonAt(int tab) const;
    ChartView* CurrentChart() const { return ChartAt(currentIndex()); }
    ComparisonView* CurrentComparison() const { return ComparisonAt(currentIndex()); }
    /// The charts of a tab, parked ones too, and how they are arranged.
    ChartGrid& GridAt(int tab) const;
    ChartGrid& CurrentGrid() const { return GridAt(currentIndex()); }
    /// The chart that shows a history: the current one, else one in view in its tab, the tab in
    /// front first, else a parked one; null when there is none.
    ChartView* ChartOf(const BarsKey& history) const;
    /// Makes a chart the current one; false when it is parked.
    bool BringToFront(const ChartView& chart);

    /// A new tab, behind the others. Groups that are not there leave their charts on the default
    /// one; a layout has the charts that it lacks from the active one.
    ChartGrid& Add(const TabState& state);
    /// Shows a comparison in the tab in front when that is one, else in a new tab in front.
    void Compare(const ComparisonSet& set);
    /// A new tab with what the current chart shows, in front.
    void AddCopy();
    /// Closes a tab, unless it is the only one. The user is asked when it has several charts.
    void Close(int tab);
    void CloseCurrent() { Close(currentIndex()); }

    /// Arranges the tab in front, unless that is a comparison: `format` as ta::layout has it.
    /// Windows that there are no charts for begin with what the current one shows, surplus charts
    /// are parked.
    void SetFormat(int format);
    /// The next and the previous window of the tab in front.
    void FocusNextChart() { StepFocus(1); }
    void FocusPreviousChart() { StepFocus(-1); }

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
    /// The charts that show a group, parked ones too: title, and position of the tab.
    std::vector<std::pair<CString, int>> ViewsOfGroup(int uniNum) const;
    void Retranslate();
    /// Of the current chart; of a comparison what any of its symbols has.
    PeriodSet AvailablePeriods() const;

signals:
    /// Another chart is the current one, it shows something else, or there are more or fewer tabs
    /// or charts.
    void changed();
    void cursorMoved(const QString& text);
    /// To be told to the user, once.
    void notice(const QString& text);
    /// To be shown until the next one comes; may be empty.
    void hint(const QString& text);
    /// As ChartPage::legendDoubleClicked, of the current chart.
    void legendDoubleClicked(int pane, int study);
    /// As ChartPage::axisMenuRequested, of the chart in front.
    void axisMenuRequested(int pane, int scale, const QPoint& position);
    /// As ChartPage::menuRequested.
    void menuRequested(QMenu* menu);

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    ChartPage& AddChart(ChartGrid& grid, const ChartState& state);
    void FillWindows(ChartGrid& grid, int format, const ChartState& like);
    ChartGrid& GridOf(const ChartPage& page) const;
    bool IsCurrent(const ChartPage& page) const;
    void Connect(ChartPage& page);
    void ConnectChart(ChartView& chart);
    void ConnectGrid(ChartGrid& grid);
    void KeepTold(const ChartPage& page, const QString& text);
    bool MayClose(const ChartGrid& grid);
    void StepFocus(int step);
    ChartView& ChartForSymbol();
    void ShowTitle(const ChartGrid& grid);

    MarketData& m_markets;
    PaneHeights* m_heights;
    bool m_risingRed = true;
    QHash<const ChartPage*, QString> m_told;  ///< what each chart's last load had to tell
};

}  // namespace ta::terminal
