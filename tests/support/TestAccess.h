#pragma once

#include "settings/TaSettingHandle.h"
#include "tests/support/MemoryChart.h"
#include "tests/support/MemoryConfigStore.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/MemoryServices.h"
#include "tests/support/RecordingConfigStore.h"
#include "tests/support/RecordingView.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// Makes repositories of a test's own, which the process-wide one knows nothing of.
struct TaSettingHandleTestAccess {
    /// Loads from the services in CSyncInfo.
    static std::unique_ptr<CTaSettingHandle> Make() {
        return std::unique_ptr<CTaSettingHandle>(new CTaSettingHandle);
    }
};

namespace ta::test {

using Names = std::vector<CString>;
using Lines = std::vector<std::string>;

/// Fresh doubles in CSyncInfo and the quote back-end, and a repository on them. A test presets the
/// doubles and then calls Repository(). At the end no draw info may be left.
class SettingsFixture : public testing::Test {
protected:
    SettingsFixture() {
        services.configStore = &store;
        services.entitlement = &memoryEntitlement;
        services.chartModule = &chartModule;
        services.numberDisplay = &numberDisplay;
        services.frameWindow = &frame;
        services.messageBoxTitle = "Terminal";
        HangIn();
        BKQuoteInterface::SetBKInterface(&quotes);
        SetClock(&clock);
    }

    ~SettingsFixture() override {
        m_repository.reset();
        EXPECT_EQ(MemoryDrawInfo::LiveCount(), m_drawInfosBefore) << "Draw infos are left over.";
        SetClock(nullptr);
        BKQuoteInterface::SetBKInterface(nullptr);
        CSyncInfo::GetSettingCFG().SetServices({});
    }

    /// The repository; the first call makes it, which loads.
    CTaSettingHandle& Repository() {
        if (m_repository == nullptr) {
            m_repository = TaSettingHandleTestAccess::Make();
        }
        return *m_repository;
    }
    /// Destroys the repository, as at the end of the program; the next Repository() loads again.
    void EndRepository() { m_repository.reset(); }
    /// Makes changes to `services` known.
    void HangIn() { CSyncInfo::GetSettingCFG().SetServices(services); }

    MemoryConfigStore memory;
    RecordingConfigStore store{memory};
    MemoryEntitlement memoryEntitlement;
    MemoryChartModule chartModule;
    MemoryNumberDisplay numberDisplay;
    MemoryQuotes quotes;
    FixedClock clock{1'700'000'000};
    CWnd frame;
    Services services;

private:
    int m_drawInfosBefore = MemoryDrawInfo::LiveCount();
    std::unique_ptr<CTaSettingHandle> m_repository;
};

}  // namespace ta::test
