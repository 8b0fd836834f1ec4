#include "sheet/GroupDrafts.h"

#include "settings/TaSettingHandle.h"
#include "sheet/GroupRows.h"

#include <algorithm>

namespace ta::sheet {
namespace {

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

}  // namespace

GroupDrafts::GroupDrafts() {
    NoteLoaded(GroupNames());
}

void GroupDrafts::NoteLoaded(const std::vector<CString>& names) {
    m_loaded.clear();
    for (const CString& name : names) {
        m_loaded.insert(Repository().GetUniNumByGroupName(name));
    }
}

GroupDraft* GroupDrafts::Find(const CString& group) {
    const auto found = std::ranges::find(m_drafts, group, &GroupDraft::Group);
    return found == m_drafts.end() ? nullptr : &*found;
}

GroupDraft& GroupDrafts::At(const CString& group) {
    GroupDraft* draft = Find(group);
    return draft != nullptr ? *draft : m_drafts.emplace_back(group);
}

CString GroupDrafts::NameNow(const GroupDraft& draft, const std::vector<CString>& names,
                             bool reloaded) const {
    const auto isListed = [&names](const CString& name) {
        return std::ranges::find(names, name) != names.end();
    };
    const bool sameNumber = Repository().GetUniNumByGroupName(draft.Group()) == draft.UniNum();
    if (isListed(draft.Group()) && (reloaded || sameNumber)) {
        return draft.Group();
    }
    // A group that was not stored goes with a reload, and another one may get its number.
    if (reloaded && !m_loaded.contains(draft.UniNum())) {
        return {};
    }
    const CString name = Repository().GetGroupNameByUniNum(draft.UniNum());
    return isListed(name) ? name : CString();
}

void GroupDrafts::Update() {
    // The one question that may load the repository again; behind it nothing moves.
    const std::vector<CString> names = GroupNames();
    const bool reloaded = std::exchange(m_reloaded, false);
    std::set<CString> kept;
    for (auto draft = m_drafts.begin(); draft != m_drafts.end();) {
        const CString name = NameNow(*draft, names, reloaded);
        if (!name.empty() && kept.insert(name).second) {
            draft->SetGroup(name);
            ++draft;
            continue;
        }
        if (reloaded && draft->HasEdits()) {
            m_lost.push_back(draft->Group());
        }
        draft = m_drafts.erase(draft);
    }
    if (reloaded) {
        NoteLoaded(names);
    }
}

bool GroupDrafts::IsChanged() const {
    return std::ranges::any_of(m_drafts, &GroupDraft::IsChanged);
}

}  // namespace ta::sheet
