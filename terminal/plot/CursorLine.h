#pragma once

#include "terminal/plot/PlotCursor.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/plot/PlotTheme.h"

#include <qcustomplot.h>
#include <QFont>
#include <QString>

namespace ta::terminal {

class PlotModel;

/// The pixel of the level cursor line for a mouse at `y`: that of the nearest value which the model
/// lets it lock on, or `y` itself; the intelligent lock reaches 8 pixels far. May lie outside the
/// pane, as the value may. `prices`: the pane shows prices.
double LockCursor(const PlotModel& model, const PlotMapping& mapping, bool prices,
                  const PlotCursor& cursor);

/// What the cursor line shows, in pixels and texts.
struct CursorPicture {
    bool there = false;
    bool cross = true;   ///< with a horizontal line
    bool small = false;  ///< the old style: a short cross
    bool tagLeft = false;
    bool tagRight = true;
    PlotCursor cursor;
    PlotMapping mapping;
    QString time;
    QString value;
};

/// The cursor line over all panes, with tags on the axes.
class CursorLine : public QCPLayerable {
public:
    CursorLine(QCustomPlot& plot, const QString& layer);

    void SetStyle(const PlotTheme& theme, const QFont& font);
    void Show(CursorPicture picture) { m_picture = std::move(picture); }

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

private:
    void DrawSmallCross(QPainter& painter, double x) const;
    void DrawLines(QPainter& painter, double x) const;
    void DrawValueTags(QPainter& painter) const;
    void DrawTag(QPainter& painter, const QString& text, const QPointF& middle,
                 Qt::Alignment side) const;

    PlotTheme m_theme;
    QFont m_font;
    CursorPicture m_picture;
};

}  // namespace ta::terminal
