#pragma once

#include "platform/Types.h"

class QWidget;

namespace ta::terminal {

/// Where the settings sheet opens.
struct SettingsPlace {
    enum class Page { Groups, Studies };

    Page page = Page::Groups;
    CString group;
    int paneCount = 0;  ///< panes of the chart that shows the group
    int pane = 0;       ///< selected pane, from 0
    int study = 0;      ///< selected study in it, from 1; 0 for the pane
};

/// Runs the settings sheet over `parent`. What it saves is told to the chart views of the changed
/// groups; those whose group was deleted fall back on the default group. The group to show: the
/// active one of the sheet when the user has added it; else empty.
CString OpenSettings(QWidget& parent, const SettingsPlace& place);

/// Tells every chart view of every group, as after an edit that may have moved groups.
void TellChartsOfGroups();

}  // namespace ta::terminal
