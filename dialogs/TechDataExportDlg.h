#pragma once

#include "dialogs/TechDataModel.h"
#include "dialogs/TechDataWriter.h"
#include "platform/ExportProfiles.h"
#include "platform/ui/DialogBase.h"

#include <memory>
#include <vector>

namespace Ui {
class TechDataExportDlg;
}

namespace ta::techdata {

/// The user chooses how a table is saved: by a profile that he keeps, or by one that he makes for
/// this time. Modal; DoModal gives kIdOk or kIdCancel, and Profile what was chosen.
class TechDataExportDlg : public ui::DialogBase {
    Q_OBJECT

public:
    /// `model` outlives this. `selected` are the rows that the user has selected.
    TechDataExportDlg(const TechDataModel& model, const CString& title,
                      std::vector<RowRange> selected, QWidget* parent);
    ~TechDataExportDlg() override;

    /// What the controls say now.
    ExportProfile Profile() const;

protected:
    bool OnInitDialog() override;
    void vLoadLanguageString() override;
    /// Asks before characters get lost, and before a spreadsheet gets more lines than it takes.
    void OnOK() override;

private:
    void FillProfiles();
    void FillCombos();
    void ShowProfile(const ExportProfile& profile);
    void OnProfileChosen();
    void OnKeep();
    void OnDelete();
    void OnChanged();
    void EnableControls();
    bool Store(const std::vector<ExportProfile>& profiles);
    std::vector<RowRange> Rows(const ExportProfile& profile) const;
    QString PreviewText(const ExportProfile& profile) const;
    QString LostText(const ExportProfile& profile) const;
    QString TooLongText(const ExportProfile& profile) const;

    const TechDataModel& m_model;
    const TechDataTable& m_table;  ///< the model's
    CString m_title;
    std::vector<RowRange> m_selected;
    std::vector<ExportProfile> m_profiles;  ///< those that are kept
    bool m_areReadable = true;  ///< else none is kept or deleted: that would lose those there
    bool m_isShowing = false;   ///< the program sets the controls
    std::unique_ptr<Ui::TechDataExportDlg> m_ui;
};

}  // namespace ta::techdata
