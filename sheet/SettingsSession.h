#pragma once

#include "platform/Types.h"
#include "sheet/GroupDraft.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace ta::settings {
class SettingsSnapshot;
}

namespace ta::sheet {

/// One editing of the settings, from opening the sheet to its end: the group that is shown, the
/// drafts, what was done to the list of groups, what changed, and the state to go back to. The
/// pages work on it and know nothing of each other.
///
/// Edits of the list of groups, and the studies that the group page stores, are in the repository's
/// memory at once; all others stay in the drafts until Write. When another party has saved, the
/// repository's new state is taken: the edits of the list are gone, the drafts stand on it. That
/// happens within any question to the repository; a draft that was asked for stays valid until
/// AcknowledgeReload.
class SettingsSession {
public:
    /// What a reload did since the last AcknowledgeReload.
    struct ReloadNews {
        bool pending = false;             ///< there was one
        bool lostListEdits = false;       ///< with edits of the list of groups
        std::vector<CString> lostDrafts;  ///< groups that are gone, with their drafts
    };

    /// Commits what is pending in the store: leaving everything as it was means as it is now.
    SettingsSession();
    ~SettingsSession();
    SettingsSession(const SettingsSession&) = delete;
    SettingsSession& operator=(const SettingsSession&) = delete;

    // ---- The group that the pages show; after a reload the one of its number, or the first ----

    const CString& ActiveGroup() const { return m_active; }
    void SetActiveGroup(const CString& name);

    // ---- Drafts ----

    /// The group's draft, made when there is none.
    GroupDraft& Draft(const CString& group);
    std::list<GroupDraft>& Drafts() { return m_drafts; }
    /// Forgets all edits of a group.
    void DropDraft(const CString& group);
    bool HasDraftEdits() const;
    /// Writes the drafts into the repository and reports their groups. The names of the studies
    /// that the chart module refused; they stay drafted.
    QStringList WriteDrafts();
    /// The same with the studies of one group alone.
    void WriteStudies(const CString& group);
    /// What there is to know about a study, with the defaults of a new group; nothing for one that
    /// the chart module does not know.
    std::optional<StudyFacts> Facts(StudyType type);

    // ---- The list of groups ----

    // false, and nothing changes, where the repository refuses.
    bool AddGroup(const CString& name);
    bool RenameGroup(const CString& oldName, const CString& newName);
    /// Takes the name off the list, unless it is the last one.
    bool DeleteGroup(const CString& name);
    /// Puts the groups into the order of `names`; groups that it lacks stand behind.
    void StoreOrder(const std::vector<CString>& names);
    /// These groups came from a file: what was drafted under their names is gone.
    void NoteImport(const std::vector<CString>& imported);
    void NoteModified() { m_modified = true; }
    void ClearModified() { m_modified = false; }
    void SetDragged(bool dragged) { m_dragged = dragged; }
    void SetEdited() { m_edited = m_unstored = true; }
    bool IsDragged() const { return m_dragged; }
    bool IsEdited() const { return m_edited; }
    /// Whether the list, or the order of studies on the group page, has unsaved changes.
    bool HasListEdits() const;

    // ---- What changed, for the creator of the sheet; see CTaSettingSheet ----

    void ReportGroup(unsigned value);
    void GetChangeGroupList(std::vector<unsigned>& out);
    const std::vector<StudyType>& ChangedStudies() const { return m_written.types; }
    const std::vector<CString>& ChangedNames() const { return m_written.shapeNames; }
    bool IsStudyEdited() const { return m_written.any || HasDraftEdits(); }

    // ---- The end ----

    /// The answer to the close-time question.
    void SetAnswer(bool save);
    /// An answer to save came to nothing.
    void TakeBackAnswer() { m_save = false; }
    bool IsToBeSaved() const { return m_save; }
    bool IsAnswered() const { return m_answered; }
    bool HasEdits() const { return HasDraftEdits() || HasListEdits(); }
    /// Gives the repository and the store back the state at the beginning, or, when another party
    /// has saved since, the state that it has left.
    void Discard();

    // ---- Reloads ----

    /// `onReload` runs when the repository was loaded again, within the question that did it.
    void WatchReloads(std::function<void()> onReload) { m_onReload = std::move(onReload); }
    /// Reloads change the session no more, what was edited is still told.
    void StopWatching();
    const ReloadNews& News() const { return m_news; }
    void AcknowledgeReload();

private:
    class Watch;

    void OnReloaded();
    CString NameNow(const CString& name, int uniNum, const std::vector<CString>& names) const;
    void RebaseDrafts(const std::vector<CString>& names);
    void RememberState();

    CString m_active;
    int m_activeNumber = -1;
    std::list<GroupDraft> m_drafts;
    std::list<GroupDraft> m_gone;  ///< dropped, alive until nobody can hold them
    std::unique_ptr<StudyDefaults> m_defaults;

    bool m_modified = false;  ///< changed since the group page's last save
    bool m_edited = false;    ///< a group was added, renamed, deleted or imported
    bool m_unstored = false;  ///< since the last import, which stores what was edited before
    bool m_dragged = false;   ///< the order was changed by dragging

    std::vector<unsigned> m_changed;
    GroupDraft::Written m_written;
    bool m_save = false;
    bool m_answered = false;

    std::vector<CString> m_namesAtFirst;
    std::unique_ptr<settings::SettingsSnapshot> m_before;
    std::set<int> m_stored;  ///< numbers of the groups that came from the store
    ReloadNews m_news;
    std::function<void()> m_onReload;
    std::unique_ptr<Watch> m_watch;
};

}  // namespace ta::sheet
