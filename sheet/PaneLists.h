#pragma once

#include "settings/GroupRecord.h"

#include <functional>

/// Edits of a group's study lists (10 panes of 8 slots). Panes and studies count from 0.
namespace ta::sheet {

/// A study of a pane; the pane itself with study -1; nothing with pane -1.
struct Place {
    int pane = -1;
    int study = -1;

    bool operator==(const Place&) const = default;
};

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
/// Exchanges what stands at a place, study or pane, with its next (`by` 1) or previous (-1)
/// sibling, which must be there. Returns its place then.
Place MoveBy(StudyLists& lists, Place place, int by);

/// Whether the first pane would lose its last study that `counts`. A group without one there gets
/// the default studies when it is loaded, in the place of those of its first panes.
bool EmptiesFirstPane(const StudyLists& before, const StudyLists& after,
                      const std::function<bool(StudyType)>& counts);

/// Where the study of `before` at a place is in `after`: at the place, elsewhere in its pane, in
/// another pane. The nearest place of the pane when it is gone.
Place PlaceAfter(const StudyLists& before, const StudyLists& after, Place place);

}  // namespace ta::sheet
