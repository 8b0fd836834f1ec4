#pragma once

#include "sheet/GroupDraft.h"

#include <list>
#include <set>
#include <utility>
#include <vector>

namespace ta::sheet {

/// The drafts of all groups that were edited. A draft follows its group when that is renamed and
/// goes when the group goes.
class GroupDrafts {
public:
    GroupDrafts();

    /// Null when nothing of the group was drafted. The draft lives until Update.
    GroupDraft* Find(const CString& group);
    /// The group's draft, made when there is none.
    GroupDraft& At(const CString& group);
    std::list<GroupDraft>& All() { return m_drafts; }

    /// Follows the changes in the repository's list of groups.
    void Update();
    /// The repository was loaded again, which may give numbers to other groups; the next Update
    /// looks for them. Draft objects stay until then.
    void NoteReload() { m_reloaded = true; }
    /// The names of the groups whose edits went since the last time, because a reload took them.
    std::vector<CString> TakeLost() { return std::exchange(m_lost, {}); }

    bool IsChanged() const;

private:
    /// Empty when the group is not among `names` any more.
    CString NameNow(const GroupDraft& draft, const std::vector<CString>& names,
                    bool reloaded) const;
    void NoteLoaded(const std::vector<CString>& names);

    std::list<GroupDraft> m_drafts;
    std::set<int> m_loaded;  ///< numbers of the groups that came from the store
    std::vector<CString> m_lost;
    bool m_reloaded = false;
};

}  // namespace ta::sheet
