#include "terminal/chart/ChartView.h"

#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/TaSettingHandle.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/quotes/MarketData.h"
#include "terminal/quotes/TerminalQuotes.h"

#include <qcustomplot.h>
#include <QEvent>
#include <QLabel>

namespace ta::terminal {
namespace {

constexpr double kZoomStep = 1.25;

CTaSettingHandle& Settings() {
    return CTaSettingHandle::GetInstance();
}

}  // namespace

ChartView::ChartView(MarketData& marketData, QWidget* parent)
    : QWidget(parent),
      m_data(marketData),
      m_plot(new QCustomPlot(this)),
      m_message(new QLabel(this)),
      m_model(std::make_unique<ChartModel>()),
      m_scene(std::make_unique<ChartScene>(*m_plot, *m_model)) {
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(160, 120);
    m_plot->setFocusPolicy(Qt::NoFocus);
    m_plot->setMouseTracking(true);
    m_plot->installEventFilter(this);
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
    TakeGroup(Settings().GetSystemDefaultGroup());
    Settings().AddTechViewPtr(this);
    RedrawGroup();
}

ChartView::~ChartView() {
    Settings().RemoveTechViewPtr(this);
    m_plot->removeEventFilter(this);
}

// ---- What is shown ----

void ChartView::SetSymbol(std::uint8_t market, const CString& symbol) {
    m_market = market;
    m_symbol = symbol;
    LoadHistory(false);
    emit symbolChanged();
}

void ChartView::SetPeriod(int period, int count) {
    m_period = period;
    m_count = count;
    LoadHistory(false);
    emit symbolChanged();
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

void ChartView::LoadHistory(bool evenWhenShared) {
    const BarsKey key{m_market, m_symbol, m_period, m_count};
    std::shared_ptr<const BarSeries> bars;
    m_failure.clear();
    if (!m_symbol.empty()) {
        const CTADataInterface* shared = Settings().GetTaDataInterface(m_groupName);
        if (shared && !evenWhenShared) {
            bars = shared->pGetBars(key);
        }
        if (!bars) {
            bars = m_data.LoadBars(key, &m_failure);
        }
    }
    const bool failed = !m_symbol.empty() && !bars;
    m_model->SetBars(std::move(bars), MakeTitle());
    m_scene->Range().SetBarCount(BarCount());
    m_scene->Range().ShowLatest();
    m_cursor = {};
    m_drawings->SetChart(key);
    RedrawGroup();
    if (failed) {
        emit loadFailed(m_failure);
    }
}

ChartTitle ChartView::MakeTitle() const {
    ChartTitle title;
    title.periodCode = m_period;
    if (m_symbol.empty()) {
        return title;
    }
    const Symbol* symbol = m_data.FindSymbol(m_market, m_symbol);
    title.symbol = ui::ToQString(symbol ? NameOf(*symbol) : m_symbol);
    const CString period = Settings().PackTADataTypeString(m_period, m_count);
    title.period = Tr("IDS_TERMINAL-CHART_PERIOD").arg(ui::ToQString(period));
    title.priceDecimals = symbol ? DecimalsOfStep(symbol->priceStep) : 2;
    return title;
}

// ---- The group ----

bool ChartView::TakeGroup(const CString& name) {
    if (Settings().FindGroup(name) == 0) {
        return false;
    }
    m_groupName = name;
    m_groupUniNum = Settings().GetUniNumByGroupName(name);
    return true;
}

/// Shows the group under the name that it has now, or the default group in its place.
void ChartView::FollowGroup() {
    Settings().ReloadTASetting();
    const CString shown = m_groupName;
    const int uniNum = m_groupUniNum;
    if (!TakeGroup(Settings().GetGroupNameByUniNum(uniNum)) &&
        !TakeGroup(Settings().GetSystemDefaultGroup())) {
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
        const int index = Settings().GetGroupIndexByUniNum(m_groupUniNum);
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
    Settings().ReloadTASetting();  // comes back here when it is due, and so not halfway
    m_model->LoadGroup(m_groupName);
    CTADataRepository* shared = Settings().GetTaDataRepository(m_groupName);
    if (shared && BarCount() > 0) {
        shared->vSetBars({m_market, m_symbol, m_period, m_count}, m_model->SharedBars());
    }
    Rebuild();
}

// ---- Drawing ----

void ChartView::Rebuild() {
    m_scene->Rebuild(PlotTheme::FromPalette(palette(), m_risingRed), font());
    m_drawings->SetStyle(PlotTheme::FromPalette(palette(), m_risingRed), font());
    m_cursor.pane = std::min(m_cursor.pane, PaneCount() - 1);
    ShowMessage();
    UpdateNames();
    Draw();
}

void ChartView::Draw() {
    m_scene->Draw(m_cursor);
}

void ChartView::DrawCursor() {
    m_scene->DrawCursor(m_cursor);
    const QString text = CursorText();
    setAccessibleDescription(text);
    emit cursorMoved(text);
}

void ChartView::ShowMessage() {
    QString text;
    if (m_symbol.empty()) {
        text = Tr("IDS_TERMINAL-CHART_NO_SYMBOL");
    } else if (BarCount() == 0) {
        text = Tr("IDS_TERMINAL-CHART_NO_DATA");
        if (!m_failure.isEmpty()) {
            text += '\n' + m_failure;
        }
    }
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
    setAccessibleDescription(m_message->isHidden() ? CursorText() : m_message->text());
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
    Draw();
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
        const PlotMapping mapping = Mapping();
        for (int pane = 0; pane < PaneCount() && m_cursor.pane < 0; ++pane) {
            const auto at = static_cast<std::size_t>(pane);
            if (m_scene->PaneShowsPrices(pane)) {
                const auto bar = static_cast<std::size_t>(m_cursor.bar);
                m_cursor.pane = pane;
                m_cursor.y = mapping.panes[at].YOf(m_model->Bars()[bar].close);
            }
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
