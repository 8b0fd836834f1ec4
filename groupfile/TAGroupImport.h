#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>

class QListWidget;
class QListWidgetItem;

namespace Ui {
class TAGroupImport;
}

/// Merges the groups of a group file into the repository. Shows the existing groups, those of the
/// file and the list that will result, which the user can reorder. Modal; DoModal gives kIdOk when
/// the repository was changed and saved, kIdCancel when nothing was.
class TADIALOGS_EXPORT CTAGroupImport : public ta::ui::DialogBase {
    Q_OBJECT

public:
    explicit CTAGroupImport(const QString& path, QWidget* parent = nullptr);
    ~CTAGroupImport() override;

    /// 1 when the file can be read and is of the version that this program knows, else 0.
    int CheckImportFile();
    /// Loads one group of a group file into the repository, which is not saved. The group is added
    /// when it is not there. 1; 0, and nothing changes, when the file cannot be read.
    int ImportGroupSetting(const CString& name, const QString& path);

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    struct TADIALOGS_HIDDEN Merge;

    void vLoadLanguageString() override;
    void RegisterControls();
    void ConnectSummary(QListWidget& list);
    void RefuseWrongFile();
    void InitialGroupListBox();
    void InsertAllGroup();
    void UpdateRightListBox();
    void UpdateMergeList();
    void UpdateNotice(int maxCount, bool wasFull);
    void OnBtnReplaceExistGrp();
    void ShowSummary(const QListWidget& list, const QListWidgetItem* item);
    bool HasVanished(const CString& name) const;

    QString m_path;
    std::unique_ptr<Merge> m_merge;
    int m_replaceExisting = 1;
    std::unique_ptr<Ui::TAGroupImport> m_ui;
};
