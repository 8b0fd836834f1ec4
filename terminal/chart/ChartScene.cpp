#include "terminal/chart/ChartScene.h"

#include "terminal/plot/ChartAxes.h"
#include "terminal/plot/CursorLine.h"
#include "terminal/plot/LastPriceTag.h"

#include <qcustomplot.h>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr double kPricePaneStretch = 2.2;
constexpr double kBorderReach = 3;  // of the border of two panes for the mouse, pixels
constexpr double kLeastPane = 48;   // pixels
constexpr int kEdge = 6;            // free pixels at a side without labels
constexpr double kLabelGap = 24;    // between two labels of the time axis

}  // namespace

ChartScene::ChartScene(QCustomPlot& plot, const PlotModel& model, const ChartAxes& axes)
    : m_plot(plot),
      m_model(model),
      m_axes(axes),
      m_margins(std::make_unique<QCPMarginGroup>(&plot)) {
    m_style.axes = &axes;
    m_style.timeTicker.reset(new TimeAxisTicker);
    plot.plotLayout()->clear();
    plot.plotLayout()->setRowSpacing(0);
    plot.plotLayout()->setMargins(QMargins(0, kEdge, 0, 2));
    m_lastPrice = std::make_unique<LastPriceTag>(plot, QStringLiteral("overlay"));
    m_cursorLine = std::make_unique<CursorLine>(plot, QStringLiteral("overlay"));
    QObject::connect(&plot, &QCustomPlot::afterLayout, m_cursorLine.get(),
                     [this] { ArrangeOverlay(); });
}

ChartScene::~ChartScene() {
    Clear();
}

void ChartScene::Clear() {
    m_panes.clear();
    m_plot.plotLayout()->simplify();
    m_askedLeft = 0;
    m_askedRight = 0;
}

void ChartScene::Rebuild(const PlotTheme& theme, const QFont& font) {
    Clear();
    m_style.theme = theme;
    m_style.font = font;
    // What was drawn keeps no bars that the model has let go.
    m_style.timeTicker->SetBars(m_model.SharedBars());
    m_cursorLine->Show({});
    m_panesAreOld = true;
    LayoutChanged();
}

void ChartScene::LayoutChanged() {
    m_layoutIsOld = true;
    m_isOld = true;
}

void ChartScene::Change(const PlotCursor& cursor) {
    m_cursor = cursor;
    m_isOld = true;
}

void ChartScene::MakePanes() {
    const PlotTheme& theme = m_style.theme;
    m_style.options = m_model.Options();
    m_plot.setBackground(QBrush(theme.background));
    m_cursorLine->SetStyle(theme, m_style.font);
    m_lastPrice->SetFont(m_style.font);

    const std::vector<ChartPane>& panes = m_model.Panes();
    const bool left = m_style.options.uScalePos != 0;
    const bool right = m_style.options.uScalePos != 1;
    for (std::size_t i = 0; i < panes.size(); ++i) {
        const bool lowest = i + 1 == panes.size();
        const int row = static_cast<int>(i);
        auto pane = std::make_unique<PlotPane>(m_plot, row, panes[i], m_style, lowest);
        QCPAxisRect& rect = pane->Rect();
        rect.setAutoMargins(QCP::msLeft | QCP::msRight | (lowest ? QCP::msBottom : QCP::msNone));
        rect.setMargins(QMargins(0, 0, 0, 0));
        rect.setMinimumMargins(QMargins(left ? 0 : kEdge, 0, right ? 0 : kEdge, 0));
        rect.setMinimumSize(20, 8);
        rect.setMarginGroup(QCP::msLeft | QCP::msRight, m_margins.get());
        m_panes.push_back(std::move(pane));
    }
    m_panesAreOld = false;
    StretchPanes();
}

void ChartScene::StretchPanes() {
    double own = 0;
    for (const auto& pane : m_panes) {
        own += pane->ShowsPrices() ? kPricePaneStretch : 1;
    }
    for (std::size_t i = 0; i < m_panes.size(); ++i) {
        const double share = i < m_shares.size() ? m_shares[i] : 0;
        const double stretch = m_panes[i]->ShowsPrices() ? kPricePaneStretch : 1;
        m_plot.plotLayout()->setRowStretchFactor(static_cast<int>(i),
                                                 share > 0 ? share : stretch / own);
    }
}

void ChartScene::SetShares(std::vector<double> shares) {
    m_shares = std::move(shares);
    if (!m_panesAreOld) {
        StretchPanes();
    }
    LayoutChanged();
}

