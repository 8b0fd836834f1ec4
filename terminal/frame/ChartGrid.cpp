#include "terminal/frame/ChartGrid.h"

#include "terminal/chart/ChartView.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr QSize kLeastWindow(110, 80);  // that a chart can be read in
constexpr int kFrame = 2;               // pixels around a chart
constexpr int kMargin = 3;              // between a chart and the edge of its window
constexpr double kStep = 0.05;          // of the grid, by the keys
constexpr double kSamePlace = 1e-9;     // places are sums of parts

int At(double place, int whole) {
    return static_cast<int>(std::lround(place * whole));
}

}  // namespace

ChartGrid::ChartGrid(const MarketData& markets, QWidget* parent)
    : QWidget(parent), m_links([this] { return InView(); }, markets) {
    setMouseTracking(true);
    connect(&m_links, &ChartLinks::notice, this, &ChartGrid::notice);
}

// ---- The charts ----

void ChartGrid::Add(ChartPage& chart) {
    chart.setParent(this);
    chart.setMinimumSize(0, 0);  // the grid sees to it
    chart.installEventFilter(this);
    chart.hide();
    m_charts.push_back(&chart);
    if (auto* view = qobject_cast<ChartView*>(&chart)) {
        m_links.Add(*view);
    }
    Arrange();
}

int ChartGrid::WindowCount() const {
    return std::min(Layout().WindowCount(), static_cast<int>(m_charts.size()));
}

std::size_t ChartGrid::ChartOf(std::size_t window) const {
    const bool isGuest = m_state.guest >= 0 && static_cast<int>(window) == WindowCount() - 1;
    return isGuest ? static_cast<std::size_t>(m_state.guest) : window;
}

std::vector<ChartPage*> ChartGrid::InView() const {
    std::vector<ChartPage*> charts;
    for (std::size_t window = 0; window < static_cast<std::size_t>(WindowCount()); ++window) {
        charts.push_back(m_charts[ChartOf(window)]);
    }
    return charts;
}

bool ChartGrid::IsInView(const ChartPage& chart) const {
    return std::ranges::count(InView(), &chart) > 0;
}

void ChartGrid::Activate(const ChartPage& chart) {
    const auto active = std::ranges::find(m_charts, &chart) - m_charts.begin();
    if (active != m_state.active && IsInView(chart)) {
        m_state.active = static_cast<int>(active);
        update();
        emit activeChanged();
    }
}

void ChartGrid::FocusNext(int step) {
    const std::vector<ChartPage*> charts = InView();
    const auto count = static_cast<std::ptrdiff_t>(charts.size());
    const auto at = std::ranges::find(charts, &Active()) - charts.begin();
    ChartPage& next = *charts[static_cast<std::size_t>((at + step + count) % count)];
    Activate(next);
    next.setFocus(Qt::ShortcutFocusReason);
}

bool ChartGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        OnFocus(*static_cast<ChartPage*>(watched), static_cast<QFocusEvent*>(event)->reason());
    } else if (event->type() == QEvent::Enter) {
        unsetCursor();  // the charts would have it too
    }
    return QWidget::eventFilter(watched, event);
}

/// A tab that comes to the front gives the focus to any chart of its own.
void ChartGrid::OnFocus(const ChartPage& chart, Qt::FocusReason reason) {
    if (reason == Qt::OtherFocusReason) {
        Active().setFocus();
    } else {
        Activate(chart);
    }
}

// ---- The layout ----

void ChartGrid::SetFormat(int format) {
    if (format == m_state.format) {
        return;  // a guest stays where it is
    }
    m_state.format = format;
    m_state.guest = m_state.active >= WindowCount() ? m_state.active : -1;
    Arrange();
    m_links.Follow(Active());
}

void ChartGrid::SetLinks(const ChartLinkSwitches& switches) {
    m_state.links = switches;
    m_links.SetSwitches(switches);
    m_links.Follow(Active());
}

void ChartGrid::SetState(const GridState& state) {
    const int last = static_cast<int>(m_charts.size()) - 1;
    m_state = state;
    m_state.format = layout::LayoutOf(state.format).format;
    m_state.active = std::clamp(state.active, 0, last);
    if (m_state.guest < WindowCount() || m_state.guest > last) {
        m_state.guest = -1;
    }
    if (!IsInView(Active())) {
        m_state.guest = m_state.active;
    }
    std::erase_if(m_state.dividers, [](const auto& each) {
        return !layout::Fit(layout::LayoutOf(each.first), each.second);
    });
    Arrange();
    SetLinks(m_state.links);
}

layout::Places ChartGrid::Places() const {
    const auto own = m_state.dividers.find(m_state.format);
    return own == m_state.dividers.end() ? layout::Places() : own->second;
}

/// Each window with the lines around it.
std::vector<QRect> ChartGrid::Cells() const {
    std::vector<QRect> cells;
    for (const layout::Area& area : layout::Windows(Layout(), Places())) {
        cells.emplace_back(QPoint(At(area.left, width()), At(area.top, height())),
                           QPoint(At(area.left + area.width, width()) - 1,
                                  At(area.top + area.height, height()) - 1));
    }
    return cells;
}

void ChartGrid::Arrange() {
    const std::vector<ChartPage*> shown = InView();
    const std::vector<QRect> cells = Cells();
    const int margin = Layout().WindowCount() > 1 ? kMargin : 0;
    for (std::size_t window = 0; window < shown.size(); ++window) {
        shown[window]->setGeometry(cells[window].adjusted(margin, margin, -margin, -margin));
        shown[window]->show();
    }
    for (ChartPage* chart : m_charts) {
        if (std::ranges::count(shown, chart) == 0) {
            chart->hide();
        }
    }
    updateGeometry();
    update();
}

