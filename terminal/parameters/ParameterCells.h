#pragma once

#include "platform/Study.h"
#include "terminal/parameters/ParameterFault.h"
#include "terminal/parameters/ParameterFormat.h"

#include <optional>

/// What stands in the cells of a line; the faults do not know their line.
namespace ta::terminal {

/// A line, with an empty text for a cell that it does not have.
using ParameterCells = std::array<std::string_view, parameterfile::kColumnCount>;

/// A cell of text without the apostrophe that keeps spreadsheets from taking it for a formula.
std::string_view WithoutGuard(std::string_view cell);

/// Reads the value of a parameter: a number with a point, with no more digits behind it than the
/// parameter keeps, within its range.
std::optional<ParameterFault> ReadValue(const ParameterCells& cells, const StudyParamInfo& param,
                                        double& value);
/// Reads colour, width, style and visibility.
std::optional<ParameterFault> ReadLooks(const ParameterCells& cells, StudyShape& shape);

}  // namespace ta::terminal
