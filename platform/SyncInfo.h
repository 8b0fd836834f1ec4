#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <memory>

class CWnd;
class SMXCfgIO2;
class TaDrawInfo;

namespace ta {

class ComparisonSets;
class EntitlementService;
class ExportProfiles;
class NumberDisplay;

/// The part of the chart module that makes objects for the library.
class TADIALOGS_EXPORT ChartModule {
public:
    virtual ~ChartModule() = default;

    /// A draw info for the drawing context of `window`, with default properties. The caller owns
    /// it; `window` is the repository's own and outlives it. Null when none can be made: the group
    /// then has no settings strings and no chart options.
    virtual std::unique_ptr<TaDrawInfo> MakeTaDrawInfo(CWnd& window) = 0;
};

/// The services that the terminal gives the library. Null means that there is none. All stay the
/// terminal's and outlive the library's use of them, which ends with the process: the repository is
/// destroyed at its exit and asks the store no more then.
struct Services {
    SMXCfgIO2* configStore = nullptr;           ///< null: nothing is loaded and nothing saved
    EntitlementService* entitlement = nullptr;  ///< null: everything is allowed
    ChartModule* chartModule = nullptr;         ///< null: groups have no draw info
    NumberDisplay* numberDisplay = nullptr;
    ComparisonSets* comparisonSets = nullptr;  ///< null: choices cannot be kept under a name
    ExportProfiles* exportProfiles = nullptr;  ///< null: profiles live as long as their dialog
    CWnd* frameWindow = nullptr;               ///< parent of the repository's hidden window
    CString messageBoxTitle;                   ///< of warnings
    /// How fractional prices are written: 1 dot, 2 special decimal, 3 mixed, other denominator.
    int fractionType = 0;
    /// The Tidewright edition, in which everybody has indicator groups.
    bool tidewrightVersion = false;
};

}  // namespace ta

/// The session's information: where the terminal hangs its services at start, before any other call
/// into the library, and where the library finds them. Not for several threads.
class TADIALOGS_EXPORT CSyncInfo {
public:
    /// The one instance, there from the first call to the end of the process.
    static CSyncInfo& GetSettingCFG();

    /// Replaces all services. The repository asks for the store at each operation; what the user
    /// may use it has asked once, when it was made.
    void SetServices(const ta::Services& services) { m_services = services; }
    const ta::Services& GetServices() const { return m_services; }

    /// The configuration store, or null.
    SMXCfgIO2* CApi_pGetUserCfgIO() const { return m_services.configStore; }
    const CString& SYS_szGetMessageBoxTitle() const { return m_services.messageBoxTitle; }
    /// See Services::fractionType.
    int SYS_GetSpecificFractionType() const { return m_services.fractionType; }
    bool SYS_bIsTidewrightVersion() const { return m_services.tidewrightVersion; }

private:
    CSyncInfo() = default;

    ta::Services m_services;
};
