#pragma once

#include <qcustomplot.h>
#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

namespace ta::terminal {

class ChartModel;
struct PlotTheme;

/// A piece of a legend in one colour.
struct LegendSpan {
    QString text;
    QColor colour;
};

/// What a legend says of one study: its name and values.
struct LegendEntry {
    int study = 0;  ///< counted from 1 in the pane; 0: the symbol
    std::vector<LegendSpan> spans;

    QString Text() const;
};

/// The legend of a pane for one bar.
std::vector<LegendEntry> MakeLegend(const ChartModel& model, int pane, int bar,
                                    const PlotTheme& theme);

/// Date and prices of a bar in one text; empty for an index outside the bars.
QString BarText(const ChartModel& model, int bar);

/// The legend at the top of a pane, in as many rows as its width asks for. The plot owns it through
/// its layer until it is deleted.
class PaneLegend : public QCPLayerable {
public:
    PaneLegend(QCustomPlot& plot, const QString& layer);

    void SetEntries(std::vector<LegendEntry> entries) { m_entries = std::move(entries); }
    const std::vector<LegendEntry>& Entries() const { return m_entries; }
    void SetFont(const QFont& font) { m_font = font; }
    /// Places the texts from a left upper corner. Rows that `height` has no room for are left out,
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
