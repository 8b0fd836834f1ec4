#pragma once

#include "terminal/plot/AxisTag.h"

#include <qcustomplot.h>
#include <QFont>

#include <vector>

namespace ta::terminal {

/// The latest price on the axes of the pane of the prices. The plot owns it through its layer until
/// it is deleted.
class LastPriceTag : public QCPLayerable {
public:
    /// Where a tag stands: the middle of its edge on a side.
    struct Place {
        QPointF middle;
        Qt::Alignment side;
    };

    LastPriceTag(QCustomPlot& plot, const QString& layer);

    /// Without places there is none.
    void Show(AxisTag tag, std::vector<Place> places);
    void SetFont(const QFont& font) { m_font = font; }
    const std::vector<Place>& Places() const { return m_places; }

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

private:
    QFont m_font;
    AxisTag m_tag;
    std::vector<Place> m_places;
};

}  // namespace ta::terminal
