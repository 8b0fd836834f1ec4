#pragma once

#include "terminal/lines/TrendLine.h"

#include <optional>

namespace ta::terminal {

/// A line in the making: the kind that was chosen and the anchors that stand so far.
class DrawingTool {
public:
    bool IsActive() const { return m_line.has_value(); }
    /// Nothing when no tool is chosen.
    std::optional<TrendLineKind> Kind() const;
    /// Begins a line of this kind; one in the making is dropped.
    void Begin(TrendLineKind kind, const LinePen& pen);
    void Cancel();

    int AnchorsPlaced() const;
    /// Sets the next anchor. The line when it was the last one, and the tool is done. An anchor on
    /// the place of the one before it is ignored.
    std::optional<TrendLine> Place(const LineAnchor& anchor);
    /// The line as it would be with the next anchor at `mouse`. Nothing while it is no line yet:
    /// before the second of several anchors.
    std::optional<TrendLine> Preview(const LineAnchor& mouse) const;

private:
    std::optional<TrendLine> m_line;
};

}  // namespace ta::terminal
