#pragma once

namespace ta::terminal {

class TourGuide;

// The steps of the tour about group files. The first writes the file that the second reads.

void ShowExport(TourGuide& guide);
void ShowImport(TourGuide& guide);

}  // namespace ta::terminal
