#include "terminal/chart/ChartPage.h"

#include "terminal/chart/ChartScene.h"
#include "terminal/lang/Language.h"
#include "terminal/plot/PlotModel.h"

#include <qcustomplot.h>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <cmath>
#include <functional>

namespace ta::terminal {
namespace {

constexpr double kZoomStep = 1.25;
constexpr int kMonths = 2;  // the longest period, as BarsKey has it

/// A plot that is drawn when it is to be painted, not at each new size.
class LatePlot : public QCustomPlot {
public:
    explicit LatePlot(QWidget* view) : QCustomPlot(view) {
        // The replot that the widget has asked for would come once more after that.
        QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    }

    std::function<void()> draw;

protected:
    void resizeEvent(QResizeEvent*) override {}
    void paintEvent(QPaintEvent* event) override {
        draw();
        QCustomPlot::paintEvent(event);
    }
};

}  // namespace

ChartPage::ChartPage(std::shared_ptr<const PlotModel> model, QWidget* parent)
    : QWidget(parent),
      m_model(std::move(model)),
      m_plot(new LatePlot(this)),
      m_message(new QLabel(this)),
      m_scene(std::make_unique<ChartScene>(*m_plot, *m_model, m_axes)) {
    static_cast<LatePlot*>(m_plot)->draw = [this] { m_scene->Update(); };
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(160, 120);
    m_plot->setFocusPolicy(Qt::NoFocus);
    m_plot->setMouseTracking(true);
    m_plot->installEventFilter(this);
    m_message->hide();
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setWordWrap(true);
    m_message->setMargin(24);
    m_message->setAttribute(Qt::WA_TransparentForMouseEvents);
}

ChartPage::~ChartPage() {
    m_plot->removeEventFilter(this);
}

// ---- What is shown ----

bool ChartPage::IsCursorInView() const {
    const auto [first, last] = VisibleBars();
    return m_cursor.IsThere() && m_cursor.bar >= first && m_cursor.bar <= last;
}

std::optional<ChartPage::DatePlace> ChartPage::PlaceToKeep() const {
    const PlotRange& range = m_scene->Range();
    const bool withCursor = IsCursorInView();
    if (m_keptDate && m_keptDate->lower == range.Lower() &&
        (!withCursor || m_cursor.bar == BarOf(m_keptDate->time))) {
        return m_keptDate;
    }
    const auto [first, last] = VisibleBars();
    if (first < 0 || (last == BarCount() - 1 && !withCursor)) {
        return std::nullopt;
    }
    const int bar = withCursor ? m_cursor.bar : first + (last - first) / 2;
    return DatePlace{Model().Bars()[static_cast<std::size_t>(bar)].time,
                     withCursor ? (bar - range.Lower()) / range.Width() : 0.5, 0};
}

void ChartPage::ShowPeriod(int period, int count) {
    const auto date = PlaceToKeep();
    const bool withCursor = IsCursorInView();
    SwitchPeriod(period, count);
    m_keptDate = date;
    if (date) {
        ScrollToDate(*date, withCursor);
        m_keptDate->lower = m_scene->Range().Lower();
    }
}

/// The bar that a time belongs to: bars carry the time of their end, those of a day and longer the
/// day alone. The last one for a later time; -1 without bars.
int ChartPage::BarOf(double time) const {
    const BarSeries& bars = Model().Bars();
    const double wanted = Period() <= kMonths ? std::floor(time) : time;
    const auto bar = std::ranges::lower_bound(bars, wanted, {}, &Bar::time) - bars.begin();
    return static_cast<int>(std::min<std::ptrdiff_t>(bar, BarCount() - 1));
}

void ChartPage::ScrollToDate(const DatePlace& date, bool withCursor) {
    const BarSeries& bars = Model().Bars();
    PlotRange& range = m_scene->Range();
    const int bar = BarOf(date.time);
    range.MoveTo(bar - date.place * range.Width());
    Draw();
    const bool isThere = bar >= 0 && date.time >= std::floor(bars.front().time) &&
                         date.time < std::floor(bars.back().time) + 1;
    if (isThere && withCursor) {
        SetCursorBar(bar);
    }
}

int ChartPage::PaneCount() const {
    return static_cast<int>(Model().Panes().size());
}

int ChartPage::BarCount() const {
    return Model().BarCount();
}

void ChartPage::SetRisingRed(bool risingRed) {
    m_risingRed = risingRed;
    Rebuild();
}

void ChartPage::TakeBars() {
    m_axes.ShowHistory(HistoryKey());
    m_scene->Range().SetBarCount(BarCount());
    m_scene->Range().ShowLatest();
    m_cursor = {};
    m_lastCursorBar = -1;
    m_keptDate.reset();
}

// ---- Drawing ----

void ChartPage::Rebuild() {
    const PlotTheme theme = PlotTheme::FromPalette(palette(), m_risingRed);
    m_scene->Rebuild(theme, font());
    OnStyle(theme);
    m_cursor.pane = std::min(m_cursor.pane, PaneCount() - 1);
    if (isVisible()) {
        ShowMessage();
    }
    UpdateNames();
    Draw();
}

void ChartPage::Draw() {
    m_scene->Change(m_cursor);
    if (isVisible()) {
        m_scene->Update(QCustomPlot::rpRefreshHint);
    }
    if (m_scene->LegendBar(m_cursor) != m_toldBar) {
        TellBar();
    }
}

void ChartPage::DrawCursor() {
    m_lastCursorBar = m_cursor.IsThere() ? m_cursor.bar : m_lastCursorBar;
    m_scene->DrawCursor(m_cursor);
    TellBar();
}

void ChartPage::TellBar() {
    m_toldBar = m_scene->LegendBar(m_cursor);
    const QString text = CursorText();
    setAccessibleDescription(text);
    emit cursorMoved(text);
}

void ChartPage::ShowMessage() {
    const QString text = Message();
    QFont larger = font();
    larger.setPointSizeF(QFontInfo(larger).pointSizeF() * 1.2);
    m_message->setFont(larger);
    m_message->setForegroundRole(QPalette::Text);
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

void ChartPage::UpdateNames() {
    setAccessibleName(SpokenName());
    setAccessibleDescription(BarCount() > 0 ? CursorText() : Message());
}

void ChartPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    const auto type = event->type();
    if (m_scene && (type == QEvent::PaletteChange || type == QEvent::FontChange)) {
        Rebuild();
    }
}

void ChartPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_plot->setGeometry(rect());
    m_plot->setViewport(rect());
    m_message->setGeometry(rect());
    m_scene->LayoutChanged();
}

void ChartPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowMessage();
}

// ---- Zoom and pan ----

void ChartPage::Zoom(double factor) {
    PlotRange& range = m_scene->Range();
    const bool cursorInView =
        m_cursor.IsThere() && m_cursor.bar > range.Lower() && m_cursor.bar < range.Upper();
    const double end = std::min(range.Upper(), BarCount() - 0.5);
    range.Zoom(factor, cursorInView ? m_cursor.bar : end);
    Draw();
}

void ChartPage::ZoomIn() {
    Zoom(1 / kZoomStep);
}

void ChartPage::ZoomOut() {
    Zoom(kZoomStep);
}

void ChartPage::ShowAll() {
    m_keptDate.reset();
    m_scene->Range().ShowAll();
    Draw();
}

void ChartPage::ShowLatest() {
    m_keptDate.reset();
    m_scene->Range().ShowLatest();
    Draw();
}

void ChartPage::ScrollBars(int bars) {
    m_scene->Range().Scroll(bars);
    Draw();
}

std::pair<int, int> ChartPage::VisibleBars() const {
    return m_scene->Range().Bars();
}

// ---- The cursor line ----

int ChartPage::PricePane() const {
    m_scene->Mapping();  // the panes are there from the first drawing on
    int pane = 0;
    while (pane < PaneCount() && !m_scene->PaneShowsPrices(pane)) {
        ++pane;
    }
    return pane < PaneCount() ? pane : -1;
}

void ChartPage::SetCursorBar(int index) {
    m_cursor = {};
    m_lastCursorBar = -1;
    if (index >= 0 && BarCount() > 0) {
        m_cursor.bar = std::min(index, BarCount() - 1);
        const double lower = m_scene->Range().Lower();
        m_scene->Range().ScrollTo(m_cursor.bar);
        if (m_scene->Range().Lower() != lower) {
            Draw();
        }
        const int pane = PricePane();
        const double value = Model().CursorValue(m_cursor.bar);
        if (pane >= 0 && std::isfinite(value)) {
            m_cursor.pane = pane;
            m_cursor.y = Mapping().panes[static_cast<std::size_t>(pane)].YOf(value);
        }
    }
    DrawCursor();
}

QPointF ChartPage::PlacedPoint(const QPointF& point) const {
    const PlotMapping mapping = Mapping();
    const PlotCursor cursor{mapping.NearestBarAt(point.x()), mapping.PaneAt(point.y()), point.y()};
    return {point.x(), m_scene->LockedHeight(cursor)};
}

double ChartPage::LastCursorTime() const {
    return m_lastCursorBar < 0 ? std::nan("")
                               : Model().Bars()[static_cast<std::size_t>(m_lastCursorBar)].time;
}

void ChartPage::PutCursorBack(PlotCursor cursor, double time) {
    const auto found = std::ranges::find(Model().Bars(), time, &Bar::time);
    if (found == Model().Bars().end()) {
        return;
    }
    m_lastCursorBar = static_cast<int>(found - Model().Bars().begin());
    if (cursor.IsThere()) {
        m_cursor = cursor;
        m_cursor.bar = m_lastCursorBar;
        Draw();
        DrawCursor();
    }
}

QString ChartPage::CursorText() const {
    return Model().BarText(m_scene->LegendBar(m_cursor));
}

QStringList ChartPage::LegendTexts() const {
    QStringList texts;
    for (int pane = 0; pane < PaneCount(); ++pane) {
        QStringList studies;
        for (const LegendEntry& entry : m_scene->LegendOf(pane, m_cursor)) {
            studies << entry.Text();
        }
        texts << studies.join('\n');
    }
    return texts;
}

PlotMapping ChartPage::Mapping() const {
    return m_scene->Mapping();
}

}  // namespace ta::terminal
