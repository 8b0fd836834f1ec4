#pragma once

#include "platform/SyncInfo.h"
#include "terminal/studies/TerminalDrawInfo.h"

#include <memory>

namespace ta::terminal {

/// The terminal's chart module. Its draw infos depend on no window.
class TerminalChartModule : public ChartModule {
public:
    std::unique_ptr<TaDrawInfo> MakeTaDrawInfo(CWnd& /*window*/) override {
        return std::make_unique<TerminalDrawInfo>();
    }
};

}  // namespace ta::terminal
