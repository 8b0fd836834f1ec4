#pragma once

#include "platform/TaData.h"
#include "platform/Window.h"
#include "terminal/chart/HistoryDepth.h"
#include "terminal/plot/PlotCursor.h"

#include <QPointF>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

class QCustomPlot;
class QLabel;
class QMouseEvent;
class QWheelEvent;

namespace ta::terminal {

class ChartModel;
class ChartScene;
struct ChartTitle;
class DrawingBoard;
struct DrawingFrame;
class MarketData;
struct PlotMapping;

/// A chart window: the bars of one symbol in one data period, drawn in the panes of one indicator
/// group, with a cursor line, zoom and pan.
///
/// Registers with the settings repository while it lives, and draws again, before WindowProc
/// returns, when it is told that its group or the trend lines changed; a hidden view when it is
/// shown next. It keeps the UniNum of its group and asks the repository at each redraw. Bar indices
/// count from 0, the oldest bar; panes count from 0, the uppermost.
///
/// Mouse: wheel zooms around the bar under the mouse, drag pans, double click reports the pane or
/// the study of its legend. Keys: Left/Right move the cursor line by a bar (with Ctrl the view by a
/// tenth), Up/Down and +/- zoom, PageUp/PageDown go a page back or on, Home/End to the first or
/// latest bars, Escape takes the cursor line away.
class ChartView : public QWidget, public CView {
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
    void Show(const BarsKey& history, const HistoryDepth& depth);
    /// The same symbol in another data period; what stood in the middle of the view stays there, as
    /// far as there are bars around it.
    void ShowPeriod(int period, int count);
    /// Of the data period that is shown.
    HistoryDepth Depth() const;
    /// The depths of all data periods, where they are not the whole history. The setter is for a
    /// chart that shows no symbol yet.
    const HistoryDepths& Depths() const { return m_depths; }
    void SetDepths(const HistoryDepths& depths) { m_depths = depths; }
    const BarsKey& Shown() const { return m_shown; }
    std::uint8_t Market() const { return m_shown.market; }
    const CString& SymbolId() const { return m_shown.symbol; }
    int Period() const { return m_shown.period; }
    int Count() const { return m_shown.count; }

    /// A name that is not known is ignored.
    void SetGroup(const CString& name);
    /// The name at the last redraw.
    const CString& GroupName() const { return m_groupName; }
    /// -1 when there was no group to show.
    int GroupUniNum() const { return m_groupUniNum; }

    /// true (the beginning): rising bars red, falling ones green; false: the reverse.
    void SetRisingRed(bool risingRed);
    bool RisingRed() const { return m_risingRed; }

    int PaneCount() const;
    int BarCount() const;
    /// The bars and the studies of the group, calculated.
    const ChartModel& Model() const { return *m_model; }

    /// Asks for the history and the group again and draws.
    void Reload();

    // Zoom and pan.

    void ZoomIn();
    void ZoomOut();
    void ShowAll();
    void ShowLatest();
    /// Moves the view by `bars`: on for positive, back for negative numbers. Stops at the ends.
    void ScrollBars(int bars);
    /// First and last bar index in view; (-1, -1) without data.
    std::pair<int, int> VisibleBars() const;

    // The cursor line.

    /// Puts the cursor line on a bar and scrolls to it; -1 takes it away.
    void SetCursorBar(int index);
    /// -1 without cursor line.
    int CursorBar() const { return m_cursor.bar; }
    /// Date and prices of the cursor's bar, of the last bar without a cursor; empty without data.
    QString CursorText() const;
    /// The legend of each pane as one text, studies separated by a line feed. There also when the
    /// group hides the legends.
    QStringList LegendTexts() const;

    /// Bars and prices to and from pixels of this widget.
    PlotMapping Mapping() const;

    /// The trend lines of the symbol and data period, and the tools to draw them.
    DrawingBoard& Drawings() const { return *m_drawings; }

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

signals:
    /// Another symbol or data period is shown.
    void symbolChanged();
    /// Another group is shown, or the group has another name.
    void groupChanged();
    /// The group was deleted elsewhere; `newGroup`, the default, is shown now.
    void groupVanished(const QString& newGroup);
    void loadFailed(const QString& reason);
    /// There is less history than was asked for; the text says what and why. Empty when what the
    /// load before told, a failure included, is over.
    void historyShort(const QString& text);
    /// The bars or the studies, their names included, may be others than before.
    void dataChanged();
    /// A double click: on the legend of a study (counted from 1) or elsewhere in a pane (0).
    void legendDoubleClicked(int pane, int study);
    /// `text` as CursorText().
    void cursorMoved(const QString& text);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Retranslate();
    void LoadHistory(bool evenWhenShared);
    void ScrollToTime(double time);
    std::shared_ptr<const BarSeries> FindBars(bool evenWhenShared);
    ChartTitle MakeTitle() const;
    QString Message() const;
    void ShowMessage();
    bool TakeGroup(const CString& name);
    void FollowGroup();
    void RedrawGroup();
    void Rebuild();
    void Draw();
    void DrawCursor();
    void UpdateNames();
    DrawingFrame MakeDrawingFrame() const;
    std::optional<QPointF> CursorPoint() const;

    void OnPress(const QMouseEvent& event);
    void OnMove(const QMouseEvent& event);
    void OnRelease(const QMouseEvent& event);
    void OnDoubleClick(const QMouseEvent& event);
    void OnWheel(const QWheelEvent& event);
    void OnLeave();
    bool OnKey(int key, Qt::KeyboardModifiers modifiers);
    void Zoom(double factor);
    void MoveCursorBy(int bars);
    void PutCursorAt(const QPointF& position);

    MarketData& m_data;
    BarsKey m_shown;
    HistoryDepths m_depths;
    std::shared_ptr<const BarSeries> m_all;  // of which the model has what the depth asks for
    CString m_groupName;
    int m_groupUniNum = -1;
    bool m_risingRed = true;
    PlotCursor m_cursor;
    QString m_failure;       // why there is no history
    bool m_hasTold = false;  // whether the last load had something to tell

    QCustomPlot* m_plot;
    QLabel* m_message;
    std::unique_ptr<ChartModel> m_model;
    std::unique_ptr<ChartScene> m_scene;
    std::unique_ptr<DrawingBoard> m_drawings;

    /// Where the left button went down.
    struct Drag {
        bool active = false;
        bool moved = false;
        QPointF start;
        double lower = 0;  ///< of the range then
    };
    Drag m_drag;
};

}  // namespace ta::terminal
