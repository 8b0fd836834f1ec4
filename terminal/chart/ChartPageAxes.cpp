#include "terminal/chart/ChartPage.h"
#include "terminal/chart/ChartScene.h"

#include <algorithm>

// The axes of a chart window.

namespace ta::terminal {

CString ChartPage::HistoryKey() const {
    const BarsKey& shown = Shown();
    return std::to_string(shown.market) + '/' + shown.symbol + '/' + std::to_string(shown.period) +
           '/' + std::to_string(shown.count);
}

void ChartPage::TakeAxes() {
    m_scene->Range().SetRoomAfter(m_axes.EdgePercent() / 100.0);
    if (std::exchange(m_axisWidth, m_axes.WidthPercent()) != m_axes.WidthPercent()) {
        Rebuild();
    } else {
        Draw();
    }
}

void ChartPage::TakeRange(const AxisPlace& place) {
    if (isVisible()) {
        m_scene->RangeChanged(place.pane);
    } else {
        Draw();
    }
}

void ChartPage::MakeAxisAutomatic(const AxisPlace& place) {
    if (const auto axis = AxisAt(place); axis && axis->byHand) {
        m_axes.MakeAutomatic(axis->index);
        TakeRange(place);
    }
}

void ChartPage::MakeAxesAutomatic() {
    m_axes.MakeAllAutomatic();
    Draw();
}

std::optional<AxisState> ChartPage::AxisAt(const AxisPlace& place) const {
    return m_scene->StateOf(place);
}

AxisPlace ChartPage::AxisInHand() const {
    return {m_cursor.pane >= 0 ? m_cursor.pane : std::max(PricePane(), 0), 0};
}

}  // namespace ta::terminal
