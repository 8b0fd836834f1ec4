#pragma once

#include "platform/ProfileFile.h"
#include "settings/GroupRecord.h"

#include <vector>

class CTaSettingHandle;

namespace ta::groupfile {

/// What a group file carries of one group.
struct GroupContents {
    bool hasStudyLists = false;
    StudyLists studyLists;  ///< 10 lists of 8 slots, or empty
    bool hasParams = false;
    std::vector<CString> params;
    bool hasShapes = false;
    std::vector<CString> shapes;
    int showCount = 1;
    int wndShowKey = 1;
};

/// The studies of a pane, from 0, without the empty slots.
std::vector<StudyType> StudiesIn(const GroupContents& contents, std::size_t pane);

/// In what two contents differ. No strings and one empty string are the same: the file writes both
/// alike, and neither says anything.
struct GroupDifferences {
    bool showCount = false;
    bool wndShowKey = false;
    std::vector<int> panes;  ///< numbers from 1 of the panes with other studies
    bool params = false;
    bool shapes = false;

    bool Any() const { return showCount || wndShowKey || !panes.empty() || params || shapes; }
};

GroupDifferences Differences(const GroupContents& a, const GroupContents& b);

/// The contents of the repository's group; nothing but counts of 1 for an unknown one.
GroupContents ContentsInRepository(CTaSettingHandle& repository, const CString& name);

/// The contents that the file's section of this name gives an import. Missing keys take their
/// defaults: a show count of 1, the show count as layout key, one empty string as parameters and
/// shapes, study 0 in a pane without a value. A pane that is not shown and has no value stays
/// empty. `noMemory` is set when memory lacked for a value, which then counts as missing.
GroupContents ContentsInFile(const ProfileReader& file, const CString& name,
                             bool* noMemory = nullptr);

}  // namespace ta::groupfile
