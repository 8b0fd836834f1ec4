#pragma once

#include "terminal/frame/CommandLine.h"

namespace ta::terminal {

/// The size of the window in the tour's pictures.
constexpr int kTourWidth = 1280;
constexpr int kTourHeight = 800;

/// Shows the terminal in settings of its own, does what a user would do, and writes a numbered PNG
/// of each state into options.tourFolder, with a line on the standard output for each. Needs a
/// QApplication, which may be without a display. Returns the program's exit code: 0, or 1 when
/// something that a step expects was not there; the step and what it missed go to the standard
/// error.
int RunTour(const Options& options);

}  // namespace ta::terminal
