#pragma once

#include "settings/GroupRecord.h"

/// Edits of a group's study lists (10 panes of 8 slots). Panes and studies count from 0.
namespace ta::sheet {

int StudyCount(const StudyLists& lists, int pane);
bool IsPaneFull(const StudyLists& lists, int pane);
/// kNoStudy when there is none.
StudyType StudyAt(const StudyLists& lists, int pane, int study);

/// At the end of the pane, which must not be full.
void AppendStudy(StudyLists& lists, int pane, StudyType type);
void RemoveStudy(StudyLists& lists, int pane, int study);
/// Puts a study before the study `toStudy` of a pane (behind the last when that is their number),
/// which must not be full unless it is the study's own. Returns its place there.
int MoveStudy(StudyLists& lists, int pane, int study, int toPane, int toStudy);
/// Exchanges all of two panes.
void SwapPanes(StudyLists& lists, int pane, int other);

}  // namespace ta::sheet
