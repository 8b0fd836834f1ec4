#pragma once

class QString;

namespace ta::terminal {

class PaneHeights;

// The heights of panes in the file of the frame's state, beside what else is there: the settings'
// window layout key of a group is a number of the terminal that wrote it, without room for them.

/// What makes no sense is left out.
void LoadPaneHeights(const QString& path, PaneHeights& heights);
/// Those of groups that are there. false when the file cannot be written.
bool SavePaneHeights(const QString& path, const PaneHeights& heights);

}  // namespace ta::terminal
