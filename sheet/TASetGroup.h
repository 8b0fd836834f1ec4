#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/PropertyPage.h"

#include <map>
#include <memory>
#include <vector>

class CTaSettingSheet;

namespace Ui {
class TASetGroup;
}

/// The settings sheet's first page: the list of groups, the studies of the selected one by pane,
/// and the screens that use it. Adds, renames, deletes, imports, exports and reorders groups and
/// moves studies. Reordering the list and editing it exclude each other until the sheet is closed.
/// Outside a settings sheet the page works alone.
class TADIALOGS_EXPORT CTASetGroup : public ta::ui::PropertyPage {
    Q_OBJECT

public:
    CTASetGroup();
    ~CTASetGroup() override;

    /// 1 when the order of the groups was changed by dragging.
    int IsDragList() const { return m_bDragList; }
    /// 1 after an add, rename, delete or import.
    int IsEditGroup() const { return m_bEditGroup; }
    /// Stores the order of the groups and then the studies of the shown group, and clears the
    /// modified mark. Always 1.
    int SaveChange();
    /// Whether the page has changed what is not saved yet.
    bool HasEdits() const;
    /// The repository has just been loaded again, and what the page had changed in it is gone.
    void ForgetEdits();
    /// Shows the repository's new state.
    void OnSettingsReloaded();

    void OnSetActive() override;

protected:
    bool OnInitDialog() override;
    void OnCancel() override;

private:
    /// The studies of a group as the tree was filled with them.
    struct Studies {
        CString group;
        std::vector<std::vector<StudyType>> lists;
        int showCount = 0;

        bool operator==(const Studies&) const = default;
    };

    CTaSettingSheet* Sheet() const;
    void ConnectControls();
    void NameLists();

    void ReloadGroups(const CString& select);
    void ShowSelectedGroup();
    Studies ShownStudies() const;
    void RefreshStudies();
    void LoadScreens();
    void ShowScreens();
    void RefreshHint();
    void UpdateButtons();
    bool CanMoveStudy(int by) const;

    void StoreOrder();
    void StoreStudies();
    void ReportChange(int uniNum);
    void OnListEdited(const CString& select);

    void OnAdd();
    void OnModify();
    void OnDelete();
    void OnImport();
    void OnImported(int row);
    void OnExport();
    void OnMoveStudy(int by);
    void OnDragEnd();

    CString m_group;                                ///< whose studies are shown
    int m_bModify = 0;                              ///< 1: changed since the last save
    int m_bEditGroup = 0;                           ///< see IsEditGroup
    int m_bDragList = 0;                            ///< see IsDragList
    bool m_canEdit = true;                          ///< false once the order was dragged
    Studies m_studies;                              ///< what the tree shows
    std::map<int, std::vector<CString>> m_screens;  ///< lines of the screens list by UniNum
    std::unique_ptr<Ui::TASetGroup> m_ui;
};
