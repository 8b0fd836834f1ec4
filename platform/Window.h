#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

/// A window that messages can be sent and posted to. Not a toolkit widget: a chart view of the
/// terminal derives from CView next to its widget class and handles what it is sent in WindowProc.
class TADIALOGS_EXPORT CWnd {
public:
    CWnd() = default;
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// Handles one message; the result goes back to the sender. The base answers 0.
    virtual std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);

    /// Makes the window exist, hidden, as a child of `parent` (which may be null and stays the
    /// caller's). Does nothing when it exists.
    void CreateHiddenChild(CWnd* parent);
    void DestroyWindow();
    bool IsWindow() const { return m_exists; }
    CWnd* GetParent() const { return m_parent; }

private:
    bool m_exists = false;
    CWnd* m_parent = nullptr;
};

/// A chart view: what registers with the settings repository.
class TADIALOGS_EXPORT CView : public CWnd {};

namespace ta::window {

/// The number of a message name: the same number for the same name in the whole process, in
/// 0xC000 to 0xFFFF; 0 when no number is left.
TADIALOGS_EXPORT unsigned RegisterWindowMessageA(const CString& name);

/// Delivers synchronously: returns what the window's WindowProc answered, after it has answered.
TADIALOGS_EXPORT std::intptr_t SendMessageA(CWnd& window, unsigned message, std::uintptr_t wParam,
                                            std::intptr_t lParam);

/// Returns at once; the window's WindowProc is called from the event loop, after all messages that
/// were posted before. A message whose window is destroyed before its turn is dropped.
TADIALOGS_EXPORT void PostMessageA(CWnd& window, unsigned message, std::uintptr_t wParam,
                                   std::intptr_t lParam);

/// Delivers the oldest posted message; false when none is waiting. The event loop calls it, and
/// tests that want to see what was posted.
TADIALOGS_EXPORT bool DeliverPostedMessage();

/// `hook` is called for every posted message, those that already wait included, and sees to it that
/// DeliverPostedMessage is called later, from the event loop. Null: nobody delivers. The dialogs
/// install theirs; without any dialog there is none.
TADIALOGS_EXPORT void SetPostHook(void (*hook)());

}  // namespace ta::window
