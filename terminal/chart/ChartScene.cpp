#include "terminal/chart/ChartScene.h"

#include "terminal/plot/ChartAxes.h"
#include "terminal/plot/CursorLine.h"

#include <qcustomplot.h>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr double kPricePaneStretch = 2.2;
constexpr int kEdge = 6;          // free pixels at a side without labels
constexpr double kLabelGap = 24;  // between two labels of the time axis

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

    const std::vector<ChartPane>& panes = m_model.Panes();
    const bool left = m_style.options.uScalePos != 0;
    const bool right = m_style.options.uScalePos != 1;
    for (std::size_t i = 0; i < panes.size(); ++i) {
        const bool lowest = i + 1 == panes.size();
        const int row = static_cast<int>(i);
        auto pane = std::make_unique<PlotPane>(m_plot, row, panes[i], m_style, lowest);
        QCPAxisRect& rect = pane->Rect();
        m_plot.plotLayout()->setRowStretchFactor(
            row, pane->ShowsPrices() && panes.size() > 1 ? kPricePaneStretch : 1);
        rect.setAutoMargins(QCP::msLeft | QCP::msRight | (lowest ? QCP::msBottom : QCP::msNone));
        rect.setMargins(QMargins(0, 0, 0, 0));
        rect.setMinimumMargins(QMargins(left ? 0 : kEdge, 0, right ? 0 : kEdge, 0));
        rect.setMinimumSize(20, 8);
        rect.setMarginGroup(QCP::msLeft | QCP::msRight, m_margins.get());
        m_panes.push_back(std::move(pane));
    }
    m_panesAreOld = false;
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
    for (const auto phase : {QCPLayoutElement::upPreparation, QCPLayoutElement::upMargins,
                             QCPLayoutElement::upLayout}) {
        m_plot.plotLayout()->update(phase);
    }
    KeepMargins();
    m_layoutIsOld = false;
    ArrangeOverlay();
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

/// A label that grows must not move the chart to and fro while it is panned.
void ChartScene::KeepMargins() {
    for (auto& pane : m_panes) {
        const QMargins now = pane->Rect().margins();
        QMargins least = pane->Rect().minimumMargins();
        least.setLeft(std::max(least.left(), now.left()));
        least.setRight(std::max(least.right(), now.right()));
        pane->Rect().setMinimumMargins(least);
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
    ShowCursor(m_cursor);
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
            picture.cursor.y = LockCursor(m_model, picture.mapping, pane.ShowsPrices(), cursor);
            picture.value = NumberText(picture.mapping.panes[index].ValueAt(picture.cursor.y),
                                       pane.Numbers(), m_model.Title().priceDecimals);
        }
    }
    m_cursorLine->Show(std::move(picture));
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
    const int last = m_model.BarCount() - 1;
    return cursor.IsThere() ? std::min(cursor.bar, last) : last;
}

std::vector<LegendEntry> ChartScene::LegendOf(int pane, const PlotCursor& cursor) const {
    return m_model.Legend(pane, LegendBar(cursor), m_style.theme);
}

std::pair<int, int> ChartScene::PaneAndStudyAt(const QPointF& position) {
    const int pane = Mapping().PaneAt(position.y());
    if (pane < 0) {
        return {-1, 0};
    }
    const int study = m_panes[static_cast<std::size_t>(pane)]->Legend().StudyAt(position);
    return {pane, std::max(study, 0)};
}

}  // namespace ta::terminal
