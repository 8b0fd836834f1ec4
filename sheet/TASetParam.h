#pragma once

#include "platform/Export.h"
#include "platform/Study.h"
#include "platform/Types.h"
#include "sheet/SessionPage.h"

#include <memory>
#include <vector>

namespace ta::sheet {
struct Place;
struct StudyPageState;
}  // namespace ta::sheet

namespace Ui {
class TASetParam;
}

/// The settings sheet's study and parameter page: left the panes of the active group with their
/// studies, right the editor of the selected study. Edits live in a draft until they are saved.
/// Outside a settings sheet it works alone, on the group of SetInitialSelection.
class TADIALOGS_EXPORT CTASetParam : public ta::sheet::SessionPage {
    Q_OBJECT

public:
    CTASetParam();
    ~CTASetParam() override;

    /// What is shown when the page first becomes active; see CTaSettingSheet.
    void SetInitialSelection(const CString& group, int nShowCount, int nSelPane, int nSelStudy);
    void SetStudySpecialType(VolumeAmountType type, bool first, bool second);

    /// Writes the drafts that differ into the repository and reports their groups to the sheet. 1;
    /// 0, and nothing is written, when a value is out of range or against a rule; 0 too, and told,
    /// when the chart module refuses the settings of a study.
    int SaveStudy();
    /// Shows the drafts on the repository's new state.
    void OnSettingsReloaded();

    void OnSetActive() override;
    bool CanSave() override;

protected:
    bool OnInitDialog() override;
    bool HasEdits() const override;
    void WriteEdits() override;

private:
    void ConnectControls();
    void AddShortcuts();
    void UpdateButtons();

    void Refresh();
    /// Selects the place; null for the one that was selected.
    void FillTree(const ta::sheet::Place* select = nullptr);
    void ShowCurrentStudy();
    void ShowFaults();
    void ShowFirstFault();
    bool IsGroupUpToDate();
    bool IsTreeUpToDate();

    void SetStudies(const std::vector<std::vector<StudyType>>& lists, ta::sheet::Place place);
    bool RefuseFullPane(const std::vector<std::vector<StudyType>>& lists, int pane);
    void OnParamEdited(int index, const QString& text);
    void OnShapeEdited(int index, const StudyShape& shape);
    void OnShowCount(int count);
    void OnAddStudy();
    void OnRemoveStudy();
    void OnMove(int by);
    void OnMoveToPane(int by);
    void OnStudyDropped(int pane, int study, int toPane, int toStudy);
    void OnRestoreStudy();
    void OnRestoreGroup();

    std::unique_ptr<ta::sheet::StudyPageState> m_state;
    std::unique_ptr<Ui::TASetParam> m_ui;
};
