#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "sheet/SessionPage.h"

#include <map>
#include <memory>
#include <vector>

namespace Ui {
class TASetGroup;
}

/// The settings sheet's first page: the list of groups, the studies of the selected one by pane,
/// and the screens that use it. Adds, renames, deletes, imports, exports and reorders groups and
/// moves studies. Reordering the list and editing it exclude each other until the sheet is closed.
/// Outside a settings sheet the page works alone.
class TADIALOGS_EXPORT CTASetGroup : public ta::sheet::SessionPage {
    Q_OBJECT

public:
    CTASetGroup();
    ~CTASetGroup() override;

    /// 1 when the order of the groups was changed by dragging.
    int IsDragList() const;
    /// 1 after an add, rename, delete or import.
    int IsEditGroup() const;
    /// Stores the order of the groups and then the studies of the shown group, and clears the
    /// modified mark. Always 1.
    int SaveChange();
    /// Shows the repository's new state.
    void OnSettingsReloaded();

    void OnSetActive() override;

protected:
    bool OnInitDialog() override;
    void vLoadLanguageString() override;
    bool HasEdits() const override;
    void WriteEdits() override;

private:
    void ConnectControls();
    void AddShortcuts();

    void ReloadGroups(const CString& select);
    void ShowSelectedGroup();
    void RefreshStudies();
    void LoadScreens();
    void ShowScreens();
    void RefreshHint();
    void UpdateButtons();

    void StoreOrder();
    void StoreStudies();
    void OnListEdited(const CString& select);

    void OnAdd();
    void OnModify();
    void OnDelete();
    void OnImport();
    void OnExport();
    void OnMoveStudy(int by);
    void OnDragEnd();

    CString m_group;                                ///< whose studies are shown
    int m_showCount = 0;                            ///< how many panes of it
    bool m_canEdit = true;                          ///< false once the order was dragged
    std::map<int, std::vector<CString>> m_screens;  ///< lines of the screens list by UniNum
    std::unique_ptr<Ui::TASetGroup> m_ui;
};
