#include "terminal/chart/ChartView.h"

#include "platform/Rounding.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/chart/ChartTable.h"
#include "terminal/chart/PaneHeights.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/quotes/MarketData.h"

#include <algorithm>

namespace ta::terminal {

ChartView::ChartView(MarketData& marketData, QWidget* parent)
    : ChartView(marketData, std::make_shared<ChartModel>(), parent) {}

ChartView::ChartView(MarketData& marketData, const std::shared_ptr<ChartModel>& model,
                     QWidget* parent)
    : ChartPage(model, parent), m_data(marketData), m_model(model) {
    m_drawings = std::make_unique<DrawingBoard>(
        *this, Plot(),
        DrawingBoard::Chart{[this] { return MakeDrawingFrame(); }, [this] { return CursorPoint(); },
                            [this](const QPointF& point) { return PlacedOnPrices(point); }});
    connect(this, &ChartPage::menuRequested, m_drawings.get(),
            [this](QMenu* menu) { m_drawings->AddMenuEntries(*menu); });
    if (Language* language = Language::Instance()) {
        connect(language, &Language::changed, this, &ChartView::Retranslate);
    }
    TakeGroup(Repository().GetSystemDefaultGroup());
    Repository().AddTechViewPtr(this);
    RedrawGroup();
}

ChartView::~ChartView() {
    Repository().RemoveTechViewPtr(this);
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

void ChartView::SwitchPeriod(int period, int count) {
    Show({m_shown.market, m_shown.symbol, period, count});
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

ChartTable ChartView::Table() const {
    return MakeChartTable(*m_model, m_groupName);
}

void ChartView::Reload() {
    const PlotRange before = Scene().Range();
    LoadHistory(true);
    if (before.BarCount() == BarCount()) {
        Scene().Range() = before;
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
    if (m_hasTold) {
        emit historyShort(ShortfallText(*m_all, Depth()));
    }
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
    TakeBars();
    m_drawings->SetChart(m_shown);
    RedrawGroup();
    if (failed) {
        emit loadFailed(m_failure);
    } else if (!shortfall.isEmpty() || m_hasTold) {
        emit historyShort(shortfall);
    }
    m_hasTold = failed || !shortfall.isEmpty();
}

QString ChartView::Name() const {
    const Symbol* symbol = m_data.FindSymbol(m_shown.market, m_shown.symbol);
    return ui::ToQString(symbol ? TitleOf(*symbol) : m_shown.symbol);
}

ChartTitle ChartView::MakeTitle() const {
    ChartTitle title;
    title.periodCode = m_shown.period;
    if (m_shown.symbol.empty()) {
        return title;
    }
    const Symbol* symbol = m_data.FindSymbol(m_shown.market, m_shown.symbol);
    title.symbol = Name();
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
    TakeShares();
    Rebuild();
    emit dataChanged();
}

void ChartView::SetPaneHeights(PaneHeights& heights) {
    m_heights = &heights;
    connect(&heights, &PaneHeights::changed, this, [this](int group) {
        if (group == m_groupUniNum) {
            TakeShares();
            Draw();
        }
    });
    TakeShares();
}

/// Those of the panes that are shown.
void ChartView::TakeShares() {
    if (m_heights == nullptr) {
        return;
    }
    const PaneHeights::Shares kept = m_heights->Of(m_groupUniNum);
    std::vector<double> shares;
    for (int pane = 0; pane < PaneCount(); ++pane) {
        const auto place = static_cast<std::size_t>(m_model->GroupPane(pane));
        shares.push_back(place < kept.size() ? kept[place] : 0);
    }
    Scene().SetShares(std::move(shares));
}

void ChartView::OnShares() {
    if (m_heights == nullptr) {
        return;
    }
    const std::vector<double> shares = Scene().Shares();
    PaneHeights::Shares kept = shares.empty() ? shares : m_heights->Of(m_groupUniNum);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const auto place = static_cast<std::size_t>(m_model->GroupPane(static_cast<int>(i)));
        kept.resize(std::max(kept.size(), place + 1));
        kept[place] = shares[i];
    }
    m_heights->Set(m_groupUniNum, kept);
}

// ---- Drawing ----

void ChartView::OnStyle(const PlotTheme& theme) {
    m_drawings->SetStyle(theme, font());
}

QString ChartView::Message() const {
    if (m_shown.symbol.empty()) {
        return Tr("IDS_TERMINAL-CHART_NO_SYMBOL");
    }
    if (BarCount() > 0) {
        return {};
    }
    return Tr("IDS_TERMINAL-CHART_NO_DATA") + (m_failure.isEmpty() ? QString() : '\n' + m_failure);
}

QString ChartView::SpokenName() const {
    const ChartTitle& title = m_model->Title();
    return title.symbol.isEmpty()
               ? Tr("IDS_TERMINAL-CHART_ACCESSIBLE_EMPTY")
               : Tr("IDS_TERMINAL-CHART_ACCESSIBLE").arg(title.symbol, title.period);
}

// ---- Trend lines ----

bool ChartView::IsPlacing() const {
    return m_drawings->Tool().has_value();
}

DrawingFrame ChartView::MakeDrawingFrame() const {
    return {Mapping(), PricePane(), m_model->Title().priceDecimals};
}

QPointF ChartView::PlacedOnPrices(const QPointF& point) const {
    return Mapping().PaneAt(point.y()) == PricePane() ? PlacedPoint(point) : point;
}

std::optional<QPointF> ChartView::CursorPoint() const {
    const PlotCursor& cursor = Cursor();
    if (!cursor.IsThere() || cursor.pane != PricePane()) {
        return std::nullopt;
    }
    return QPointF(Mapping().XOf(cursor.bar), cursor.y);
}

}  // namespace ta::terminal
