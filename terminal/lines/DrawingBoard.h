#pragma once

#include "platform/TaData.h"
#include "terminal/lines/DrawingTool.h"
#include "terminal/lines/LineHistory.h"
#include "terminal/lines/TrendLineGeometry.h"

#include <QFont>
#include <QObject>
#include <QPointF>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QContextMenuEvent;
class QCustomPlot;
class QKeyEvent;
class QMenu;
class QMouseEvent;

namespace ta::terminal {

class DrawingLayer;
struct PlotTheme;

/// The lines that the user draws on one chart: shows those of its symbol and data period, and
/// takes the mouse and the keys while a tool is chosen or a line is under the mouse. Every edit is
/// in the settings repository and the store when the event that ends it returns.
///
/// Mouse: with a tool, clicks set the points (pressing, dragging and releasing sets two), a right
/// click cancels. Without, a click on a line selects it; dragging moves it, or the handle under the
/// mouse; the context menu changes its pen and colour, locks and deletes it. Keys: Enter or Space
/// sets a point at the cursor line, Delete deletes the selected line, Escape cancels the drawing or
/// move, else the selection.
///
/// Every edit can be undone (LineHistory). Where another window or program has changed the line
/// meanwhile, that is told and stays.
///
/// Lines of kinds that the terminal does not draw, and data strings that it cannot read, are left
/// as they are; of the latter the user is told once in a run of the program.
class DrawingBoard : public QObject {
    Q_OBJECT

public:
    /// What the board asks of its chart, at any time.
    struct Chart {
        std::function<DrawingFrame()> frame;
        /// Where the cursor line stands in the pane of the prices.
        std::function<std::optional<QPointF>()> cursor;
        /// Where a click at a pixel sets a point: at the height that the cursor line locks on.
        std::function<QPointF(const QPointF&)> placed;
    };

    /// `view` gets the keys, `plot` in it the mouse. Both outlive the board.
    DrawingBoard(QWidget& view, QCustomPlot& plot, Chart chart);
    ~DrawingBoard() override;

    /// Shows the lines of another chart. A drawing in the making is dropped when it is another one.
    /// Like the next two, does not paint.
    void SetChart(const BarsKey& chart);
    /// Asks the repository again.
    void Reload();
    void SetStyle(const PlotTheme& theme, const QFont& font);

    /// Nothing is the pointer. A tool is refused with a message when the user may keep no more
    /// lines, and without one when there is nothing to draw on.
    void ChooseTool(std::optional<TrendLineKind> kind);
    std::optional<TrendLineKind> Tool() const { return m_tool.Kind(); }

    /// The lines on the chart, in the order in which they were drawn.
    std::vector<TrendLine> Lines() const;
    int LineCount() const { return static_cast<int>(m_lines.size()); }
    /// Position in Lines(); -1: none.
    int Selected() const;
    /// Null: none. Up to the next edit or reload.
    const TrendLine* SelectedLine() const;
    /// By its data string; a line that is not there selects none.
    void Select(const CString& data);
    /// Selects the line after the selected one, or the first.
    void SelectNext();
    /// Asks for the selected line's style and width. New lines of its kind get them too.
    void ChangePen();
    /// The same with its colour.
    void ChangeColour();
    void LockSelected(bool lock);
    void ToggleLock();
    /// A locked line stays, with a notice.
    void DeleteSelected();
    /// Deletes every line on the chart, locked ones too, after a question.
    void DeleteAll();
    /// Deletes lines of a chart without asking, to be undone here while that chart is shown.
    /// Returns how many were changed or deleted elsewhere meanwhile and stay as they are.
    int DeleteLines(const BarsKey& chart, const std::vector<CString>& lines);
    /// Tells that of lines that were to be deleted; `missing` is more than 0.
    static QString MissingText(const std::vector<CString>& lines, int missing);

    /// Takes the last edit on this chart back and selects its line; a drawing or move under way is
    /// dropped instead. What stands against it is told.
    void Undo();
    void Redo();
    /// What Undo() and Redo() would do, in the language in use; empty: nothing.
    QString UndoName() const { return m_history.UndoName(m_chart); }
    QString RedoName() const { return m_history.RedoName(m_chart); }

    /// What the context menu offers for the selected line and all lines; nothing without lines and
    /// steps to undo. A context menu's event selects the line under the mouse before the view gets
    /// it.
    void AddMenuEntries(QMenu& menu);

signals:
    /// The tool, the lines or the selection changed.
    void changed();
    /// For the status bar; an empty text takes the last one away.
    void notice(const QString& text);
    /// What the user does with the tool in hand; empty when there is none any more.
    void hint(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct StoredLine {
        CString data;
        TrendLine line;
    };
    struct Hit {
        std::size_t line = 0;
        int anchor = -1;
    };
    /// A line, or one anchor of it, on the way with the mouse.
    struct Move {
        CString data;
        TrendLine before;
        TrendLine now;
        int anchor = -1;
        bool moved = false;
        QPointF start;  ///< pixels
        double bar = 0;
        double price = 0;
    };

    bool OnPlotEvent(QEvent& event);
    bool OnPress(const QMouseEvent& event);
    bool OnMove(const QMouseEvent& event);
    bool OnRelease(const QMouseEvent& event);
    bool OnKey(int key);
    bool OnContextMenu(const QContextMenuEvent& event);
    void AddLineEntries(QMenu& menu, const TrendLine& line);

    bool Cancel();
    void PlaceAt(const QPointF& point);
    void EndTool();
    void EndHint();
    void Finish(const TrendLine& line);
    void BeginMove(const Hit& hit, const QPointF& point);
    void MoveTo(const QPointF& point);
    void EndMove();
    void Replace(const StoredLine& from, const TrendLine& to, LineAction action);
    void TakePen(const StoredLine& line, const LinePen& pen, LineAction action);
    void DeleteAndTell(const BarsKey& chart, const std::vector<CString>& lines);
    void Turn(TrendLineResult (LineHistory::*turn)(const BarsKey&), const QString& name,
              const char* doneKey);
    /// Nothing for what is no limit.
    void TellLimit(TrendLineAdding why, int limit);
    void TellUnreadable(const std::vector<CString>& lines);

    std::optional<Hit> HitAt(const QPointF& point) const;
    const StoredLine* SelectedStored() const;
    void ShowMouse(const QPointF& point);
    std::optional<TrendLine> ToolPreview() const;
    void Arrange();
    void Repaint();

    QWidget& m_view;
    QCustomPlot& m_plot;
    Chart m_asked;
    std::unique_ptr<DrawingLayer> m_layer;
    BarsKey m_chart;
    std::vector<StoredLine> m_lines;
    CString m_selected;  // its data string
    LineHistory m_history;
    DrawingTool m_tool;
    std::optional<Move> m_move;
    std::optional<QPointF> m_mouse;
    std::optional<QPointF> m_press;  // where the button went down that set an anchor
};

}  // namespace ta::terminal
