#pragma once

#include "platform/TaData.h"
#include "terminal/chart/HistoryDepth.h"
#include "terminal/plot/ChartAxes.h"
#include "terminal/plot/PlotCursor.h"

#include <QPoint>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>
#include <utility>

class QContextMenuEvent;
class QCustomPlot;
class QLabel;
class QMenu;
class QMouseEvent;
class QWheelEvent;

namespace ta::terminal {

class ChartScene;
struct AxisPlace;
struct AxisState;
struct ChartTable;
struct PlotMapping;
class PlotModel;
struct PlotTheme;

/// A chart window, whatever it shows: a plot of a model with a cursor line, zoom and pan. What it
/// shows and where that comes from is its heir's. Bar indices count from 0, the oldest bar; panes
/// count from 0, the uppermost.
///
/// Mouse: wheel zooms around the bar under the mouse, drag pans, a drag of the border of two panes
/// moves it and a double click there gives the panes their own heights back; on a value axis a
/// double click brings the automatic range back, and elsewhere it reports the pane or the study of
/// its legend. Keys: Left/Right move the cursor line by a bar (with Ctrl the view by a tenth),
/// Up/Down and +/- zoom, PageUp/PageDown go a page back or on, Home/End to the first or latest
/// bars, Escape takes the cursor line away. The context menu has what menuRequested() adds; a value
/// axis asks for a menu of its own.
class ChartPage : public QWidget {
    Q_OBJECT

public:
    ~ChartPage() override;

    // What is shown.

    /// What is shown, in the language in use, without the data period; may be empty.
    virtual QString Name() const = 0;
    /// The symbol and the data period; without a symbol when there is more than one.
    virtual const BarsKey& Shown() const = 0;
    int Period() const { return Shown().period; }
    int Count() const { return Shown().count; }
    /// How much of the data period is loaded.
    virtual HistoryDepth Depth() const = 0;
    /// Loads and shows history, as much of it as `depth` says. A page of several symbols takes the
    /// data period alone.
    virtual void Show(const BarsKey& history, const HistoryDepth& depth) = 0;
    /// The same in another data period, its latest bars first.
    virtual void SwitchPeriod(int period, int count) = 0;
    /// The same in another data period. The date of the cursor line in view, or else that in the
    /// middle, stays where it stands, as far as there are bars around it; where the latest bars are
    /// in view they stay. As long as the view is not moved the date is that of the first switch,
    /// also after periods that have no bars of it.
    void ShowPeriod(int period, int count);
    /// Asks for the history again and draws.
    virtual void Reload() = 0;

    /// The numbers behind it.
    virtual ChartTable Table() const = 0;
    /// The bars and what is drawn of them.
    const PlotModel& Model() const { return *m_model; }
    int PaneCount() const;
    int BarCount() const;

    /// true (the beginning): rising bars red, falling ones green; false: the reverse.
    void SetRisingRed(bool risingRed);
    bool RisingRed() const { return m_risingRed; }

    // Zoom and pan.

    void ZoomIn();
    void ZoomOut();
    void ShowAll();
    void ShowLatest();
    /// Moves the view by `bars`: on for positive, back for negative numbers. Stops at the ends.
    void ScrollBars(int bars);
    /// First and last bar index in view; (-1, -1) without data.
    std::pair<int, int> VisibleBars() const;

    // The axes.

    /// How the user has set them. Ranges belong to what is shown: another symbol, data period or
    /// set of symbols has its own.
    ChartAxes& Axes() { return m_axes; }
    const ChartAxes& Axes() const { return m_axes; }
    /// Draws what was changed there; TakeRange when that is the range of one axis alone.
    void TakeAxes();
    void TakeRange(const AxisPlace& place);
    /// A range that was set by hand becomes the automatic one.
    void MakeAxisAutomatic(const AxisPlace& place);
    void MakeAxesAutomatic();
    /// Nothing when there is no such axis, or nothing to see on it.
    std::optional<AxisState> AxisAt(const AxisPlace& place) const;
    /// The labelled axis of the pane of the cursor line; without one of the uppermost pane that
    /// shows prices, or of the first.
    AxisPlace AxisInHand() const;

    // The cursor line.

    /// Puts the cursor line on a bar and scrolls to it; -1 takes it away.
    void SetCursorBar(int index);
    /// -1 without cursor line.
    int CursorBar() const { return m_cursor.bar; }
    /// The bar that the cursor line stands on or, when the mouse has left the chart, stood on; -1
    /// when the bars are others since or the line was taken away.
    int LastCursorBar() const { return m_lastCursorBar; }
    /// Where a click at a pixel places something: at the height at which the cursor line stands
    /// for a mouse there, by the lock that the group's options ask for.
    QPointF PlacedPoint(const QPointF& point) const;
    /// Date and values of the cursor's bar, of the last bar in view when the cursor is out of it,
    /// of the latest bar without a cursor; empty without data.
    QString CursorText() const;
    /// The legend of each pane as one text, studies separated by a line feed. There also when the
    /// legends are hidden.
    QStringList LegendTexts() const;

