#pragma once

#include "terminal/studies/StudyDefinition.h"

/// The formulas of the studies. Each takes its parameters in the order of the table and gives its
/// outputs in the order of the table's shapes; n, m, ... below are the parameters in that order.
/// Bars count from 0: "from bar n - 1" means that this many bars are warm-up (NaN). C, H, L, O, V
/// are the bars' fields, TP is the typical price (H + L + C) / 3, EMA and SMA are those of
/// StudyFormulas.h. Unless a function says otherwise, no output depends on a later bar.
namespace ta::terminal::calculation {

// ---- Price ----

/// C, from bar 0; the renderer draws the bars themselves.
StudyOutputs Candlesticks(const BarSeries& bars, const std::vector<double>& params);

/// SMA of C, one for each parameter n, from bar n - 1. Murphy, Technical Analysis of the Financial
/// Markets (1999).
StudyOutputs MovingAverages(const BarSeries& bars, const std::vector<double>& params);

/// EMA of C, one for each n, from bar n - 1. Elder, Trading for a Living (1993).
StudyOutputs ExponentialAverages(const BarSeries& bars, const std::vector<double>& params);

/// Linearly weighted averages of C, one for each n, from bar n - 1. Murphy (1999).
StudyOutputs WeightedAverages(const BarSeries& bars, const std::vector<double>& params);

/// Upper, middle, lower: SMA(C, n) and m population standard deviations above and below, from bar
/// n - 1. Bollinger, Bollinger on Bollinger Bands (2001).
StudyOutputs BollingerBands(const BarSeries& bars, const std::vector<double>& params);

/// Acceleration factor: start, step, maximum. From bar 1, which is on the rising side when its
/// high rose at least as far as its low fell, with the stop at the extreme of bars 0 and 1 on the
/// other side. When a bar crosses its stop, the side changes and the stop becomes the extreme that
/// the old side reached, that bar included. Wilder, New Concepts in Technical Trading Systems
/// (1978).
StudyOutputs ParabolicSar(const BarSeries& bars, const std::vector<double>& params);

/// Conversion line, base line, leading span A, leading span B, lagging span. Middles of the highest
/// H and lowest L of n, m and k bars, from bar n - 1 and m - 1; the leading spans (from bar
/// max(n, m) + m - 2 and k + m - 2) stand m bars ahead, today counted. The lagging span is C, m
/// bars back, today counted: it takes its value from a later bar and has none at the last m - 1
/// bars. Hosoda's method (1969) after Elliott, Ichimoku Charts (2007).
StudyOutputs Ichimoku(const BarSeries& bars, const std::vector<double>& params);

/// Upper, middle, lower: highest H and lowest L of n bars, the current one included, and their
/// middle, from bar n - 1. Donchian's channel after Kaufman, Trading Systems and Methods (2013).
StudyOutputs PriceChannel(const BarSeries& bars, const std::vector<double>& params);

/// Sum of TP * V over sum of V of the last n bars, from bar n - 1; SMA(TP, n) where no volume was
/// traded. Kaufman (2013).
StudyOutputs VolumeWeightedPrice(const BarSeries& bars, const std::vector<double>& params);

// ---- Volume ----

/// V from bar 0; SMA of V, one for each parameter n, from bar n - 1.
StudyOutputs Volume(const BarSeries& bars, const std::vector<double>& params);

/// On balance volume, 0 at bar 0: V added when C rises, taken away when it falls; its SMA of n
/// bars, from bar n - 1. Granville, Granville's New Key to Stock Market Profits (1963).
StudyOutputs OnBalanceVolume(const BarSeries& bars, const std::vector<double>& params);

/// 100 * (U + E / 2) / (D + E / 2) with the volumes U, D, E of the bars among the last n that rose,
/// fell and stayed (C against the C before). From bar n. 100 without any volume; NaN where only
/// D + E / 2 is 0. Usage in Taiwan, no single author.
StudyOutputs VolumeRatio(const BarSeries& bars, const std::vector<double>& params);

/// Share of rising TP * V in the rising and falling TP * V of the last n bars, 0 to 100, from bar
/// n; 50 when there is neither. Quong and Soudack, Technical Analysis of Stocks & Commodities
/// (1989).
StudyOutputs MoneyFlowIndex(const BarSeries& bars, const std::vector<double>& params);

/// Sum of V * ((C - L) - (H - C)) / (H - L) over sum of V of the last n bars, -1 to 1, from bar
/// n - 1; a bar with H = L counts 0, and so does a window without volume. Chaikin's formula after
/// Achelis, Technical Analysis from A to Z (2001).
StudyOutputs ChaikinMoneyFlow(const BarSeries& bars, const std::vector<double>& params);

// ---- Oscillators ----

/// DIF = EMA(C, n) - EMA(C, m), from bar m - 1; MACD = EMA(DIF, k), from bar m + k - 2;
/// OSC = DIF - MACD. Appel, Technical Analysis: Power Tools for Active Investors (2005).
StudyOutputs Macd(const BarSeries& bars, const std::vector<double>& params);

/// RSV = position of C between the lowest L (0) and the highest H (100) of n bars, 50 when they are
/// equal. K = K' + (RSV - K') / m, D = D' + (K - D') / k, both starting from 50 before the first
/// RSV. From bar n - 1. Lane's stochastics (Technical Analysis of Stocks & Commodities, 1984) with
/// the smoothing of a third that is usual in Taiwan.
StudyOutputs Stochastic(const BarSeries& bars, const std::vector<double>& params);

/// RSI of C, one for each parameter n, 0 to 100, from bar n. Wilder (1978).
StudyOutputs RelativeStrengthIndex(const BarSeries& bars, const std::vector<double>& params);

/// Position of C between the highest H (0) and the lowest L (-100) of n bars, from bar n - 1; -50
/// when they are equal. Williams, How I Made One Million Dollars (1973).
StudyOutputs WilliamsRange(const BarSeries& bars, const std::vector<double>& params);

/// (TP - SMA(TP, n)) / (0.015 * mean deviation), from bar n - 1; 0 without deviation. Lambert,
/// Commodities (October 1980). O(bars * n).
StudyOutputs CommodityChannel(const BarSeries& bars, const std::vector<double>& params);

/// 100 * (C - SMA(C, n)) / SMA(C, n), one for each parameter n, from bar n - 1; 0 where the average
/// is 0. General usage, no single author.
StudyOutputs Bias(const BarSeries& bars, const std::vector<double>& params);

/// Percentage of the last n bars whose C rose, one for each parameter n, from bar n. General usage
/// in Japan and Taiwan, no single author.
StudyOutputs PsychologicalLine(const BarSeries& bars, const std::vector<double>& params);

/// C - C n bars before, from bar n; its SMA of m bars, from bar n + m - 1. Murphy (1999).
StudyOutputs Momentum(const BarSeries& bars, const std::vector<double>& params);

/// Change from the C n bars before in percent of that C, from bar n; its SMA of m bars, from bar
/// n + m - 1. 0 where that C is 0. Murphy (1999).
StudyOutputs RateOfChange(const BarSeries& bars, const std::vector<double>& params);

/// K = SMA of k bars of the position of RSI(n) between its lowest (0) and highest (100) of m bars,
/// from bar n + m + k - 2; D = SMA of l bars of K. Chande and Kroll, The New Technical Trader
/// (1994).
StudyOutputs StochasticRsi(const BarSeries& bars, const std::vector<double>& params);

// ---- Trend and volatility ----

/// +DI and -DI from bar n; ADX, the Wilder average of n DX, from bar 2n - 1. Movements count from
/// bar 1. 0 where nothing moved. Wilder (1978).
StudyOutputs DirectionalMovement(const BarSeries& bars, const std::vector<double>& params);

/// Wilder average of n true ranges, bar 0's being H - L; from bar n - 1. Wilder (1978).
StudyOutputs AverageTrueRange(const BarSeries& bars, const std::vector<double>& params);

/// Population standard deviation of C, from bar n - 1.
StudyOutputs StandardDeviation(const BarSeries& bars, const std::vector<double>& params);

/// Change of EMA(EMA(EMA(C, n), n), n) from the bar before in percent, from bar 3n - 2; its EMA of
/// m bars, from bar 3n + m - 3. 0 where the average before is 0. Hutson, Technical Analysis of
/// Stocks & Commodities (1983).
StudyOutputs Trix(const BarSeries& bars, const std::vector<double>& params);

}  // namespace ta::terminal::calculation
