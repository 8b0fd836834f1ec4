#pragma once

class QPoint;
class QString;

// What the commands open, one subject a source file. An opener works on the chart in front, opens
// its dialog over the frame's window, returns when that has closed, and leaves the focus to the
// chart where it has shown something there.

namespace ta::terminal {

struct Frame;

/// Asks for a price file and shows it.
void OpenPriceFile(const Frame& frame);
/// Reads a price file of the user's and shows it. false when it was not opened: the user was told
/// why or has cancelled, or another one is being read.
bool OpenPriceFile(const Frame& frame, const QString& path);

/// Chooses symbols for the comparison in front, or for a new one that begins with the symbol and
/// the history of the chart in front. Without a base date the first day of the data is offered, and
/// stays none unless the user chooses another.
void CompareSymbols(const Frame& frame);

/// The data viewer of the chart, which stays open beside it.
void ViewData(const Frame& frame);

/// The layout dialog on the tab in front, which is arranged as the user chooses.
void ChooseLayout(const Frame& frame);

/// The settings sheet on the chart's group.
void EditGroups(const Frame& frame);
/// The same on the studies, with one of a pane selected: `pane` from 0, `study` from 1, 0 the pane.
void EditStudies(const Frame& frame, int pane, int study);
/// Tells every chart view of every group, as after an edit that may have moved groups.
void TellChartsOfGroups();

/// Whether a file is a group file by its name.
bool IsGroupFile(const QString& path);
/// The export dialog.
void ExportGroups(const Frame& frame);
/// Asks for a group file and opens the import dialog on it.
void ImportGroups(const Frame& frame);
/// The same on a file. The charts are told of what came in. false when nothing changed.
bool ImportGroups(const Frame& frame, const QString& path);

/// Asks for studies of the chart's group and writes their parameters and shapes to a text file.
void ExportParameters(const Frame& frame);
/// Asks for such a file, shows what it changes in the chart's group, and takes what the user wants.
void ImportParameters(const Frame& frame);

/// How the cursor line of the chart's group is drawn, moves and locks. What is chosen is saved with
/// the group's options, and every chart of the group follows.
void SetCursorLine(const Frame& frame);

/// The list of the user's lines; shows the one that was chosen.
void ListLines(const Frame& frame);

/// The history data dialog on the chart's data period; the chart loads what was asked for.
void SetHistory(const Frame& frame);

/// The range of the value axis in hand (see ChartPage::AxisInHand), in a dialog.
void SetValueRange(const Frame& frame);
/// Every range that was set by hand becomes automatic.
void MakeRangesAutomatic(const Frame& frame);
/// The width of the value axes, and the space after the latest bar, in a dialog.
void SetAxisWidth(const Frame& frame);
void SetEdgeSpace(const Frame& frame);
/// The menu of a value axis, at a place of the screen; `pane` and `scale` as AxisPlace has them.
/// Does not wait for its end.
void ShowAxisMenu(const Frame& frame, int pane, int scale, const QPoint& position);

void ShowAbout(const Frame& frame);

}  // namespace ta::terminal