int ChartScene::BorderAt(const QPointF& position) {
    Update();
    for (std::size_t i = 1; i < m_panes.size(); ++i) {
        const double away = position.y() - m_panes[i]->Area().top();
        if (away >= -kBorderReach && away <= kBorderReach) {
            return static_cast<int>(i) - 1;
        }
    }
    return -1;
}

void ChartScene::MoveBorder(int pane, double y) {
    Update();
    const auto above = static_cast<std::size_t>(pane);
    if (above + 1 >= m_panes.size()) {
        return;  // the panes have become fewer since the border was taken
    }
    std::vector<double> heights;
    double all = 0;
    for (const auto& each : m_panes) {
        heights.push_back(each->Rect().outerRect().height());
        all += heights.back();
    }
    const double both = heights[above] + heights[above + 1];
    const double least = std::min(kLeastPane, both / 2);
    const double wanted = y - m_panes[above]->Area().top();
    heights[above] = std::clamp(wanted, least, both - least);
    heights[above + 1] = both - heights[above];
    for (double& height : heights) {
        height /= all;
    }
    SetShares(std::move(heights));
}

void ChartScene::Update(QCustomPlot::RefreshPriority refresh) {
    if (!m_isOld) {
        return;
    }
    m_isOld = false;
    if (m_panesAreOld) {
        MakePanes();
    }
    FillLegends(m_cursor);
    if (m_layoutIsOld) {
        LayOut();
    }
    Fill();
    m_plot.replot(refresh);
    KeepMargins();
}

/// Gives the panes their places, which the values that they show have a part in.
void ChartScene::LayOut() {
    Fill();
    Place();
    KeepMargins();
    bool isOther = false;
    for (auto& pane : m_panes) {
        isOther = pane->FitLegend() || isOther;
    }
    if (isOther) {
        Place();
    }
    m_layoutIsOld = false;
    ArrangeOverlay();
}

void ChartScene::Place() {
    for (const auto phase : {QCPLayoutElement::upPreparation, QCPLayoutElement::upMargins,
                             QCPLayoutElement::upLayout}) {
        m_plot.plotLayout()->update(phase);
    }
}

PlotSlice ChartScene::Slice() const {
    const double width = m_panes.empty() ? 1 : std::max(m_panes.front()->Rect().width(), 1);
    return PlotSlice::Of(m_range.Lower(), m_range.Upper(), m_model.BarCount(), width);
}

void ChartScene::FillPane(std::size_t pane, const PlotSlice& slice) {
    m_panes[pane]->Fill(m_model, m_model.Panes()[pane], slice, m_range.Lower(), m_range.Upper());
}

void ChartScene::Fill() {
    const double width = m_panes.empty() ? 1 : std::max(m_panes.front()->Rect().width(), 1);
    const double label =
        QFontMetricsF(m_style.font).horizontalAdvance(QStringLiteral("2000/00/00"));
    m_style.timeTicker->SetSpacing((label + kLabelGap) * m_range.Width() / width);
    const PlotSlice slice = Slice();
    for (std::size_t i = 0; i < m_panes.size(); ++i) {
        FillPane(i, slice);
    }
    NarrowAxes();
}

/// A label that grows must not move the chart to and fro while it is panned. Legends that get less
/// room are fitted at the next drawing.
void ChartScene::KeepMargins() {
    for (auto& pane : m_panes) {
        const QMargins now = pane->Rect().margins();
        const QMargins before = pane->Rect().minimumMargins();
        QMargins least = before;
        least.setLeft(std::max(least.left(), now.left()));
        least.setRight(std::max(least.right(), now.right()));
        pane->Rect().setMinimumMargins(least);
        m_layoutIsOld = m_layoutIsOld || least != before;
    }
}

void ChartScene::DrawCursor(const PlotCursor& cursor) {
    Update();
    m_cursor = cursor;
    FillLegends(cursor);
    ArrangeOverlay();
    m_plot.layer(QStringLiteral("overlay"))->replot();
}

void ChartScene::FillLegends(const PlotCursor& cursor) {
    for (std::size_t i = 0; i < m_panes.size(); ++i) {
        m_panes[i]->Legend().SetEntries(LegendOf(static_cast<int>(i), cursor));
    }
}

void ChartScene::ArrangeOverlay() {
    for (auto& pane : m_panes) {
        pane->ArrangeLegend();
    }
    ShowLastPrice();
    ShowCursor(m_cursor);
}

