#pragma once

#include "terminal/plot/LegendEntry.h"

#include <qcustomplot.h>
#include <QPointF>
#include <QRectF>

#include <vector>

namespace ta::terminal {

/// The legend in the strip over a pane, in as many rows as its width asks for. Places depend on the
/// widest texts alone: they stay where they are while the values change. The plot owns it through
/// its layer until it is deleted.
class PaneLegend : public QCPLayerable {
public:
    PaneLegend(QCustomPlot& plot, const QString& layer);

    void SetEntries(std::vector<LegendEntry> entries) { m_entries = std::move(entries); }
    const std::vector<LegendEntry>& Entries() const { return m_entries; }
    void SetFont(const QFont& font) { m_font = font; }
    /// Places the texts from a left upper corner. An entry that a row has room for stays in one,
    /// where there are rows enough. Rows that `height` has no room for are left out,
    /// but for the first.
    void Arrange(const QPointF& corner, double width, double height);
    /// Of the arranged rows, pixels; 0 when hidden or empty.
    double Height() const;
    /// The study of the entry at a pixel; -1 beside the entries.
    int StudyAt(const QPointF& position) const;

protected:
    void applyDefaultAntialiasingHint(QCPPainter*) const override {}
    void draw(QCPPainter* painter) override;

private:
    struct PlacedSpan {
        QRectF box;
        int study = 0;
        LegendSpan span;
    };

    std::vector<LegendEntry> m_entries;
    std::vector<PlacedSpan> m_placed;
    QFont m_font;
    double m_height = 0;
};

}  // namespace ta::terminal
