#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>
#include <vector>

class QListWidget;
class QListWidgetItem;

namespace Ui {
class TAGroupImport;
}

/// Merges the groups of a group file into the repository. Shows the existing groups, those of the
/// file and the list that will result, which the user can reorder. Modal; DoModal gives kIdOk when
/// the repository was changed and saved, kIdCancel when nothing was.
///
/// The file is read and parsed once: what is shown is what is imported, whatever becomes of the
/// file meanwhile. One that is missing or cannot be read is told as such, not as a wrong version,
/// and the dialog closes. Of a list of more than 1,000 names the first 1,000 are read, and the
/// dialog says so. Lack of memory for a value is told; the value counts as empty, and the import
/// goes on.
///
/// No operation throws. The repository is the process-wide one; the list that it gets at OK is the
/// one that is shown, less what another party has deleted since, and what it has added behind it.
class TADIALOGS_EXPORT CTAGroupImport : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// `path`: the group file, which is read when the dialog is filled or checked. `parent` may be
    /// null and stays the caller's.
    explicit CTAGroupImport(const QString& path, QWidget* parent = nullptr);
    ~CTAGroupImport() override;

    /// 1 when the file can be read and is of the version that this program knows, else 0. Lack of
    /// memory is told. A file that could be read is not read again.
    int CheckImportFile();
    /// Loads one group of any group file into the repository, which is not saved. The group is
    /// added when it is not there, and gets the defaults when the file does not have it. 1; 0, and
    /// nothing changes, when the file cannot be read, or for lack of memory, which is told.
    int ImportGroupSetting(const CString& name, const QString& path);

    /// After OK: the groups that the import added, and those that it loaded over existing ones, in
    /// the list's order.
    const std::vector<CString>& AddedGroups() const;
    const std::vector<CString>& OverwrittenGroups() const;
    /// After OK: what to tell the user, "IDS_TECHVIEW-STRING_GROUPIMPORT_IMPORT_OK" with both
    /// counts, or that the file had nothing to import.
    QString ResultText() const;

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    struct TADIALOGS_HIDDEN Merge;

    void ConnectSummary(QListWidget& list);
    QString ReadFile();
    void RefuseWrongFile();
    void InitialGroupListBox();
    void InsertAllGroup();
    void UpdateRightListBox();
    void UpdateMergeList();
    void UpdateNotice(int maxCount, bool wasFull);
    void OnBtnReplaceExistGrp();
    void ShowSummary(const QListWidget& list, const QListWidgetItem* item);
    std::vector<CString> LoadMergeList(bool& noMemory);

    QString m_path;
    std::unique_ptr<Merge> m_merge;
    int m_replaceExisting = 1;
    std::unique_ptr<Ui::TAGroupImport> m_ui;
};
