#pragma once

#include "terminal/plot/BarFacts.h"
#include "terminal/plot/PlotModel.h"

#include <vector>

class StudyInfo;

namespace ta::terminal {

/// Gives a study what its legend says besides values, and its levels.
void TakeLook(ChartStudy& study, const StudyInfo& info, const std::vector<double>& params);

/// Makes candles of a history that has closes only a line of them.
void FitToBars(ChartStudy& study, const BarFacts& facts);

/// Gives each output its widest text, by the span of its values or, for candles, of the prices.
void MeasureTexts(ChartStudy& study, const std::vector<ValueSpan>& spans, const BarFacts& facts,
                  int priceDecimals);

}  // namespace ta::terminal
