#pragma once

class QCPAxisRect;
class QCustomPlot;

namespace ta::terminal {

/// Paints one row of a plot again, over the full width, and leaves the picture of the others. Its
/// place must be the same as when the plot was drawn; layers with a buffer of their own are not
/// painted. false, and nothing is painted, when the plot was not drawn in its size yet.
bool RepaintPane(QCustomPlot& plot, QCPAxisRect& rect);

}  // namespace ta::terminal
