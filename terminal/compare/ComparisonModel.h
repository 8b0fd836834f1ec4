#pragma once

#include "terminal/compare/Comparison.h"
#include "terminal/plot/PlotModel.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace ta::terminal {

/// The most symbols that a comparison shows.
inline constexpr int kMostCompared = 10;

/// 0xRRGGBB of a line, counted from 0: colours that stand apart from each other and, as they are,
/// from a light and a dark background. They begin again after kMostCompared.
std::uint32_t ComparisonColour(std::size_t line);

/// A symbol as a comparison takes it.
struct ComparisonSource {
    QString name;
    int priceDecimals = 2;
    std::shared_ptr<const BarSeries> bars;  ///< null: no data
    QString note = {};  ///< why there is no data, or less than asked for; empty: nothing to say
};

/// Symbols side by side for a chart window: one pane with a study a symbol, in their order, which
/// has one line or, without data, none. Lines of price differences in the place of percents have
/// one scale of their own.
class ComparisonModel : public PlotModel {
public:
    ComparisonModel();

    /// `title` names the comparison; its decimals are made from those of the symbols.
    void SetSources(std::vector<ComparisonSource> sources, ChartTitle title);
    /// As Count() has them.
    void SetBase(double baseDate, ComparisonMode mode);

    /// The lines on the time axis, which is Bars(); of the symbols in their order.
    const Comparison& Result() const { return m_result; }
    const std::vector<ComparisonSource>& Sources() const { return m_sources; }

    /// What the values are, then for each symbol its value, the day and price of its base, and what
    /// there is to note.
    std::vector<LegendEntry> Legend(int pane, int bar, const PlotTheme& theme) const override;
    QString BarText(int bar) const override;
    /// Of every line on the labelled scale.
    std::vector<double> LockValues(const PlotCursor& cursor, bool prices) const override;
    double CursorValue(int bar) const override;

private:
    void MakePane();
    ChartStudy MakeStudy(std::size_t line) const;
    QString ValueText(std::size_t line, int bar) const;
    QString BaseText(std::size_t line) const;

    std::vector<ComparisonSource> m_sources;
    std::vector<std::shared_ptr<const BarSeries>> m_histories;
    ComparisonMode m_mode = ComparisonMode::Percent;
    Comparison m_result;
};

}  // namespace ta::terminal
