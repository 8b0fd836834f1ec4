#pragma once

#include "platform/Types.h"
#include "terminal/parameters/StudySettings.h"

#include <vector>

/// The settings of a group's studies, from and to the settings repository. Whoever needs several of
/// these calls to see one state holds reloads off around them.
namespace ta::terminal {

/// The studies in the panes of a group that the catalogue knows, each once, in the order of the
/// panes; none for an unknown group.
std::vector<StudyType> StudiesOfGroup(const CString& group);

/// What the group sets of each of the studies, in their order; none for an unknown group.
std::vector<StudySettings> ReadGroup(const CString& group, const std::vector<StudyType>& studies);

/// Sets them in the group, in memory. The studies that were refused, because the group is not there
/// or a value is not allowed; those are left as they were.
std::vector<StudyType> WriteGroup(const CString& group, const std::vector<StudySettings>& studies);

}  // namespace ta::terminal
