#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>
#include <vector>

namespace Ui {
class TAGroupExport;
}

/// Writes the indicator groups that the user checks to a group file. Modal; DoModal gives kIdOk,
/// whatever came of the export, or kIdCancel when the user left without one. No operation throws.
class TADIALOGS_EXPORT CTAGroupExport : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// Reads the names of the process-wide repository; groups that come later are not seen.
    /// `parent` may be null and stays the caller's.
    explicit CTAGroupExport(QWidget* parent = nullptr);
    ~CTAGroupExport() override;

    /// Asks for a path and writes the file; messages tell what came of it, and which groups the
    /// file cannot carry unchanged. 0 when no path was chosen, else 1.
    int SelectPathAndExport();
    /// Asks for a path until the name has no "*", which is told, and a new file shall be made.
    /// kIdOk; kIdCancel, and an empty path, when the user cancelled; 0 when the file dialog could
    /// not be shown, which is told.
    int GetSaveFilePath(QString& path);
    /// 1 when there is a file or folder at the path, else 0.
    static int CheckFileExist(const QString& path);
    /// Saves the repository and writes the checked groups; all groups when the list is not filled.
    /// An existing file is not deleted first: it is replaced as a whole, or stays as it was when
    /// anything fails. 1 after writing. 0 when nothing was written: no path, or a failure, which
    /// the user is told of.
    int ExportFile(const QString& path);

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void vFillItem();
    void OnButtonSelect();
    std::vector<CString> ExportList() const;
    void TellGroupsNotCarried(const QString& path);

    std::vector<CString> m_groupNames;
    int m_checkAll = 1;  ///< what the select-all button does next: 1 checks all, 0 unchecks all
    std::unique_ptr<Ui::TAGroupExport> m_ui;
};