/// On the uppermost pane of prices, as long as the price is in its view.
void ChartScene::ShowLastPrice() {
    const auto pane = std::ranges::find_if(m_panes, &PlotPane::ShowsPrices);
    const auto last = m_model.Last();
    std::vector<LastPriceTag::Place> places;
    AxisTag tag;
    if (last && pane != m_panes.end()) {
        const PlotMapping::Pane place = (*pane)->Geometry();
        const QRect rect = (*pane)->Rect().rect();
        const double y = place.YOf(last->price);
        const auto side = m_style.options.uScalePos;
        if (y >= place.top && y <= place.Bottom() && side != 1) {
            places.push_back({{rect.right() + 2.0, y}, Qt::AlignLeft});
        }
        if (y >= place.top && y <= place.Bottom() && side != 0) {
            places.push_back({{rect.left() - 1.0, y}, Qt::AlignRight});
        }
        const QColor fill =
            last->change == 0 ? m_style.theme.tag : m_style.theme.OfChange(last->change);
        tag = {NumberText(last->price, NumberKind::Price, m_model.Title().priceDecimals), fill,
               m_style.theme.background};
    }
    m_lastPrice->Show(std::move(tag), std::move(places));
}

void ChartScene::ShowCursor(const PlotCursor& cursor) {
    CursorPicture picture;
    const CommonProp& options = m_style.options;
    picture.there = options.bCursor && cursor.bar >= 0 && cursor.bar < m_model.BarCount() &&
                    cursor.pane < static_cast<int>(m_panes.size());
    if (picture.there) {
        picture.cross = options.bCrossLine;
        picture.small = options.bCursorOld;
        picture.tagLeft = options.uScalePos != 0;
        picture.tagRight = options.uScalePos != 1;
        picture.cursor = cursor;
        picture.mapping = Mapping();
        const Bar& bar = m_model.Bars()[static_cast<std::size_t>(cursor.bar)];
        picture.time = TimeText(bar.time, m_model.Title().periodCode);
        if (cursor.pane >= 0) {
            const auto index = static_cast<std::size_t>(cursor.pane);
            const PlotPane& pane = *m_panes[index];
            picture.cursor.y = LockedHeight(cursor);
            picture.value = NumberText(picture.mapping.panes[index].ValueAt(picture.cursor.y),
                                       pane.Numbers(), m_model.Title().priceDecimals);
        }
    }
    m_cursorLine->Show(std::move(picture));
}

double ChartScene::LockedHeight(const PlotCursor& cursor) {
    const bool locks = m_style.options.bCursor && cursor.bar >= 0 && cursor.pane >= 0;
    return locks ? LockCursor(m_model, Mapping(), PaneShowsPrices(cursor.pane), cursor) : cursor.y;
}

PlotMapping ChartScene::Mapping() {
    Update();
    PlotMapping mapping;
    mapping.bars = m_model.SharedBars();
    mapping.firstBar = m_range.Lower();
    mapping.lastBar = m_range.Upper();
    if (!m_panes.empty()) {
        mapping.left = m_panes.front()->Rect().left();
        mapping.width = std::max(m_panes.front()->Rect().width(), 1);
    }
    for (const auto& pane : m_panes) {
        mapping.panes.push_back(pane->Geometry());
    }
    return mapping;
}

bool ChartScene::PaneShowsPrices(int pane) const {
    return m_panes[static_cast<std::size_t>(pane)]->ShowsPrices();
}

int ChartScene::LegendBar(const PlotCursor& cursor) const {
    if (!cursor.IsThere()) {
        return m_model.BarCount() - 1;
    }
    const auto [first, last] = m_range.Bars();
    return cursor.bar >= first && cursor.bar <= last ? cursor.bar : last;
}

std::vector<LegendEntry> ChartScene::LegendOf(int pane, const PlotCursor& cursor) const {
    return m_model.Legend(pane, LegendBar(cursor), m_style.theme);
}

std::pair<int, int> ChartScene::PaneAndStudyAt(const QPointF& position) {
    Update();
    for (std::size_t i = 0; i < m_panes.size(); ++i) {
        const QRectF area = m_panes[i]->Area();
        if (position.y() >= area.top() && position.y() < area.bottom()) {
            const int study = m_panes[i]->Legend().StudyAt(position);
            return {static_cast<int>(i), std::max(study, 0)};
        }
    }
    return {-1, 0};
}

}  // namespace ta::terminal
