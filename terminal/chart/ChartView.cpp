#include "terminal/chart/ChartView.h"

#include "platform/Rounding.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/quotes/MarketData.h"

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

/// A plot that is drawn when it is to be painted, not at each new size.
class Plot : public QCustomPlot {
public:
    explicit Plot(QWidget* view) : QCustomPlot(view) {
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

ChartView::ChartView(MarketData& marketData, QWidget* parent)
    : QWidget(parent),
      m_data(marketData),
      m_plot(new Plot(this)),
      m_message(new QLabel(this)),
      m_model(std::make_unique<ChartModel>()),
      m_scene(std::make_unique<ChartScene>(*m_plot, *m_model)) {
    static_cast<Plot*>(m_plot)->draw = [this] { m_scene->Update(); };
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
    m_drawings =
        std::make_unique<DrawingBoard>(*this, *m_plot,
                                       DrawingBoard::Chart{[this] { return MakeDrawingFrame(); },
                                                           [this] { return CursorPoint(); }});
    if (Language* language = Language::Instance()) {
        connect(language, &Language::changed, this, &ChartView::Retranslate);
    }
    TakeGroup(Repository().GetSystemDefaultGroup());
    Repository().AddTechViewPtr(this);
    RedrawGroup();
}

ChartView::~ChartView() {
    Repository().RemoveTechViewPtr(this);
    m_plot->removeEventFilter(this);
}

// ---- What is shown ----

void ChartView::Show(const BarsKey& history) {
    m_shown = history;
    LoadHistory(false);
    emit symbolChanged();
}

void ChartView::Show(const BarsKey& history, const HistoryDepth& depth) {
    m_depths[{history.period, history.count}] = depth;
    Show(history);
}

void ChartView::ShowPeriod(int period, int count) {
    const BarSeries& before = m_model->Bars();
    const auto [first, last] = VisibleBars();
    const bool hasMiddle = first >= 0;
    const double middle =
        hasMiddle ? before[static_cast<std::size_t>(first + (last - first) / 2)].time : 0;
    Show({m_shown.market, m_shown.symbol, period, count});
    if (hasMiddle) {
        // The bars of a day and longer stand at its begin.
        ScrollToTime(period <= kMonthly ? std::floor(middle) : middle);
    }
}

void ChartView::ScrollToTime(double time) {
    const BarSeries& bars = m_model->Bars();
    const auto bar = std::ranges::lower_bound(bars, time, {}, &Bar::time) - bars.begin();
    m_scene->Range().MoveTo(static_cast<double>(bar) - m_scene->Range().Width() / 2);
    Draw();
}

HistoryDepth ChartView::Depth() const {
    const auto found = m_depths.find({m_shown.period, m_shown.count});
    return found == m_depths.end() ? HistoryDepth() : found->second;
}

void ChartView::SetGroup(const CString& name) {
    if (TakeGroup(name)) {
        RedrawGroup();
        emit groupChanged();
    }
}

void ChartView::SetRisingRed(bool risingRed) {
    m_risingRed = risingRed;
    Rebuild();
}

int ChartView::PaneCount() const {
    return static_cast<int>(m_model->Panes().size());
}

int ChartView::BarCount() const {
    return m_model->BarCount();
}

void ChartView::Reload() {
    const PlotRange before = m_scene->Range();
    LoadHistory(true);
    if (before.BarCount() == BarCount()) {
        m_scene->Range() = before;
        Draw();
    }
}

void ChartView::Retranslate() {
    if (BarCount() == 0) {
        LoadHistory(true);  // for the reason in the other language
        return;
    }
    m_model->SetBars(m_model->SharedBars(), MakeTitle());
    RedrawGroup();
}

std::shared_ptr<const BarSeries> ChartView::FindBars(bool evenWhenShared) {
    m_failure.clear();
    if (m_shown.symbol.empty()) {
        return nullptr;
    }
    const CTADataInterface* shared = Repository().GetTaDataInterface(m_groupName);
    const auto known = shared && !evenWhenShared ? shared->pGetBars(m_shown) : nullptr;
    const auto bars = known ? known : m_data.LoadBars(m_shown, &m_failure);
    if (bars && !MayShow(m_shown)) {
        m_failure = Tr("IDS_TERMINAL-CHART_SECONDS_NOT_ALLOWED");
        return nullptr;
    }
    return bars;
}

void ChartView::LoadHistory(bool evenWhenShared) {
    m_all = FindBars(evenWhenShared);
    const QString shortfall = m_all ? ShortfallText(*m_all, Depth()) : QString();
    auto bars = PartOf(m_all, Depth());
    if (bars && bars->empty() && !shortfall.isEmpty()) {
        m_failure = shortfall;
        bars = nullptr;
    }
    const bool failed = !m_shown.symbol.empty() && !bars;
    m_model->SetBars(std::move(bars), MakeTitle());
    m_scene->Range().SetBarCount(BarCount());
    m_scene->Range().ShowLatest();
    m_cursor = {};
    m_drawings->SetChart(m_shown);
    RedrawGroup();
    if (failed) {
        emit loadFailed(m_failure);
    } else if (!shortfall.isEmpty() || m_hasTold) {
        emit historyShort(shortfall);
    }
    m_hasTold = failed || !shortfall.isEmpty();
}

ChartTitle ChartView::MakeTitle() const {
    ChartTitle title;
    title.periodCode = m_shown.period;
    if (m_shown.symbol.empty()) {
        return title;
    }
    const Symbol* symbol = m_data.FindSymbol(m_shown.market, m_shown.symbol);
    title.symbol = ui::ToQString(symbol ? NameOf(*symbol) : m_shown.symbol);
    const CString period = Repository().PackTADataTypeString(m_shown.period, m_shown.count);
    title.period = Tr("IDS_TERMINAL-CHART_PERIOD").arg(ui::ToQString(period));
    title.priceDecimals = symbol ? DecimalsOfStep(symbol->priceStep) : 2;
    return title;
}

// ---- The group ----

bool ChartView::TakeGroup(const CString& name) {
    if (Repository().FindGroup(name) == 0) {
        return false;
    }
    m_groupName = name;
    m_groupUniNum = Repository().GetUniNumByGroupName(name);
    return true;
}

/// Shows the group under the name that it has now, or the default group in its place.
void ChartView::FollowGroup() {
    Repository().ReloadTASetting();
    const CString shown = m_groupName;
    const int uniNum = m_groupUniNum;
    if (!TakeGroup(Repository().GetGroupNameByUniNum(uniNum)) &&
        !TakeGroup(Repository().GetSystemDefaultGroup())) {
        m_groupName.clear();
        m_groupUniNum = -1;
    }
    RedrawGroup();
    if (m_groupUniNum != uniNum && uniNum >= 0) {
        emit groupVanished(ui::ToQString(m_groupName));
    }
    if (m_groupName != shown) {
        emit groupChanged();
    }
}

std::intptr_t ChartView::WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    if (message == kGroupChangeMessage) {
        const int index = Repository().GetGroupIndexByUniNum(m_groupUniNum);
        if (index < 0 || static_cast<std::uintptr_t>(index) == wParam) {
            FollowGroup();
        }
        return 1;
    }
    if (message == kTrendLineChangeMessage) {
        m_drawings->Reload();
        Draw();
        return 1;
    }
    return CView::WindowProc(message, wParam, lParam);
}

void ChartView::RedrawGroup() {
    Repository().ReloadTASetting();  // comes back here when it is due, and so not halfway
    m_model->LoadGroup(m_groupName);
    CTADataRepository* shared = Repository().GetTaDataRepository(m_groupName);
    if (shared && m_all && !m_all->empty()) {
        shared->vSetBars(m_shown, m_all);
    }
    Rebuild();
    emit dataChanged();
}

// ---- Drawing ----

void ChartView::Rebuild() {
    const PlotTheme theme = PlotTheme::FromPalette(palette(), m_risingRed);
    m_scene->Rebuild(theme, font());
    m_drawings->SetStyle(theme, font());
    m_cursor.pane = std::min(m_cursor.pane, PaneCount() - 1);
    if (isVisible()) {
        ShowMessage();
    }
    UpdateNames();
    Draw();
}

void ChartView::Draw() {
    m_scene->Change(m_cursor);
    if (isVisible()) {
        m_scene->Update(QCustomPlot::rpRefreshHint);
    }
}

void ChartView::DrawCursor() {
    m_scene->DrawCursor(m_cursor);
    const QString text = CursorText();
    setAccessibleDescription(text);
    emit cursorMoved(text);
}

/// What stands in the place of a chart; empty when there is one.
QString ChartView::Message() const {
    if (m_shown.symbol.empty()) {
        return Tr("IDS_TERMINAL-CHART_NO_SYMBOL");
    }
    if (BarCount() > 0) {
        return {};
    }
    return Tr("IDS_TERMINAL-CHART_NO_DATA") + (m_failure.isEmpty() ? QString() : '\n' + m_failure);
}

void ChartView::ShowMessage() {
    const QString text = Message();
    QFont larger = font();
    larger.setPointSizeF(QFontInfo(larger).pointSizeF() * 1.2);
    m_message->setFont(larger);
    m_message->setForegroundRole(QPalette::Text);
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

void ChartView::UpdateNames() {
    const ChartTitle& title = m_model->Title();
    setAccessibleName(title.symbol.isEmpty()
                          ? Tr("IDS_TERMINAL-CHART_ACCESSIBLE_EMPTY")
                          : Tr("IDS_TERMINAL-CHART_ACCESSIBLE").arg(title.symbol, title.period));
    setAccessibleDescription(BarCount() > 0 ? CursorText() : Message());
}

void ChartView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    const auto type = event->type();
    if (m_scene && (type == QEvent::PaletteChange || type == QEvent::FontChange)) {
        Rebuild();
    }
}

void ChartView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_plot->setGeometry(rect());
    m_plot->setViewport(rect());
    m_message->setGeometry(rect());
    m_scene->LayoutChanged();
}

