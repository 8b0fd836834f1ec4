#pragma once

#include "platform/Window.h"
#include "platform/ui/DialogBase.h"
#include "terminal/parameters/ParameterChanges.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include <vector>

namespace ta::terminal {

/// Shows what a file of study parameters changes in a group, study by study, each with a check box;
/// in step with the settings repository while it is open. OK sets the checked studies and saves.
class ParameterPreviewDialog : public ui::DialogBase, public CView {
    Q_OBJECT

public:
    ParameterPreviewDialog(const CString& group, std::vector<StudySettings> file,
                           QWidget* parent = nullptr);
    ~ParameterPreviewDialog() override;

    bool HasChanges() const { return !m_changes.empty(); }
    /// How many studies were set; after kIdOk.
    int TakenCount() const { return m_taken; }

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void MakeControls();
    std::vector<StudyChanges> ChangesNow() const;
    void Refresh();
    void Fill(std::vector<StudyChanges> changes);
    QTreeWidgetItem& AddStudy(const StudyChanges& study, bool checked);
    void CheckAll();
    void ShowState();
    std::vector<StudySettings> Checked() const;
    std::vector<StudyType> Save();

    CString m_group;
    std::vector<StudySettings> m_file;
    std::vector<StudyChanges> m_changes;  ///< one a row of the list
    int m_taken = 0;
    QLabel* m_heading;
    QTreeWidget* m_list;
    QLabel* m_count;
    QPushButton* m_select;
    QPushButton* m_ok;
    QPushButton* m_cancel;
};

}  // namespace ta::terminal
