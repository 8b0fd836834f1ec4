#pragma once

#include "platform/CommonProp.h"
#include "platform/Study.h"
#include "terminal/plot/BarFacts.h"
#include "terminal/plot/LegendEntry.h"
#include "terminal/plot/PlotCursor.h"
#include "terminal/plot/PlotNumbers.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace ta::terminal {

struct PlotTheme;

/// The values of a study over all bars: one vector per output, NaN for none.
using StudyValues = std::vector<std::vector<double>>;

struct ChartOutput {
    StudyDrawKind kind = StudyDrawKind::Line;
    QString name;
    StudyShape shape;
    QString legend = {};              ///< before its value in a legend; may be empty
    QString widest = {};              ///< the widest text of its values; empty: not known
    std::vector<double> levels = {};  ///< drawn across the pane, which always shows them
};

/// A study of the group as the chart needs it.
struct ChartStudy {
    StudyType type = kNoStudy;
    QString name;           ///< "#99" for a study that is not known
    QString parameters;     ///< "5,10,20"
    QString legend = {};    ///< before its lines in a legend, "MACD(12,26,9)"; may be empty
    bool isPrices = false;  ///< the bars themselves, as candles or as a line of their closes
    bool onPriceScale = false;
    NumberKind numbers = NumberKind::Plain;
    std::vector<ChartOutput> outputs;  ///< none for a study that is not known
    std::shared_ptr<const StudyValues> values;

    bool HasCandlesticks() const;
    /// Of one output; NaN outside the bars.
    double ValueAt(std::size_t output, int bar) const;
};

/// The studies of one pane, in slot order.
using ChartPane = std::vector<ChartStudy>;

/// What the chart says about the symbol.
struct ChartTitle {
    QString symbol;
    QString period;
    int periodCode = 0;  ///< as BarsKey::period
    int priceDecimals = 2;
};

/// The latest price, and by how much it is above the one before.
struct LastPrice {
    double price = 0;
    double change = 0;
};

/// What a chart window shows: bars along the time axis, panes of studies over them, and what is
/// said of them; no drawing. Bar indices count from 0, the oldest.
class PlotModel {
public:
    virtual ~PlotModel() = default;

    /// Never null.
    const std::shared_ptr<const BarSeries>& SharedBars() const { return m_bars; }
    const BarSeries& Bars() const { return *m_bars; }
    int BarCount() const { return static_cast<int>(m_bars->size()); }
    const BarFacts& Facts() const { return m_facts; }
    const ChartTitle& Title() const { return m_title; }
    const std::vector<ChartPane>& Panes() const { return m_panes; }
    const CommonProp& Options() const { return m_options; }

    /// What the axis of the prices is marked with; nothing for no mark.
    virtual std::optional<LastPrice> Last() const { return std::nullopt; }
    /// The legend of a pane for one bar.
    virtual std::vector<LegendEntry> Legend(int pane, int bar, const PlotTheme& theme) const = 0;
    /// A bar in one text, its date first; empty for an index outside the bars.
    virtual QString BarText(int bar) const = 0;
    /// The values that the level cursor line may lock on; none where it stands free. `prices`: the
    /// cursor's pane shows prices.
    virtual std::vector<double> LockValues(const PlotCursor& cursor, bool prices) const = 0;
    /// Where the keys put the level cursor line on the pane of the prices; NaN for nowhere.
    virtual double CursorValue(int bar) const = 0;

protected:
    std::shared_ptr<const BarSeries> m_bars = std::make_shared<const BarSeries>();
    BarFacts m_facts;
    ChartTitle m_title;
    std::vector<ChartPane> m_panes{1};
    CommonProp m_options;
};

}  // namespace ta::terminal
