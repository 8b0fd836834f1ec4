#include "terminal/plot/PaneLegend.h"

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr double kGap = 6;         // between the values of a study
constexpr double kEntryGap = 16;   // between studies
constexpr double kRowLeading = 2;  // between rows

/// Digits are equally wide: a text that is no longer than the widest one is not measured.
double WidthOf(const LegendSpan& span, const QFontMetricsF& metrics) {
    const double widest = span.widest.isEmpty() ? 0 : metrics.horizontalAdvance(span.widest);
    return span.text.size() <= span.widest.size()
               ? widest
               : std::max(widest, metrics.horizontalAdvance(span.text));
}

double WidthOf(const LegendEntry& entry, const QFontMetricsF& metrics) {
    double width = -kGap;
    for (const LegendSpan& span : entry.spans) {
        width += WidthOf(span, metrics) + kGap;
    }
    return width;
}

}  // namespace

PaneLegend::PaneLegend(QCustomPlot& plot, const QString& layer) : QCPLayerable(&plot, layer) {}

void PaneLegend::Arrange(const QPointF& corner, double width, double height) {
    m_placed.clear();
    m_height = 0;
    const QFontMetricsF metrics(m_font);
    const double rowHeight = metrics.height() + kRowLeading;
    double x = 0;
    double y = 0;
    for (const LegendEntry& entry : m_entries) {
        const double entryWidth = WidthOf(entry, metrics);
        if (x > 0 && x + entryWidth > width && entryWidth <= width && y + 2 * rowHeight <= height) {
            x = 0;
            y += rowHeight;
        }
        for (const LegendSpan& span : entry.spans) {
            const double spanWidth = WidthOf(span, metrics);
            if (x > 0 && x + spanWidth > width) {
                x = 0;
                y += rowHeight;
                if (y + rowHeight > height) {
                    return;
                }
            }
            const QRectF box(corner + QPointF(x, y), QSizeF(spanWidth, metrics.height()));
            m_placed.push_back({box, entry.study, span});
            m_height = y + rowHeight;
            x += spanWidth + kGap;
        }
        x += kEntryGap - kGap;
    }
}

double PaneLegend::Height() const {
    return visible() ? m_height : 0;
}

int PaneLegend::StudyAt(const QPointF& position) const {
    if (!visible()) {
        return -1;
    }
    for (const PlacedSpan& placed : m_placed) {
        if (placed.box.adjusted(0, 0, kGap, 0).contains(position)) {
            return placed.study;
        }
    }
    return -1;
}

void PaneLegend::draw(QCPPainter* painter) {
    painter->setFont(m_font);
    for (const PlacedSpan& placed : m_placed) {
        painter->setPen(placed.span.colour);
        painter->drawText(placed.box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                          placed.span.text);
    }
}

}  // namespace ta::terminal
