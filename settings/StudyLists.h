#pragma once

#include "settings/GroupRecord.h"

#include <functional>

/// The shape of a group's study lists and what fills it.
namespace ta::settings {

/// Makes `lists` the shape that every record keeps: 10 lists of 8 slots, all empty.
void InitStudyType(StudyLists& lists);

/// What a new group shows: prices with moving averages, volume, KD, MACD.
const StudyLists& DefaultStudyLists();

/// Whether the default lists hold the study.
bool IsDefaultStudy(StudyType type);

/// Fills an empty pane list of 8 slots from any list: `accept` chooses, no gaps are left, surplus
/// is dropped.
void FillPane(std::vector<StudyType>& pane, const std::vector<StudyType>& studies,
              const std::function<bool(StudyType)>& accept);
/// The same as a new list.
std::vector<StudyType> PackPane(const std::vector<StudyType>& studies,
                                const std::function<bool(StudyType)>& accept);

/// Any lists in the shape that a record keeps: 10 lists of 8, the filled slots in front.
StudyLists PackStudyLists(const StudyLists& lists);

}  // namespace ta::settings
