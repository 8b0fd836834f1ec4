#include "terminal/lines/DrawingBoard.h"

#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/TrendLineKeys.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingLayer.h"
#include "terminal/lines/TrendLineStore.h"

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
    m_lines.clear();
    for (const CString& data : StoredTrendLines(m_chart)) {
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
    if (m_move && !isThere(m_move->data)) {
        m_move.reset();
    }
    Arrange();
    emit changed();
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
    const TrendLineAdding may = kind ? MayAddTrendLine(m_chart, &limit) : TrendLineAdding::Failed;
    if (may == TrendLineAdding::Added && m_asked.frame().IsDrawable()) {
        m_selected.clear();
        m_tool.Begin(*kind);
        m_plot.setCursor(Qt::CrossCursor);
        emit hint(Tr(InfoOf(*kind).hintKey));
    }
    Repaint();
    emit changed();
    if (may == TrendLineAdding::TooManyInAll || may == TrendLineAdding::TooManyOfSymbol) {
        TellLimit(may == TrendLineAdding::TooManyInAll, limit);
    }
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
    int limit = 0;
    m_selected = EncodeTrendLine(line);
    const TrendLineAdding added = AddTrendLine(m_chart, m_selected, &limit);
    if (added == TrendLineAdding::Added) {
        emit changed();
        return;
    }
    Select({});
    if (added != TrendLineAdding::Failed) {
        TellLimit(added == TrendLineAdding::TooManyInAll, limit);
    }
}

void DrawingBoard::TellLimit(bool inAll, int limit) {
    const QString text = inAll ? Tr("IDS_TERMINAL-CHART_LINES_LIMIT_IN_ALL")
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

// ---- The selected line ----

const DrawingBoard::StoredLine* DrawingBoard::SelectedLine() const {
    const int index = Selected();
    return index < 0 ? nullptr : &m_lines[static_cast<std::size_t>(index)];
}

int DrawingBoard::Selected() const {
    const auto found = std::ranges::find(m_lines, m_selected, &StoredLine::data);
    return found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
}

void DrawingBoard::Select(const CString& data) {
    m_selected = data;
    Repaint();
    emit changed();
}

void DrawingBoard::SelectNext() {
    if (!m_lines.empty()) {
        const auto next = static_cast<std::size_t>(Selected() + 1);
        Select(m_lines[next % m_lines.size()].data);
    }
}

bool DrawingBoard::Replace(const CString& from, const TrendLine& to) {
    m_selected = EncodeTrendLine(to);
    if (ReplaceTrendLine(m_chart, from, m_selected)) {
        return true;
    }
    Reload();
    Repaint();
    emit notice(Tr("IDS_TERMINAL-CHART_LINE_GONE"));
    return false;
}

void DrawingBoard::LockSelected(bool lock) {
    if (const StoredLine* selected = SelectedLine()) {
        TrendLine line = selected->line;
        line.locked = lock;
        Replace(CString(selected->data), line);
    }
}

void DrawingBoard::DeleteSelected() {
    const StoredLine* selected = SelectedLine();
    if (selected == nullptr) {
        return;
    }
    if (selected->line.locked) {
        emit notice(Tr("IDS_TERMINAL-CHART_LINE_LOCKED"));
        return;
    }
    m_move.reset();
    RemoveTrendLines(m_chart, {selected->data});
}

void DrawingBoard::DeleteAll() {
    std::vector<CString> agreed;
    for (const StoredLine& stored : m_lines) {
        agreed.push_back(stored.data);
    }
    const BarsKey chart = m_chart;
    if (!agreed.empty() &&
        ui::CurrentPrompts().AskYesNo(
            &m_view, ui::PromptIcon::Question, Tr("IDS_TERMINAL-FRAME_TITLE"),
            Tr("IDS_TERMINAL-CHART_LINES_ASK_DELETE_ALL").arg(agreed.size())) == ui::Answer::Yes) {
        RemoveTrendLines(chart, agreed);
    }
}

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
        Replace(move.data, move.now);
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
