#include "terminal/lines/DrawingBoard.h"

#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/TrendLineKeys.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingLayer.h"
#include "terminal/lines/LinePens.h"

#include <qcustomplot.h>

#include <algorithm>
#include <set>
#include <utility>

namespace ta::terminal {

DrawingBoard::DrawingBoard(QWidget& view, QCustomPlot& plot, Chart chart)
    : m_view(view),
      m_plot(plot),
      m_asked(std::move(chart)),
      m_layer(std::make_unique<DrawingLayer>(plot, m_asked.frame)) {
    view.installEventFilter(this);
    plot.installEventFilter(this);
}

DrawingBoard::~DrawingBoard() = default;

// ---- What is shown ----

void DrawingBoard::SetChart(const BarsKey& chart) {
    if (chart != m_chart) {
        m_chart = chart;
        EndTool();
        m_move.reset();
        m_press.reset();
        m_selected.clear();
    }
    Reload();
}

void DrawingBoard::Reload() {
    std::vector<CString> unreadable;
    const std::vector<CString> stored = StoredTrendLines(m_chart);  // may come back here
    m_lines.clear();
    for (const CString& data : stored) {
        int kind = 0;
        if (auto line = DecodeTrendLine(data)) {
            m_lines.push_back({data, std::move(*line)});
        } else if (!IsTrendLine(data, kind) || FindTrendLineKind(kind)) {
            unreadable.push_back(data);
        }
    }
    const auto isThere = [this](const CString& data) {
        return std::ranges::find(m_lines, data, &StoredLine::data) != m_lines.end();
    };
    if (!isThere(m_selected)) {
        m_selected.clear();
    }
    const bool moveGone = m_move && !isThere(m_move->data);
    if (moveGone) {
        m_move.reset();
    }
    Arrange();
    emit changed();
    if (moveGone) {
        emit notice(Tr("IDS_TERMINAL-CHART_LINE_GONE"));
    }
    TellUnreadable(unreadable);
}

void DrawingBoard::TellUnreadable(const std::vector<CString>& lines) {
    static std::set<CString> told;
    const CString symbolKey = settings::PackSymbolKey(m_chart.market, m_chart.symbol);
    const auto count = std::ranges::count_if(
        lines, [&](const CString& line) { return told.insert(symbolKey + '/' + line).second; });
    if (count > 0) {
        emit notice(Tr("IDS_TERMINAL-CHART_LINES_UNREADABLE")
                        .arg(ui::ToQString(m_chart.symbol))
                        .arg(count));
    }
}

void DrawingBoard::SetStyle(const PlotTheme& theme, const QFont& font) {
    m_layer->SetStyle(theme, font);
}

std::vector<TrendLine> DrawingBoard::Lines() const {
    std::vector<TrendLine> lines;
    for (const StoredLine& stored : m_lines) {
        lines.push_back(stored.line);
    }
    return lines;
}

void DrawingBoard::Arrange() {
    std::vector<DrawnLine> lines;
    for (const StoredLine& stored : m_lines) {
        if (!m_move || stored.data != m_move->data) {
            lines.push_back({stored.line, stored.data == m_selected});
        }
    }
    m_layer->SetLines(std::move(lines));
    m_layer->SetPreview(m_move ? std::optional(m_move->now) : ToolPreview());
}

std::optional<TrendLine> DrawingBoard::ToolPreview() const {
    if (!m_mouse || !m_tool.IsActive()) {
        return std::nullopt;
    }
    const DrawingFrame frame = m_asked.frame();
    return frame.IsDrawable() ? m_tool.Preview(frame.AnchorAt(m_asked.placed(*m_mouse)))
                              : std::nullopt;
}

void DrawingBoard::Repaint() {
    m_asked.frame();  // draws first what else of the chart is to be drawn
    Arrange();
    m_layer->layer()->replot();
}

// ---- The tool ----

void DrawingBoard::ChooseTool(std::optional<TrendLineKind> kind) {
    EndTool();
    m_move.reset();
    m_press.reset();
    int limit = 0;
    const TrendLineAdding may =
        kind ? MayAddTrendLines(m_chart, 1, &limit) : TrendLineAdding::Failed;
    if (may == TrendLineAdding::Added && m_asked.frame().IsDrawable()) {
        m_selected.clear();
        m_tool.Begin(*kind, PenOfNewLine(*kind));
        m_plot.setCursor(Qt::CrossCursor);
        emit hint(Tr(InfoOf(*kind).hintKey));
    }
    Repaint();
    emit changed();
    TellLimit(may, limit);
}

void DrawingBoard::PlaceAt(const QPointF& point) {
    const DrawingFrame frame = m_asked.frame();
    if (const auto line = m_tool.Place(frame.AnchorAt(m_asked.placed(point)))) {
        Finish(*line);
    }
    Repaint();
}

void DrawingBoard::EndTool() {
    if (m_tool.IsActive()) {
        m_tool.Cancel();
        EndHint();
    }
}

/// Takes away what told the user how to draw.
void DrawingBoard::EndHint() {
    m_plot.unsetCursor();
    emit hint({});
}

void DrawingBoard::Finish(const TrendLine& line) {
    EndHint();
    const CString data = EncodeTrendLine(line);
    const TrendLineResult result = m_history.Do(m_chart, LineAction::Draw, {{{}, data}});
    Select(data);  // the edit may have loaded the lines without it first
    TellLimit(result.adding, result.limit);
}

void DrawingBoard::TellLimit(TrendLineAdding why, int limit) {
    if (why != TrendLineAdding::TooManyInAll && why != TrendLineAdding::TooManyOfSymbol) {
        return;
    }
    const QString text = why == TrendLineAdding::TooManyInAll
                             ? Tr("IDS_TERMINAL-CHART_LINES_LIMIT_IN_ALL")
                             : Tr("IDS_TERMINAL-CHART_LINES_LIMIT_OF_SYMBOL");
    ui::CurrentPrompts().Message(&m_view, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                 text.arg(limit));
}

/// Drops what is under way: the drawing, the move, or else the selection.
bool DrawingBoard::Cancel() {
    if (m_tool.IsActive()) {
        ChooseTool(std::nullopt);
    } else if (m_move) {
        m_move.reset();
        Repaint();
    } else if (!m_selected.empty()) {
        Select({});
    } else {
        return false;
    }
    return true;
}

// ---- Moving ----

void DrawingBoard::BeginMove(const Hit& hit, const QPointF& point) {
    const DrawingFrame frame = m_asked.frame();
    const StoredLine& stored = m_lines[hit.line];
    if (stored.line.locked) {
        return;
    }
    m_move = Move{stored.data,
                  stored.line,
                  stored.line,
                  hit.anchor,
                  false,
                  point,
                  frame.mapping.BarAt(point.x()),
                  frame.PriceAt(point.y())};
}

void DrawingBoard::MoveTo(const QPointF& point) {
    const DrawingFrame frame = m_asked.frame();
    if (!frame.IsDrawable()) {
        return;
    }
    const double bars = frame.mapping.BarAt(point.x()) - m_move->bar;
    const double price = frame.PriceAt(point.y()) - m_move->price;
    TrendLine moved = m_move->before;
    for (std::size_t i = 0; i < moved.anchors.size(); ++i) {
        if (m_move->anchor < 0) {
            moved.anchors[i] = frame.Moved(moved.anchors[i], bars, price);
        } else if (m_move->anchor == static_cast<int>(i)) {
            moved.anchors[i] = frame.AnchorAt(m_asked.placed(point));
        }
    }
    // Two points on one place would be no line.
    if (moved.anchors.size() < 2 || moved.anchors[0] != moved.anchors[1]) {
        m_move->now = std::move(moved);
    }
    Repaint();
}

void DrawingBoard::EndMove() {
    const Move move = *std::exchange(m_move, std::nullopt);
    if (move.moved && move.now != move.before) {
        Replace({move.data, move.before}, move.now, LineAction::Move);
    }
    Repaint();
}

std::optional<DrawingBoard::Hit> DrawingBoard::HitAt(const QPointF& point) const {
    const DrawingFrame frame = m_asked.frame();
    if (!frame.IsDrawable() || !frame.Area().contains(point)) {
        return std::nullopt;
    }
    std::optional<Hit> best;
    double nearest = 0;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const bool selected = m_lines[i].data == m_selected;
        const auto hit = HitTest(MakePicture(m_lines[i].line, frame), point, selected);
        if (hit && selected) {
            return Hit{i, hit->anchor};
        }
        if (hit && (!best || hit->distance <= nearest)) {
            best = Hit{i, hit->anchor};
            nearest = hit->distance;
        }
    }
    return best;
}

}  // namespace ta::terminal
