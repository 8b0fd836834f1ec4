#include "platform/Window.h"

#include <deque>
#include <map>

namespace {

struct PostedMessage {
    CWnd* window;
    unsigned message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
};

/// Never destroyed: windows that live to the end of the process look into it.
std::deque<PostedMessage>& Posted() {
    static auto& messages = *new std::deque<PostedMessage>;
    return messages;
}

void (*g_postHook)() = nullptr;

}  // namespace

CWnd::~CWnd() {
    std::erase_if(Posted(), [this](const PostedMessage& each) { return each.window == this; });
}

std::intptr_t CWnd::WindowProc(unsigned, std::uintptr_t, std::intptr_t) {
    return 0;
}

void CWnd::CreateHiddenChild(CWnd* parent) {
    if (m_exists) {
        return;
    }
    m_exists = true;
    m_parent = parent;
}

void CWnd::DestroyWindow() {
    m_exists = false;
    m_parent = nullptr;
}

namespace ta::window {

unsigned RegisterWindowMessageA(const CString& name) {
    constexpr unsigned kFirst = 0xC000;
    constexpr unsigned kLast = 0xFFFF;
    static std::map<CString, unsigned> numbers;
    const auto found = numbers.find(name);
    if (found != numbers.end()) {
        return found->second;
    }
    const auto next = kFirst + static_cast<unsigned>(numbers.size());
    if (next > kLast) {
        return 0;
    }
    return numbers.emplace(name, next).first->second;
}

std::intptr_t SendMessageA(CWnd& window, unsigned message, std::uintptr_t wParam,
                           std::intptr_t lParam) {
    return window.WindowProc(message, wParam, lParam);
}

void PostMessageA(CWnd& window, unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    Posted().push_back({&window, message, wParam, lParam});
    if (g_postHook != nullptr) {
        g_postHook();
    }
}

bool DeliverPostedMessage() {
    if (Posted().empty()) {
        return false;
    }
    const PostedMessage next = Posted().front();
    Posted().pop_front();
    next.window->WindowProc(next.message, next.wParam, next.lParam);
    return true;
}

void SetPostHook(void (*hook)()) {
    g_postHook = hook;
    for (std::size_t i = 0; hook != nullptr && i < Posted().size(); ++i) {
        hook();
    }
}

}  // namespace ta::window
