#pragma once

namespace ta::terminal {

class TourGuide;

// The steps of the tour about trend lines. The first draws the lines that the others show.

void ShowDrawing(TourGuide& guide);
void ShowTrendLines(TourGuide& guide);
void ShowDrawingMenu(TourGuide& guide);
void ShowTrendLinesTwice(TourGuide& guide);
void ShowTrendLineList(TourGuide& guide);
void ShowTrendLinesInTheDark(TourGuide& guide);

}  // namespace ta::terminal
