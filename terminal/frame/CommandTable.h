#pragma once

#include "terminal/frame/Commands.h"

namespace ta::terminal {

/// Every command of the terminal in the order of the menus' entries. A new dialog is a row here and
/// an opener.
std::span<const CommandRow> CommandTable();

/// The commands that the context menu of a chart offers, below what the chart itself adds.
std::span<const Command> ChartMenu();

}  // namespace ta::terminal
