#include "settings/ChartViewRegistry.h"

#include "settings/Messages.h"

#include <algorithm>

namespace ta {

const unsigned kGroupChangeMessage = window::RegisterWindowMessageA("MXMSG_TAGROUP_CHANGE");
const unsigned kTrendLineChangeMessage = window::RegisterWindowMessageA("MXMSG_TATRENDLINE_CHANGE");

}  // namespace ta

namespace ta::settings {

void ChartViewRegistry::Add(CView* view) {
    if (view != nullptr && std::ranges::find(m_views, view) == m_views.end()) {
        m_views.push_back(view);
    }
}

void ChartViewRegistry::Remove(CView* view) {
    const auto found = std::ranges::find(m_views, view);
    if (found != m_views.end()) {
        m_views.erase(found);
    }
}

void ChartViewRegistry::Send(unsigned message, unsigned wParam) {
    // By index, the size read again at each step: a handler may change the list.
    for (std::size_t i = 0; i < m_views.size(); ++i) {
        window::SendMessageA(*m_views[i], message, wParam, 0);
    }
}

}  // namespace ta::settings
