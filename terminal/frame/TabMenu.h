#pragma once

namespace ta::terminal {

class ChartTabs;
class Commands;

/// Gives each tab a context menu with the commands for it: layout, new, close. The tab comes to the
/// front first. Both outlive it.
void AddTabMenu(ChartTabs& tabs, const Commands& commands);

}  // namespace ta::terminal