void ChartView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ShowMessage();
}

// ---- Zoom and pan ----

void ChartView::Zoom(double factor) {
    PlotRange& range = m_scene->Range();
    const bool cursorInView =
        m_cursor.IsThere() && m_cursor.bar > range.Lower() && m_cursor.bar < range.Upper();
    const double end = std::min(range.Upper(), BarCount() - 0.5);
    range.Zoom(factor, cursorInView ? m_cursor.bar : end);
    Draw();
}

void ChartView::ZoomIn() {
    Zoom(1 / kZoomStep);
}

void ChartView::ZoomOut() {
    Zoom(kZoomStep);
}

void ChartView::ShowAll() {
    m_scene->Range().ShowAll();
    Draw();
}

void ChartView::ShowLatest() {
    m_scene->Range().ShowLatest();
    Draw();
}

void ChartView::ScrollBars(int bars) {
    m_scene->Range().Scroll(bars);
    Draw();
}

std::pair<int, int> ChartView::VisibleBars() const {
    return m_scene->Range().Bars();
}

// ---- Trend lines ----

DrawingFrame ChartView::MakeDrawingFrame() const {
    DrawingFrame frame{Mapping(), -1, m_model->Title().priceDecimals};
    for (int pane = static_cast<int>(frame.mapping.panes.size()) - 1; pane >= 0; --pane) {
        if (m_scene->PaneShowsPrices(pane)) {
            frame.pane = pane;
        }
    }
    return frame;
}

std::optional<QPointF> ChartView::CursorPoint() const {
    if (!m_cursor.IsThere() || m_cursor.pane != MakeDrawingFrame().pane) {
        return std::nullopt;
    }
    return QPointF(Mapping().XOf(m_cursor.bar), m_cursor.y);
}

// ---- The cursor line ----

void ChartView::SetCursorBar(int index) {
    m_cursor = {};
    if (index >= 0 && BarCount() > 0) {
        m_cursor.bar = std::min(index, BarCount() - 1);
        m_scene->Range().ScrollTo(m_cursor.bar);
        Draw();
        const DrawingFrame frame = MakeDrawingFrame();
        if (frame.pane >= 0) {
            const auto& pane = frame.mapping.panes[static_cast<std::size_t>(frame.pane)];
            m_cursor.pane = frame.pane;
            m_cursor.y = pane.YOf(m_model->Bars()[static_cast<std::size_t>(m_cursor.bar)].close);
        }
    }
    DrawCursor();
}

QString ChartView::CursorText() const {
    return BarText(*m_model, m_scene->LegendBar(m_cursor));
}

QStringList ChartView::LegendTexts() const {
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

PlotMapping ChartView::Mapping() const {
    return m_scene->Mapping();
}

}  // namespace ta::terminal
