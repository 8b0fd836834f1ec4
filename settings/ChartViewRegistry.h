#pragma once

#include "platform/Window.h"

#include <vector>

namespace ta::settings {

/// The chart views that asked to be told of changes, in order of registration. Not owned.
class ChartViewRegistry {
public:
    /// Ignores null and a view that is there already.
    void Add(CView* view);
    /// Removes the first equal entry; ignores a view that is not there.
    void Remove(CView* view);
    void Clear() { m_views.clear(); }
    /// Delivers synchronously to each view, with lParam 0. A handler may call the repository; one
    /// that unregisters views makes the loop pass over some, never over its end.
    void Send(unsigned message, unsigned wParam);

private:
    std::vector<CView*> m_views;
};

}  // namespace ta::settings
