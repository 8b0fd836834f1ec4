#include "terminal/plot/PriceLevels.h"

#include "terminal/lang/Language.h"
#include "terminal/plot/PlotNumbers.h"
#include "terminal/plot/TimeAxis.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr std::uint32_t kLevelColour = 0x9C36B5;
constexpr double kTextGap = 4;

bool IsLongerThanADay(int period) {
    constexpr int kWeekly = 1;
    constexpr int kMonthly = 2;
    return period == kWeekly || period == kMonthly;
}

QString PriceText(const PlotModel& model, double price) {
    return NumberText(price, NumberKind::Price, model.Title().priceDecimals);
}

void AddCdp(std::vector<PriceLevel>& levels, const PlotModel& model) {
    constexpr const char* kNames[] = {"AH", "NH", "CDP", "NL", "AL"};
    const auto before = PreviousDay(model.Bars(), model.Title().periodCode);
    if (!before) {
        return;
    }
    const char* const* name = kNames;
    for (const double value : CdpLevels(*before)) {
        levels.push_back({QString("%1 %2").arg(*name++, PriceText(model, value)), value});
    }
}

void AddLowest(std::vector<PriceLevel>& levels, const PlotModel& model, int first, int end) {
    const auto begin = model.Bars().begin();
    const auto lowest = std::ranges::min_element(begin + first, begin + end, {}, &Bar::low);
    if (lowest != begin + end) {
        const QString date = TimeText(lowest->time, model.Title().periodCode);
        levels.push_back({Tr("IDS_TERMINAL-CHART_LOWEST").arg(PriceText(model, lowest->low), date),
                          lowest->low, Qt::DotLine});
    }
}

}  // namespace

std::optional<DayPrices> PreviousDay(const BarSeries& bars, int period) {
    if (bars.empty() || IsLongerThanADay(period)) {
        return std::nullopt;
    }
    const auto dayOf = [](const Bar& bar) { return std::floor(bar.time); };
    auto bar = std::find_if(
        bars.rbegin(), bars.rend(),
        [&, today = dayOf(bars.back())](const Bar& each) { return dayOf(each) < today; });
    if (bar == bars.rend()) {
        return std::nullopt;
    }
    DayPrices prices{bar->high, bar->low, bar->close};
    for (const double day = dayOf(*bar); bar != bars.rend() && dayOf(*bar) == day; ++bar) {
        prices.high = std::max(prices.high, bar->high);
        prices.low = std::min(prices.low, bar->low);
    }
    return prices;
}

std::array<double, 5> CdpLevels(const DayPrices& before) {
    const double cdp = (before.high + before.low + 2 * before.close) / 4;
    const double width = before.high - before.low;
    return {cdp + width, 2 * cdp - before.low, cdp, 2 * cdp - before.high, cdp - width};
}

std::vector<PriceLevel> MakePriceLevels(const CommonProp& options, const PlotModel& model,
                                        int first, int end) {
    std::vector<PriceLevel> levels;
    if (options.bCDP) {
        AddCdp(levels, model);
    }
    if (options.bLowIdx && first < end) {
        AddLowest(levels, model, first, end);
    }
    return levels;
}

std::vector<double> SpreadTexts(std::vector<double> tops, double height) {
    std::vector<std::size_t> order(tops.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::ranges::stable_sort(order, {}, [&tops](std::size_t i) { return tops[i]; });
    for (std::size_t i = 1; i < order.size(); ++i) {
        tops[order[i]] = std::max(tops[order[i]], tops[order[i - 1]] + height);
    }
    return tops;
}

LevelLines::LevelLines(QCPAxis& axis, const PlotTheme& theme, const QFont& font)
    : QCPLayerable(axis.parentPlot(), QStringLiteral("axes")),
      m_axis(axis),
      m_theme(theme),
      m_font(font) {
    setParentLayerable(&axis);
}

void LevelLines::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(false);
}

void LevelLines::draw(QCPPainter* painter) {
    const QRectF pane = m_axis.axisRect()->rect();
    const QFontMetricsF metrics(m_font);
    std::vector<const PriceLevel*> inView;
    std::vector<double> tops;
    for (const PriceLevel& level : m_levels) {
        const double y = m_axis.coordToPixel(level.value);
        if (y >= pane.top() && y <= pane.bottom()) {
            painter->setPen(QPen(m_theme.Readable(kLevelColour), 0, level.style));
            painter->drawLine(QPointF(pane.left(), y), QPointF(pane.right(), y));
            inView.push_back(&level);
            tops.push_back(std::max(y - metrics.height(), pane.top()));
        }
    }
    tops = SpreadTexts(std::move(tops), metrics.height());
    painter->setFont(m_font);
    painter->setPen(m_theme.Readable(kLevelColour));
    QColor behind = m_theme.background;
    behind.setAlphaF(0.75F);
    for (std::size_t i = 0; i < inView.size(); ++i) {
        const double width = metrics.horizontalAdvance(inView[i]->text) + 2 * kTextGap;
        const QRectF box(pane.left() + 1, tops[i], width, metrics.height());
        painter->fillRect(box, behind);
        painter->drawText(box, Qt::AlignCenter, inView[i]->text);
    }
}

}  // namespace ta::terminal
