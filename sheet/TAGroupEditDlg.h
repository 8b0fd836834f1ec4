#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>

namespace Ui {
class TAGroupEditDlg;
}

/// Asks for the name of a group: types a new one, edits an old one, or picks an existing group that
/// is to be replaced. Whether the name is in use is the caller's business. Modal; DoModal gives
/// kIdOk with a name of 1 to 30 bytes, or kIdCancel with the name as it was.
class TADIALOGS_EXPORT CTAGroupEditDlg : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// What the dialog is for; any other number shows it as for adding, with the form's own title.
    enum Mode { kAdd = 0, kModify = 1, kReplace = 2 };

    explicit CTAGroupEditDlg(QWidget* parent = nullptr);
    ~CTAGroupEditDlg() override;

    /// Before the dialog is shown; kAdd at first.
    void SetMode(int mode) { m_mode = mode; }
    /// What the edit box holds at first; not for kReplace, which selects the first group.
    void SetName(const CString& name) { m_name = name; }
    const CString& GetName() const { return m_name; }

    void setVisible(bool visible) override;

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    /// The window has no close box: it is left by OK, Cancel or Escape.
    void closeEvent(QCloseEvent* event) override;

private:
    void ShowEdit();
    void ShowGroups();
    /// Says at the field which characters of the last edit became "?".
    void ShowLacking();
    CString EnteredName() const;

    int m_mode = kAdd;
    CString m_name;
    QString m_lacking;
    std::unique_ptr<Ui::TAGroupEditDlg> m_ui;
};
