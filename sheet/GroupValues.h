#pragma once

#include "settings/GroupRecord.h"
#include "sheet/StudyFacts.h"

#include <QStringList>

#include <map>
#include <vector>

class TaDrawInfo;

/// What the sheet edits of a group, as one value that can be compared.
namespace ta::sheet {

/// The settings of one study: a text per parameter and a shape per shape.
struct StudyValues {
    QStringList params;  ///< in their plain form (FormatNumber); as typed when it cannot be saved
    std::vector<StudyShape> shapes;

    bool operator==(const StudyValues&) const = default;
};

struct GroupValues {
    StudyLists studies;
    int showCount = 1;                          ///< panes shown, 1 to 10
    std::map<StudyType, StudyValues> settings;  ///< of the studies that were asked for

    bool operator==(const GroupValues&) const = default;
};

/// The group's draw info; null when it has none that knows studies. Valid until the repository is
/// asked again.
TaDrawInfo* DrawInfoOf(const CString& group);

/// What the repository holds of the group, without settings of studies. Nothing, and one pane, for
/// an unknown group.
GroupValues ReadGroup(const CString& group);
/// The settings of a study in the group; the study's defaults where the repository has none.
StudyValues ReadSettings(const CString& group, const StudyFacts& study);

/// Carries the edits, in which `value` differs from `base`, over to `now`: the lists as a whole,
/// settings one by one. All three have the same studies' settings.
GroupValues Rebased(const GroupValues& value, const GroupValues& base, const GroupValues& now);

/// The studies of the lists, each once, in order.
std::vector<StudyType> StudiesIn(const StudyLists& lists);

}  // namespace ta::sheet
