#pragma once

#include "sheet/GroupDraft.h"

#include <list>
#include <set>

namespace ta::sheet {

/// The drafts of all groups that were edited. A draft follows its group when that is renamed and
/// goes when the group goes.
class GroupDrafts {
public:
    GroupDrafts();

    /// Null when nothing of the group was drafted. The draft lives until Update or OnReloaded.
    GroupDraft* Find(const CString& group);
    /// The group's draft, made when there is none.
    GroupDraft& At(const CString& group);
    std::list<GroupDraft>& All() { return m_drafts; }

    /// Follows the changes in the repository's list of groups.
    void Update() { Follow(false); }
    /// The same when the repository was loaded again, which may give numbers to other groups.
    void OnReloaded();

    bool IsChanged() const;

private:
    /// Empty when the group is gone.
    CString NameNow(const GroupDraft& draft, bool reloaded) const;
    void Follow(bool reloaded);
    void NoteLoaded();

    std::list<GroupDraft> m_drafts;
    std::set<int> m_loaded;  ///< numbers of the groups that came from the store
};

}  // namespace ta::sheet
