#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>
#include <vector>

namespace Ui {
class TAGroupExport;
}

/// Writes the indicator groups that the user checks to a group file. Modal; DoModal gives kIdOk or
/// kIdCancel.
class TADIALOGS_EXPORT CTAGroupExport : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// Reads the repository's group names; groups that come later are not seen.
    explicit CTAGroupExport(QWidget* parent = nullptr);
    ~CTAGroupExport() override;

    /// Asks for a path and writes the file; messages tell what came of it, and which groups the
    /// file cannot carry unchanged. 0 when no path was chosen, else 1.
    int SelectPathAndExport();
    /// Asks for a path. kIdOk; kIdCancel, and an empty path, when the user cancelled; 0 when the
    /// file dialog could not be shown.
    int GetSaveFilePath(QString& path);
    /// 1 when there is a file at the path, else 0.
    static int CheckFileExist(const QString& path);
    /// Saves the repository and writes the checked groups; all groups when the list is not filled.
    /// 1 after writing. 0 when nothing was written: no path, or a failure, which the user was told
    /// of; an existing file is then as it was.
    int ExportFile(const QString& path);

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void vFillItem();
    void vLoadLanguageString() override;
    void OnButtonSelect();
    bool IsChecked(int row) const;
    bool IsAnyChecked() const;
    std::vector<CString> ExportList() const;
    void TellGroupsNotCarried(const QString& path);

    std::vector<CString> m_groupNames;
    int m_checkAll = 1;  ///< what the select-all button does next: 1 checks all, 0 unchecks all
    std::unique_ptr<Ui::TAGroupExport> m_ui;
};
