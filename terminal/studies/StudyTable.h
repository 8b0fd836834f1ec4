#pragma once

#include "terminal/studies/StudyDefinition.h"

#include <vector>

namespace ta::terminal {

/// Every study of the terminal: category by category in the order in which lists show them. The
/// numbers of the types stand in users' settings and files and never change; 0, 4, 16, 22 and 23
/// are those of the default group. Made on first use, after the code page is selected.
const std::vector<StudyDefinition>& StudyTable();

}  // namespace ta::terminal
