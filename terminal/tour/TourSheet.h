#pragma once

#include <QString>

namespace ta::terminal {

class TourGuide;

// The steps of the tour in the settings sheet.

/// Adds a group by the sheet, which then is shown; with pictures named after `picture` when it is
/// not null.
void AddGroupInSheet(TourGuide& guide, const QString& name, const char* picture);

/// Refuses a name that is in use.
void ShowNameInUse(TourGuide& guide);
/// Both pages and their dialogs, in both languages; everything stays as it was.
void ShowSheet(TourGuide& guide);

}  // namespace ta::terminal
