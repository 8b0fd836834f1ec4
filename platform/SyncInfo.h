#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <memory>

class CWnd;
class SMXCfgIO2;
class TaDrawInfo;

namespace ta {

class EntitlementService;
class ExportProfiles;
class NumberDisplay;

/// The part of the chart module that makes objects for the library.
class TADIALOGS_EXPORT ChartModule {
public:
    virtual ~ChartModule() = default;

    /// A draw info for the drawing context of `window`, with default properties.
    virtual std::unique_ptr<TaDrawInfo> MakeTaDrawInfo(CWnd& window) = 0;
};

/// The services that the terminal gives the library. Null means that there is none. All stay the
/// terminal's and outlive the library's use of them.
struct Services {
    SMXCfgIO2* configStore = nullptr;
    EntitlementService* entitlement = nullptr;
    ChartModule* chartModule = nullptr;
    NumberDisplay* numberDisplay = nullptr;
    ExportProfiles* exportProfiles = nullptr;
    CWnd* frameWindow = nullptr;
    CString messageBoxTitle;
    /// How fractional prices are written: 1 dot, 2 special decimal, 3 mixed, other denominator.
    int fractionType = 0;
    /// The Tidewright edition, in which everybody has indicator groups.
    bool tidewrightVersion = false;
};

}  // namespace ta

/// The session's information: where the terminal hangs its services at start, before any other call
/// into the library, and where the library finds them.
class TADIALOGS_EXPORT CSyncInfo {
public:
    static CSyncInfo& GetSettingCFG();

    void SetServices(const ta::Services& services) { m_services = services; }
    const ta::Services& GetServices() const { return m_services; }

    /// The configuration store, or null.
    SMXCfgIO2* CApi_pGetUserCfgIO() const { return m_services.configStore; }
    const CString& SYS_szGetMessageBoxTitle() const { return m_services.messageBoxTitle; }
    int SYS_GetSpecificFractionType() const { return m_services.fractionType; }
    bool SYS_bIsTidewrightVersion() const { return m_services.tidewrightVersion; }

private:
    CSyncInfo() = default;

    ta::Services m_services;
};
