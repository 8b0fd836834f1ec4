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
/// The value axes: their dialogs and menus in both languages, and the charts that obey them, in a
/// tab that is closed at the end.
std::vector<Step> AxisSteps();
/// The compare dialog and its chart, in both languages.
std::vector<Step> CompareSteps();
/// The layout dialog in both languages, every layout, and what the charts of a tab have in common,
/// in a tab that is closed at the end. "layouts" has each layout's picture beside the tab.
std::vector<Step> LayoutSteps();
/// The data viewer, in both languages. Leaves files that it saved beside the pictures, and what it
/// showed: "data-zh-fixed.csv", ..., "data-zh-shown.json".
std::vector<Step> ViewerSteps();
/// The first writes the file that the second reads.
std::vector<Step> GroupFileSteps();
/// Study parameters from one group to another, in both languages; the groups are gone at the end.
std::vector<Step> ParameterSteps();
/// Everything stays as it was.
std::vector<Step> SheetSteps();
/// The first draws the lines that the others show.
std::vector<Step> DrawingSteps();

/// Adds a group by the sheet, which then is shown; with a picture of that name when it is not null.
void AddGroupInSheet(Guide& guide, const QString& name, const char* picture);

}  // namespace ta::tour