    /// Bars and values to and from pixels of this widget.
    PlotMapping Mapping() const;

signals:
    /// Another symbol or data period is shown.
    void symbolChanged();
    void loadFailed(const QString& reason);
    /// There is less history than was asked for; the text says what and why. Empty when what the
    /// load before told, a failure included, is over.
    void historyShort(const QString& text);
    /// The bars or the studies, their names included, may be others than before.
    void dataChanged();
    /// A double click: on the legend of a study (counted from 1) or elsewhere in a pane (0).
    void legendDoubleClicked(int pane, int study);
    /// The context menu of a value axis: AxisPlace's pane and scale, and where the mouse is on the
    /// screen.
    void axisMenuRequested(int pane, int scale, const QPoint& position);
    /// `text` as CursorText().
    void cursorMoved(const QString& text);
    /// The context menu is about to open: who has something to offer adds it. `menu` lives until it
    /// is closed; one that stays empty does not open.
    void menuRequested(QMenu* menu);

protected:
    /// `model` is the heir's too, who tells of its changes by Rebuild().
    ChartPage(std::shared_ptr<const PlotModel> model, QWidget* parent);

    /// What stands in the place of a chart; empty when there is one.
    virtual QString Message() const = 0;
    /// What a screen reader calls the page.
    virtual QString SpokenName() const = 0;
    /// Whether the user is about to place something by a click; the cursor line then follows the
    /// mouse whatever the group's options say, as it tells what the click will place.
    virtual bool IsPlacing() const { return false; }
    /// The user has shared the height in another way; by Scene().Shares().
    virtual void OnShares() {}
    /// The colours or the font are others now; by Rebuild(), before it draws.
    virtual void OnStyle(const PlotTheme& /*theme*/) {}
    /// Names what is shown; ranges of axes that were set by hand come back with the name.
    virtual CString HistoryKey() const;

    /// The model has other bars: the cursor goes, and the latest of them come into view.
    void TakeBars();
    /// The model has other panes, studies or names, or the looks changed.
    void Rebuild();
    void Draw();
    QCustomPlot& Plot() const { return *m_plot; }
    ChartScene& Scene() const { return *m_scene; }
    const PlotCursor& Cursor() const { return m_cursor; }
    /// The time of LastCursorBar(); NaN without one.
    double LastCursorTime() const;
    /// After TakeBars(): the cursor line as it was, on the bar of LastCursorTime() if that is still
    /// there.
    void PutCursorBack(PlotCursor cursor, double time);
    /// The uppermost pane that shows prices; -1: none.
    int PricePane() const;

    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A date and where it stands: as a part of the view's width from the left.
    struct DatePlace {
        double time = 0;
        double place = 0.5;
        double lower = 0;  ///< of the range that shows it
    };
    bool IsCursorInView() const;
    std::optional<DatePlace> PlaceToKeep() const;
    int BarOf(double time) const;
    void ScrollToDate(const DatePlace& date, bool withCursor);
    void ShowMessage();
    void DrawCursor();
    void TellBar();
    void UpdateNames();

    bool FollowsMouse() const;
    void OnPress(const QMouseEvent& event);
    void OnMove(const QMouseEvent& event);
    void OnRelease(const QMouseEvent& event);
    void ShowBorder(const QPointF& position);
    void OnDoubleClick(const QMouseEvent& event);
    void OnPlotMenu(QContextMenuEvent& event);
    void OnWheel(const QWheelEvent& event);
    void OnLeave();
    bool OnKey(int key, Qt::KeyboardModifiers modifiers);
    void Zoom(double factor);
    void MoveCursorBy(int bars);
    void PutCursorAt(const QPointF& position);

    std::shared_ptr<const PlotModel> m_model;
    ChartAxes m_axes;
    int m_axisWidth = 100;  // as drawn, percent
    bool m_risingRed = true;
    PlotCursor m_cursor;
    int m_lastCursorBar = -1;
    std::optional<DatePlace> m_keptDate;  // by the last switch of the period
    int m_toldBar = -1;                   // of the last text that was told
    QCustomPlot* m_plot;
    QLabel* m_message;
    std::unique_ptr<ChartScene> m_scene;

    /// Where the left button went down.
    struct Drag {
        bool active = false;
        bool moved = false;
        QPointF start;
        double lower = 0;  ///< of the range then
        int border = -1;   ///< the pane over the border that is dragged; -1: the chart is
    };
    Drag m_drag;
};

}  // namespace ta::terminal
