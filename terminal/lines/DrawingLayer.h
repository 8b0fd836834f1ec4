#pragma once

#include "terminal/lines/TrendLineGeometry.h"
#include "terminal/plot/PlotTheme.h"

#include <qcustomplot.h>
#include <QFont>

#include <functional>
#include <optional>
#include <vector>

namespace ta::terminal {

/// A line on the chart and how it is shown.
struct DrawnLine {
    TrendLine line;
    bool selected = false;
};

/// The drawn lines over the pane of the prices. Paints on a plot layer of its own, so that a line
/// that follows the mouse leaves the rest of the chart as it is.
class DrawingLayer : public QCPLayerable {
public:
    /// `frame` gives the geometry at the time of painting. The plot owns the layer and this.
    DrawingLayer(QCustomPlot& plot, std::function<DrawingFrame()> frame);

    void SetStyle(const PlotTheme& theme, const QFont& font);
    void SetLines(std::vector<DrawnLine> lines) { m_lines = std::move(lines); }
    /// The line that follows the mouse; nothing: there is none.
    void SetPreview(std::optional<TrendLine> preview) { m_preview = std::move(preview); }

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

private:
    void DrawLine(QPainter& painter, const TrendLine& line, const DrawingFrame& frame,
                  bool selected) const;
    void DrawLabel(QPainter& painter, const TrendLinePicture::Label& label,
                   const DrawingFrame& frame, const QColor& colour) const;

    std::function<DrawingFrame()> m_frame;
    PlotTheme m_theme;
    QFont m_font;
    std::vector<DrawnLine> m_lines;
    std::optional<TrendLine> m_preview;
};

}  // namespace ta::terminal