QSize ChartGrid::minimumSizeHint() const {
    const layout::Layout& layout = Layout();
    const int along = std::ranges::max(layout.windows);
    const int bands = static_cast<int>(
        std::ranges::count_if(layout.windows, [](int windows) { return windows > 0; }));
    const QSize windows = layout.isRows ? QSize(along, bands) : QSize(bands, along);
    return {windows.width() * kLeastWindow.width(), windows.height() * kLeastWindow.height()};
}

void ChartGrid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

void ChartGrid::paintEvent(QPaintEvent*) {
    if (Layout().WindowCount() == 1) {
        return;
    }
    QPainter painter(this);
    for (const ChartPage* chart : InView()) {
        const QRect frame = chart->geometry().adjusted(-kFrame, -kFrame, kFrame, kFrame);
        if (chart == &Active()) {
            painter.fillRect(frame, palette().color(QPalette::Highlight));
        } else {
            painter.fillRect(chart->geometry().adjusted(-1, -1, 1, 1),
                             palette().color(QPalette::Mid));
        }
    }
}

// ---- The dividers ----

std::optional<std::size_t> ChartGrid::DividerAt(const QPointF& position) const {
    const std::vector<layout::Divider> dividers = layout::Dividers(Layout(), Places());
    for (std::size_t i = 0; i < dividers.size(); ++i) {
        const layout::Divider& divider = dividers[i];
        const bool upright = divider.isUpright;
        const double at = divider.place * (upright ? width() : height());
        const double along = upright ? position.y() / height() : position.x() / width();
        const double off = (upright ? position.x() : position.y()) - at;
        if (std::abs(off) <= kMargin && along >= divider.from && along <= divider.to) {
            return i;
        }
    }
    return std::nullopt;
}

/// As far as the windows beside it leave room.
bool ChartGrid::MoveDivider(std::size_t index, double to) {
    const layout::Divider divider = layout::Dividers(Layout(), Places())[index];
    const double least = divider.isUpright ? 1.0 * kLeastWindow.width() / width()
                                           : 1.0 * kLeastWindow.height() / height();
    if (divider.most - divider.least < 2 * least) {
        return false;
    }
    const double place = std::clamp(to, divider.least + least, divider.most - least);
    PlaceDivider(index, place);
    return std::abs(place - divider.place) > kSamePlace;
}

void ChartGrid::PlaceDivider(std::size_t index, double place) {
    layout::Places places;
    for (const layout::Divider& divider : layout::Dividers(Layout(), Places())) {
        places.push_back(divider.place);
    }
    places[index] = place;
    if (layout::Fit(Layout(), places)) {
        m_state.dividers[m_state.format] = places;
        Arrange();
    }
}

std::optional<std::size_t> ChartGrid::DividerBeside(const layout::Area& window, bool isUpright,
                                                    bool isBehind) const {
    const double start = isUpright ? window.left : window.top;
    const double edge = start + (!isBehind ? 0 : isUpright ? window.width : window.height);
    const double middle =
        isUpright ? window.top + window.height / 2 : window.left + window.width / 2;
    const std::vector<layout::Divider> dividers = layout::Dividers(Layout(), Places());
    const auto found = std::ranges::find_if(dividers, [&](const layout::Divider& divider) {
        return divider.isUpright == isUpright && std::abs(divider.place - edge) < kSamePlace &&
               divider.from < middle && middle < divider.to;
    });
    return found == dividers.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - dividers.begin()));
}

/// The line behind the window moves, or the one before it where there is none or no room.
void ChartGrid::ResizeActive(Qt::Orientation orientation, int steps) {
    const std::vector<ChartPage*> charts = InView();
    const auto at = std::ranges::find(charts, &Active()) - charts.begin();
    const layout::Area window = layout::Windows(Layout(), Places())[static_cast<std::size_t>(at)];
    for (const bool isBehind : {true, false}) {
        const auto index = DividerBeside(window, orientation == Qt::Horizontal, isBehind);
        const double by = (isBehind ? kStep : -kStep) * steps;
        if (index && MoveDivider(*index, layout::Dividers(Layout(), Places())[*index].place + by)) {
            return;
        }
    }
}

void ChartGrid::ResetDividers() {
    m_state.dividers.erase(m_state.format);
    Arrange();
}

void ChartGrid::ShowDividerCursor(const QPointF& position) {
    const auto at = DividerAt(position);
    if (!at) {
        unsetCursor();
    } else {
        const bool upright = layout::Dividers(Layout(), Places())[*at].isUpright;
        setCursor(upright ? Qt::SplitHCursor : Qt::SplitVCursor);
    }
}

void ChartGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_dragged = DividerAt(event->position());
    }
}

void ChartGrid::mouseMoveEvent(QMouseEvent* event) {
    if (m_dragged) {
        const bool upright = layout::Dividers(Layout(), Places())[*m_dragged].isUpright;
        const QPointF& at = event->position();
        MoveDivider(*m_dragged, upright ? at.x() / width() : at.y() / height());
    } else {
        ShowDividerCursor(event->position());
    }
}

void ChartGrid::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_dragged.reset();
        ShowDividerCursor(event->position());
    }
}

void ChartGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto divider = DividerAt(event->position());
    if (divider && event->button() == Qt::LeftButton) {
        MoveDivider(*divider, layout::Dividers(Layout())[*divider].place);
    }
}

}  // namespace ta::terminal
