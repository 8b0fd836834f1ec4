#pragma once

#include <QString>

#include <vector>

namespace ta::tour {

class Guide;

/// One thing that a user does, with pictures of what there is to see.
struct Step {
    const char* name;
    void (*run)(Guide& guide);
};

// The steps in the order of the tour; each begins where the one before it has ended.

std::vector<Step> ChartSteps();
/// The cursor line, its dialog and what else there is to a chart, in a tab that is closed at the
/// end.
std::vector<Step> CursorSteps();
/// The bar of periods, the history data and what is typed on the chart, in both languages, in a tab
/// that is closed at the end.
std::vector<Step> PeriodSteps();
/// The compare dialog and its chart, in both languages.
std::vector<Step> CompareSteps();
/// The data viewer, in both languages. Leaves files that it saved beside the pictures, and what it
/// showed: "data-zh-fixed.csv", ..., "data-zh-shown.json".
std::vector<Step> ViewerSteps();
/// The first writes the file that the second reads.
std::vector<Step> GroupFileSteps();
/// Everything stays as it was.
std::vector<Step> SheetSteps();
/// The first draws the lines that the others show.
std::vector<Step> DrawingSteps();

/// Adds a group by the sheet, which then is shown; with a picture of that name when it is not null.
void AddGroupInSheet(Guide& guide, const QString& name, const char* picture);

}  // namespace ta::tour
