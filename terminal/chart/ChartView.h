#pragma once

#include "platform/TaData.h"
#include "platform/Window.h"
#include "terminal/chart/ChartPage.h"

#include <QPointF>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace ta::terminal {

class ChartModel;
struct ChartTitle;
class DrawingBoard;
struct DrawingFrame;
class MarketData;
class PaneHeights;

/// The chart window of one symbol: its bars in one data period, drawn in the panes of one indicator
/// group, and the user's lines on them.
///
/// Registers with the settings repository while it lives, and draws again, before WindowProc
/// returns, when it is told that its group or the trend lines changed; a hidden view when it is
/// shown next. It keeps the UniNum of its group and asks the repository at each redraw.
class ChartView : public ChartPage, public CView {
    Q_OBJECT

public:
    /// `marketData` stays the caller's and outlives the view. Begins with no symbol, daily, in the
    /// repository's default group.
    explicit ChartView(MarketData& marketData, QWidget* parent = nullptr);
    ~ChartView() override;

    // What is shown.

    /// Loads and shows the history of a symbol in a data period, its latest bars first: one load
    /// and one redraw. An empty symbol shows none. History that is not to be had is told in the
    /// chart and by loadFailed().
    void Show(const BarsKey& history);
    /// The same, and as much of it as `depth` says, now and whenever this chart shows the data
    /// period again.
    void Show(const BarsKey& history, const HistoryDepth& depth) override;
    void SwitchPeriod(int period, int count) override;
    QString Name() const override;
    /// Of the data period that is shown.
    HistoryDepth Depth() const override;
    /// The depths of all data periods, where they are not the whole history. The setter is for a
    /// chart that shows no symbol yet.
    const HistoryDepths& Depths() const { return m_depths; }
    void SetDepths(const HistoryDepths& depths) { m_depths = depths; }
    const BarsKey& Shown() const override { return m_shown; }
    std::uint8_t Market() const { return m_shown.market; }
    const CString& SymbolId() const { return m_shown.symbol; }

    /// A name that is not known is ignored.
    void SetGroup(const CString& name);
    /// The name at the last redraw.
    const CString& GroupName() const { return m_groupName; }
    /// -1 when there was no group to show.
    int GroupUniNum() const { return m_groupUniNum; }

    /// Where the heights of the panes are kept, which the user drags; not at all without it. Stays
    /// the caller's and outlives the view.
    void SetPaneHeights(PaneHeights& heights);

    /// The bars and the studies of the group, calculated.
    const ChartModel& Model() const { return *m_model; }
    ChartTable Table() const override;
    void Reload() override;

    /// The trend lines of the symbol and data period, and the tools to draw them.
    DrawingBoard& Drawings() const { return *m_drawings; }

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

signals:
    /// Another group is shown, or the group has another name.
    void groupChanged();
    /// The group was deleted elsewhere; `newGroup`, the default, is shown now.
    void groupVanished(const QString& newGroup);

protected:
    QString Message() const override;
    QString SpokenName() const override;
    bool IsPlacing() const override;
    void OnShares() override;
    void OnStyle(const PlotTheme& theme) override;

private:
    ChartView(MarketData& marketData, const std::shared_ptr<ChartModel>& model, QWidget* parent);
    void Retranslate();
    void LoadHistory(bool evenWhenShared);
    std::shared_ptr<const BarSeries> FindBars(bool evenWhenShared);
    ChartTitle MakeTitle() const;
    bool TakeGroup(const CString& name);
    void FollowGroup();
    void RedrawGroup();
    void TakeShares();
    DrawingFrame MakeDrawingFrame() const;
    QPointF PlacedOnPrices(const QPointF& point) const;
    std::optional<QPointF> CursorPoint() const;

    MarketData& m_data;
    BarsKey m_shown;
    HistoryDepths m_depths;
    std::shared_ptr<const BarSeries> m_all;  // of which the model has what the depth asks for
    CString m_groupName;
    int m_groupUniNum = -1;
    QString m_failure;  // why there is no history
    PaneHeights* m_heights = nullptr;
    bool m_hasTold = false;  // whether the last load had something to tell

    std::shared_ptr<ChartModel> m_model;
    std::unique_ptr<DrawingBoard> m_drawings;
};

}  // namespace ta::terminal
