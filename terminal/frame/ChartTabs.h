#pragma once

#include "platform/Types.h"
#include "terminal/frame/FrameState.h"

#include <QTabWidget>

#include <cstdint>
#include <utility>
#include <vector>

namespace ta::terminal {

class ChartView;
class MarketData;

/// The chart windows, one a tab. What makes another chart or another symbol come to the front gives
/// it the focus too.
class ChartTabs : public QTabWidget {
    Q_OBJECT

public:
    /// Begins without a tab; Add() the first one before anything else. `markets` stays the caller's
    /// and outlives the tabs.
    explicit ChartTabs(MarketData& markets, QWidget* parent = nullptr);
    ~ChartTabs() override;

    /// The chart in front.
    ChartView& Current() const { return At(currentIndex()); }
    /// `tab` is 0 to count() - 1.
    ChartView& At(int tab) const;

    /// A new tab, behind the others. A group that is not there leaves it on the default one.
    ChartView& Add(const TabState& state);
    /// A new tab with what the current one shows, in front.
    void AddCopy();
    /// Closes a tab, unless it is the only one.
    void Close(int tab);
    void CloseCurrent() { Close(currentIndex()); }

    /// Shows a symbol in the current chart, in the chart's period when the symbol has it, else in
    /// the first one that it has.
    void OpenSymbol(std::uint8_t market, const CString& id);
    /// `index` is a position in kPeriods.
    void SelectPeriod(int index);
    /// A name that is not known is ignored.
    void SelectGroup(const CString& name);
    /// For every chart, those to come included; see ChartView.
    void SetRisingRed(bool risingRed);

    /// What each tab shows.
    QList<TabState> States() const;
    /// The tabs that show a group: title and position.
    std::vector<std::pair<CString, int>> ViewsOfGroup(int uniNum) const;
    void Retranslate();

signals:
    /// Another chart is in front, it shows something else, or there are more or fewer tabs.
    void changed();
    void cursorMoved(const QString& text);
    /// To be told to the user, once.
    void notice(const QString& text);
    /// To be shown until the next one comes; may be empty.
    void hint(const QString& text);
    /// As ChartView::legendDoubleClicked, of the chart in front.
    void legendDoubleClicked(int pane, int study);

protected:
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private:
    void Connect(ChartView& chart);
    void ShowTitle(const ChartView& chart);

    MarketData& m_markets;
    bool m_risingRed = true;
};

}  // namespace ta::terminal
