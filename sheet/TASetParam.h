#pragma once

#include "platform/Export.h"
#include "platform/Study.h"
#include "platform/Types.h"
#include "platform/ui/PropertyPage.h"

#include <memory>
#include <vector>

namespace Ui {
class TASetParam;
}

/// The settings sheet's study and parameter page: left the panes of the active group with their
/// studies, right the editor of the selected study. Edits live in a draft until they are saved.
/// Outside a settings sheet it works alone, on the group of SetInitialSelection.
class TADIALOGS_EXPORT CTASetParam : public ta::ui::PropertyPage {
    Q_OBJECT

public:
    CTASetParam();
    ~CTASetParam() override;

    /// What is shown when the page first becomes active; see CTaSettingSheet.
    void SetInitialSelection(const CString& group, int nShowCount, int nSelPane, int nSelStudy);
    void SetStudySpecialType(VolumeAmountType type, bool first, bool second);

    /// Whether study settings were edited: a draft differs from the repository, or edits were
    /// saved.
    bool IsEditStudy() const;
    /// Writes the drafts that differ into the repository and reports their groups to the sheet. 1;
    /// 0, and nothing is written, when a value is out of range or against a rule.
    int SaveStudy();
    /// Types of the saved studies, in order of saving; one that is saved twice stands there twice.
    const std::vector<StudyType>& GetChangeStudyType() const;
    /// Display names of the lines whose settings were saved.
    const std::vector<CString>& GetChangeStudyName() const;

    /// The studies and pane count of a group as drafted; null and -1 without a draft of them.
    const std::vector<std::vector<StudyType>>* DraftStudies(const CString& group) const;
    int DraftShowCount(const CString& group) const;
    /// Another page has stored the studies of the group: they are no longer drafted. Whether they
    /// were.
    bool TakeDraftStudies(const CString& group);

    /// Whether a draft differs from the repository.
    bool HasEdits() const;
    /// The repository has just been loaded again: drafts of groups that are gone will be dropped.
    void NoteReload();
    /// The names of the groups whose drafts a reload has taken since the last time.
    std::vector<CString> TakeLostDrafts();
    /// Shows the drafts on the repository's new state.
    void OnSettingsReloaded();

    void OnSetActive() override;
    bool CanSave() override;

protected:
    bool OnInitDialog() override;
    void OnCancel() override;

private:
    struct TADIALOGS_HIDDEN State;

    void ConnectControls();
    void AddShortcuts();
    void UpdateButtons();

    void SelectAtFirst(int pane, int study);
    void Refresh();
    void FillTree();
    void ShowCurrentStudy();
    void ShowFaults();
    bool ShowFirstFault();

    bool IsTreeUpToDate();
    void SetStudies(const std::vector<std::vector<StudyType>>& lists, int pane, int study);
    void OnShowCount(int count);
    void OnAddStudy();
    void OnRemoveStudy();
    void OnMove(int by);
    void OnMoveToPane(int by);
    void OnStudyDropped(int pane, int study, int toPane, int toStudy);
    bool RefuseFullPane(const std::vector<std::vector<StudyType>>& lists, int pane);
    void OnRestoreStudy();
    void OnRestoreGroup();
    bool AskRestore(const QString& question);

    std::unique_ptr<State> m_state;
    std::unique_ptr<Ui::TASetParam> m_ui;
};
