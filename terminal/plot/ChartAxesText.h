#pragma once

#include <QString>

namespace ta::terminal {

class ChartAxes;

/// What a user has set of a chart's axes, for the file that brings the chart back at the next
/// start; empty when that is nothing.
QString AxesText(const ChartAxes& axes);

/// Takes such a text. What is missing, or makes no sense, is as for a new chart.
void TakeAxesText(ChartAxes& axes, const QString& text);

}  // namespace ta::terminal
