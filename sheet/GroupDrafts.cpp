#include "sheet/GroupDrafts.h"

#include "settings/TaSettingHandle.h"

#include <algorithm>

namespace ta::sheet {
namespace {

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

}  // namespace

GroupDrafts::GroupDrafts() {
    NoteLoaded();
}

void GroupDrafts::NoteLoaded() {
    m_loaded.clear();
    std::vector<CString> names;
    Repository().GetGroupNameList(names);
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

void GroupDrafts::OnReloaded() {
    Follow(true);
    NoteLoaded();
}

CString GroupDrafts::NameNow(const GroupDraft& draft, bool reloaded) const {
    CTaSettingHandle& repository = Repository();
    const bool isListed = repository.FindGroup(draft.Group()) == 1;
    const bool sameNumber = repository.GetUniNumByGroupName(draft.Group()) == draft.UniNum();
    if (isListed && (reloaded || sameNumber)) {
        return draft.Group();
    }
    // A group that was not stored goes with a reload, and another one may get its number.
    if (reloaded && !m_loaded.contains(draft.UniNum())) {
        return {};
    }
    const CString name = repository.GetGroupNameByUniNum(draft.UniNum());
    return repository.FindGroup(name) == 1 ? name : CString();
}

void GroupDrafts::Follow(bool reloaded) {
    std::set<CString> names;
    for (auto draft = m_drafts.begin(); draft != m_drafts.end();) {
        const CString name = NameNow(*draft, reloaded);
        if (!name.empty() && names.insert(name).second) {
            draft->SetGroup(name);
            ++draft;
        } else {
            draft = m_drafts.erase(draft);
        }
    }
}

bool GroupDrafts::IsChanged() const {
    return std::ranges::any_of(m_drafts, &GroupDraft::IsChanged);
}

}  // namespace ta::sheet
