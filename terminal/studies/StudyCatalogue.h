#pragma once

#include "terminal/studies/StudyDefinition.h"

#include <vector>

/// The studies of this terminal as the interfaces that the library and the chart views see them
/// through. One set of objects a process, made on first use.
namespace ta::terminal {

/// In the order of the table.
const std::vector<StudyInfo*>& AllStudies();

/// Null for a study that is not in the table. O(log n).
StudyInfo* FindStudy(StudyType type);

/// The table's row of a study; null for a study that is not in the table.
const StudyDefinition* FindStudyDefinition(StudyType type);

}  // namespace ta::terminal
