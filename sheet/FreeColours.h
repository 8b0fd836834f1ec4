#pragma once

#include "settings/GroupRecord.h"

namespace ta::sheet {

class GroupDraft;

/// The lines of a study that was just put into a pane of `lists` get colours that no other line of
/// the pane has, as far as there are any. Colours that the user has chosen stay, and all of a
/// study's that stands in the lists more than once, as its looks are the same everywhere.
void TakeFreeColours(GroupDraft& draft, const StudyLists& lists, int pane, StudyType added);

}  // namespace ta::sheet
