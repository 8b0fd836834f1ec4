#pragma once

#include "platform/ui/DialogBase.h"

namespace ta::ui {

class PropertySheet;

/// One page of a property sheet: a dialog without frame and buttons of its own, filled when it is
/// first shown. The form's window title is the text of its tab. Shown without a sheet, it is
/// filled and active at once.
class TADIALOGS_EXPORT PropertyPage : public DialogBase {
    Q_OBJECT

public:
    PropertyPage();

    /// The sheet in which it stands, or null.
    PropertySheet* GetSheet() const;

    /// The page has come to the front; after OnInitDialog the first time.
    virtual void OnSetActive();
    /// Another page is about to come to the front; false keeps this one there.
    virtual bool OnKillActive();
    /// Whether what the user has entered can be saved. When not, the page selects the place and
    /// tells the reason there; the sheet has brought the page to the front.
    virtual bool CanSave();

    void setVisible(bool visible) override;

protected:
    /// The sheet is being closed with Cancel. The base does nothing.
    void OnCancel() override;
    /// Nothing: a page does not close.
    void OnOK() override;
    /// Enter outside of the page's buttons, and Escape, are the sheet's.
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class PropertySheet;
};

}  // namespace ta::ui
