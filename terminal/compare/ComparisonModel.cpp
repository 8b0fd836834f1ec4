#include "terminal/compare/ComparisonModel.h"

#include "terminal/lang/Language.h"
#include "terminal/plot/PlotTheme.h"
#include "terminal/plot/TimeAxis.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

constexpr std::uint32_t kColours[kMostCompared] = {
    0x2f7ed8, 0xd6453a, 0x2a9d4a, 0xc98a00, 0x9a55e8,
    0x0098a8, 0xe0449e, 0x97633f, 0x7b8794, 0x86a000,
};
// Wider ones take twenty times as long to paint, where there are more bars than pixels.
constexpr int kLineWidth = 1;

const char* ModeKey(ComparisonMode mode) {
    switch (mode) {
        case ComparisonMode::Percent:
            return "IDS_TERMINAL-COMPARE_LEGEND_PERCENT";
        case ComparisonMode::Indexed:
            return "IDS_TERMINAL-COMPARE_LEGEND_INDEXED";
        case ComparisonMode::Prices:
            break;
    }
    return "IDS_TERMINAL-COMPARE_LEGEND_PRICES";
}

NumberKind NumbersOf(ComparisonMode mode, bool isDifference) {
    if (isDifference || mode == ComparisonMode::Prices) {
        return NumberKind::Price;
    }
    return mode == ComparisonMode::Percent ? NumberKind::Percent : NumberKind::Plain;
}

}  // namespace

std::uint32_t ComparisonColour(std::size_t line) {
    return kColours[line % kMostCompared];
}

ComparisonModel::ComparisonModel() {
    m_result.axis = m_bars;
}

void ComparisonModel::SetSources(std::vector<ComparisonSource> sources, ChartTitle title) {
    m_sources = std::move(sources);
    m_title = std::move(title);
    m_title.priceDecimals = 0;
    m_histories.clear();
    for (const ComparisonSource& source : m_sources) {
        m_title.priceDecimals = std::max(m_title.priceDecimals, source.priceDecimals);
        m_histories.push_back(source.bars);
    }
    m_result = Align(m_histories, m_title.periodCode);
    m_bars = m_result.axis;
}

void ComparisonModel::SetBase(double baseDate, ComparisonMode mode) {
    m_mode = mode;
    Count(m_result, m_histories, baseDate, mode);
    MakePane();
}

void ComparisonModel::MakePane() {
    ChartPane pane;
    for (std::size_t line = 0; line < m_sources.size(); ++line) {
        pane.push_back(MakeStudy(line));
    }
    m_panes = {std::move(pane)};
}

ChartStudy ComparisonModel::MakeStudy(std::size_t line) const {
    const ComparisonLine& counted = m_result.lines[line];
    ChartStudy study;
    study.name = m_sources[line].name;
    study.onPriceScale = !counted.isDifference;
    study.numbers = NumbersOf(m_mode, counted.isDifference);
    study.values = std::make_shared<const StudyValues>(StudyValues{counted.values});
    if (counted.base.IsThere()) {
        const StudyShape shape{.colour = ComparisonColour(line), .width = kLineWidth};
        ValueSpan span;
        for (const double value : counted.values) {
            span.Add(value);
        }
        study.outputs = {{StudyDrawKind::Line, study.name, shape}};
        study.outputs[0].widest =
            '+' + WidestNumberText(span, study.numbers, m_sources[line].priceDecimals);
    }
    return study;
}

QString ComparisonModel::ValueText(std::size_t line, int bar) const {
    const ChartStudy& study = m_panes[0][line];
    const double value = study.ValueAt(0, bar);
    const bool isChange = m_result.lines[line].isDifference || study.numbers == NumberKind::Percent;
    return (isChange && value > 0 ? "+" : "") +
           NumberText(value, study.numbers, m_sources[line].priceDecimals);
}

QString ComparisonModel::BaseText(std::size_t line) const {
    const ComparisonBase& base = m_result.lines[line].base;
    return Tr(base.isLater ? "IDS_TERMINAL-COMPARE_LATER_BASE" : "IDS_TERMINAL-COMPARE_BASE")
        .arg(TimeText(base.time, m_title.periodCode),
             NumberText(base.price, NumberKind::Price, m_sources[line].priceDecimals));
}

std::vector<LegendEntry> ComparisonModel::Legend(int, int bar, const PlotTheme& theme) const {
    LegendEntry title{0, {{Tr(ModeKey(m_mode)), theme.text}}};
    title.spans.push_back({m_title.period, theme.faintText});
    if (bar >= 0 && bar < BarCount()) {
        const double time = Bars()[static_cast<std::size_t>(bar)].time;
        title.spans.push_back({TimeText(time, m_title.periodCode), theme.faintText});
    }
    std::vector<LegendEntry> entries{std::move(title)};
    for (std::size_t line = 0; line < m_sources.size(); ++line) {
        const QColor colour = theme.Readable(ComparisonColour(line));
        LegendEntry entry{static_cast<int>(line) + 1, {{m_sources[line].name, colour}}};
        if (!m_result.lines[line].base.IsThere()) {
            entry.spans.push_back({Tr("IDS_TERMINAL-COMPARE_NO_DATA"), theme.faintText});
        } else {
            entry.spans.push_back(
                {ValueText(line, bar), colour, m_panes[0][line].outputs[0].widest});
            entry.spans.push_back({BaseText(line), theme.faintText});
        }
        if (m_result.lines[line].isDifference) {
            entry.spans.push_back({Tr("IDS_TERMINAL-COMPARE_DIFFERENCE"), theme.faintText});
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

QString ComparisonModel::BarText(int bar) const {
    if (bar < 0 || bar >= BarCount()) {
        return {};
    }
    QStringList texts{TimeText(Bars()[static_cast<std::size_t>(bar)].time, m_title.periodCode)};
    for (std::size_t line = 0; line < m_sources.size(); ++line) {
        if (m_result.lines[line].base.IsThere()) {
            texts << m_sources[line].name + ' ' + ValueText(line, bar);
        }
    }
    return texts.join(QStringLiteral("  "));
}

std::vector<double> ComparisonModel::LockValues(const PlotCursor& cursor, bool prices) const {
    std::vector<double> values;
    for (const ChartStudy& study : m_panes[0]) {
        if (study.onPriceScale == prices) {
            values.push_back(study.ValueAt(0, cursor.bar));
        }
    }
    return values;
}

double ComparisonModel::CursorValue(int bar) const {
    const auto values = LockValues({bar, 0, 0}, true);
    const auto found =
        std::ranges::find_if(values, [](double value) { return !std::isnan(value); });
    return found == values.end() ? std::numeric_limits<double>::quiet_NaN() : *found;
}

}  // namespace ta::terminal
