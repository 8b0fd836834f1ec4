#include "platform/Window.h"

#include <map>

CWnd::~CWnd() = default;

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

}  // namespace ta::window
