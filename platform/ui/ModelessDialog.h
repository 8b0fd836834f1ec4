#pragma once

#include "platform/Window.h"
#include "platform/ui/DialogBase.h"

namespace ta::ui {

/// A window that stays open beside its owner, which makes it, shows it with show(), and deletes it.
/// Enter, Escape and the close box do not close it: OnCancel tells the owner with a posted message,
/// and the owner deletes the window when that message comes, no longer in one of its handlers. A
/// change of the language reaches it like every dialog.
class TADIALOGS_EXPORT ModelessDialog : public DialogBase {
    Q_OBJECT

public:
    /// `owner` receives the posted messages; null: nobody does. It outlives the window. `parent` as
    /// for every dialog: the window stays in front of it, and goes with it.
    explicit ModelessDialog(CWnd* owner, QWidget* parent = nullptr);

protected:
    /// Nothing: a modeless window has no result.
    void OnOK() override;
    /// Nothing; a window that can be closed posts its close message here.
    void OnCancel() override;
    /// One tick of the timer `id`. The base does nothing.
    virtual void OnTimer(int id);

    /// Posts to the owner; the message is dropped when the owner goes before its turn.
    void PostToOwner(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
    /// Starts a repeating timer, or gives a running one another period; ticks come as OnTimer(id)
    /// until KillTimer or the window's end.
    void SetTimer(int id, int milliseconds);
    void KillTimer(int id);

private:
    CWnd* m_owner;
};

}  // namespace ta::ui
