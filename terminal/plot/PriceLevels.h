#pragma once

#include "platform/CommonProp.h"
#include "terminal/plot/PlotModel.h"
#include "terminal/plot/PlotTheme.h"

#include <qcustomplot.h>
#include <QFont>
#include <QString>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace ta::terminal {

/// The prices of a day as one bar.
struct DayPrices {
    double high = 0;
    double low = 0;
    double close = 0;

    bool operator==(const DayPrices&) const = default;
};

/// The day before that of the latest bar, put together from its bars. Nothing when there is none
/// among them, and for bars longer than a day. `period` as BarsKey::period.
std::optional<DayPrices> PreviousDay(const BarSeries& bars, int period);

/// The contrarian's levels of a day, from the prices of the day before: CDP = (H + L + 2C) / 4,
/// AH = CDP + (H - L), NH = 2 CDP - L, NL = 2 CDP - H, AL = CDP - (H - L).
/// As AH, NH, CDP, NL, AL.
std::array<double, 5> CdpLevels(const DayPrices& before);

/// A level line of the price pane.
struct PriceLevel {
    QString text;  ///< name and value
    double value = 0;
    Qt::PenStyle style = Qt::DashLine;
};

/// What the options ask for: with bCDP the five levels of the latest day, on charts of daily and
/// shorter bars; with bLowIdx the lowest low of the bars `first` to `end` - 1, with its date.
std::vector<PriceLevel> MakePriceLevels(const CommonProp& options, const PlotModel& model,
                                        int first, int end);

/// Where texts of one height stand, given by their tops: moved down as far as none of them stands
/// over another.
std::vector<double> SpreadTexts(std::vector<double> tops, double height);

/// The level lines of a pane. The plot owns it through its layer until it is deleted.
class LevelLines : public QCPLayerable {
public:
    /// On the scale of `axis`, which outlives it.
    LevelLines(QCPAxis& axis, const PlotTheme& theme, const QFont& font);

    void SetLevels(std::vector<PriceLevel> levels) { m_levels = std::move(levels); }

protected:
    QRect clipRect() const override { return m_axis.axisRect()->rect(); }
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

private:
    QCPAxis& m_axis;
    PlotTheme m_theme;
    QFont m_font;
    std::vector<PriceLevel> m_levels;
};

}  // namespace ta::terminal
