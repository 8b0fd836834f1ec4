#include "terminal/studies/StudyCalculations.h"
#include "terminal/studies/StudyFormulas.h"

#include <cmath>
#include <functional>
#include <limits>

namespace ta::terminal::calculation {
namespace {

using namespace formula;

/// Directional movements and true ranges; NaN at bar 0, which has no bar before it.
struct Movements {
    Series up;
    Series down;
    Series range;
};

Movements FindMovements(const BarSeries& bars) {
    Movements moves;
    moves.range = TrueRanges(bars);
    moves.up.assign(bars.size(), 0);
    moves.down = moves.up;
    if (!bars.empty()) {
        moves.up[0] = moves.down[0] = moves.range[0] = std::numeric_limits<double>::quiet_NaN();
    }
    for (std::size_t i = 1; i < bars.size(); ++i) {
        const double up = bars[i].high - bars[i - 1].high;
        const double down = bars[i - 1].low - bars[i].low;
        moves.up[i] = up > down && up > 0 ? up : 0;
        moves.down[i] = down > up && down > 0 ? down : 0;
    }
    return moves;
}

double Percent(double part, double whole) {
    return 100 * Ratio(part, whole, 0);
}

}  // namespace

StudyOutputs DirectionalMovement(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const Movements moves = FindMovements(bars);
    const Series range = WilderAverage(moves.range, period);
    const Series plus = Combine(WilderAverage(moves.up, period), range, Percent);
    const Series minus = Combine(WilderAverage(moves.down, period), range, Percent);
    const Series dx = Combine(plus, minus, [](double up, double down) {
        return Percent(std::abs(up - down), up + down);
    });
    return {plus, minus, WilderAverage(dx, period)};
}

StudyOutputs AverageTrueRange(const BarSeries& bars, const std::vector<double>& params) {
    return {WilderAverage(TrueRanges(bars), static_cast<int>(params[0]))};
}

StudyOutputs StandardDeviation(const BarSeries& bars, const std::vector<double>& params) {
    return {formula::StandardDeviation(Column(bars, &Bar::close), static_cast<int>(params[0]))};
}

StudyOutputs Trix(const BarSeries& bars, const std::vector<double>& params) {
    const int period = static_cast<int>(params[0]);
    const Series smooth = Ema(Ema(Ema(Column(bars, &Bar::close), period), period), period);
    const Series trix = Combine(smooth, Shifted(smooth, 1), [](double now, double before) {
        return Percent(now - before, before);
    });
    return {trix, Ema(trix, static_cast<int>(params[1]))};
}

}  // namespace ta::terminal::calculation
