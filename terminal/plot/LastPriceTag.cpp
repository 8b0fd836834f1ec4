#include "terminal/plot/LastPriceTag.h"

#include <utility>

namespace ta::terminal {

LastPriceTag::LastPriceTag(QCustomPlot& plot, const QString& layer) : QCPLayerable(&plot, layer) {}

void LastPriceTag::Show(AxisTag tag, std::vector<Place> places) {
    m_tag = std::move(tag);
    m_places = std::move(places);
}

void LastPriceTag::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(false);
}

void LastPriceTag::draw(QCPPainter* painter) {
    for (const Place& place : m_places) {
        DrawAxisTag(*painter, m_font, m_tag, place.middle, place.side, parentPlot()->viewport());
    }
}

}  // namespace ta::terminal
