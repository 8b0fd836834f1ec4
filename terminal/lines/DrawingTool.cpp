#include "terminal/lines/DrawingTool.h"

#include <utility>

namespace ta::terminal {

std::optional<TrendLineKind> DrawingTool::Kind() const {
    return m_line ? std::optional(m_line->kind) : std::nullopt;
}

void DrawingTool::Begin(TrendLineKind kind, const LinePen& pen) {
    m_line = TrendLine{kind, pen, false, {}};
}

void DrawingTool::Cancel() {
    m_line.reset();
}

int DrawingTool::AnchorsPlaced() const {
    return m_line ? static_cast<int>(m_line->anchors.size()) : 0;
}

std::optional<TrendLine> DrawingTool::Place(const LineAnchor& anchor) {
    if (!m_line || (!m_line->anchors.empty() && m_line->anchors.back() == anchor)) {
        return std::nullopt;
    }
    m_line->anchors.push_back(anchor);
    if (AnchorsPlaced() < InfoOf(m_line->kind).anchorCount) {
        return std::nullopt;
    }
    return std::exchange(m_line, std::nullopt);
}

std::optional<TrendLine> DrawingTool::Preview(const LineAnchor& mouse) const {
    if (!m_line) {
        return std::nullopt;
    }
    TrendLine line = *m_line;
    line.anchors.push_back(mouse);
    const auto count = static_cast<std::size_t>(InfoOf(line.kind).anchorCount);
    if (line.anchors.size() == 1 && count > 1) {
        return std::nullopt;
    }
    // The points that are missing lie on the mouse: a parallel on its first line.
    line.anchors.resize(count, mouse);
    return line;
}

}  // namespace ta::terminal
