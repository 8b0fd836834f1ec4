#pragma once

#include "platform/CommonProp.h"
#include "settings/TaSettingHandle.h"

#include <vector>

namespace ta::settings {

/// What the repository held at one moment: the list of groups and every group's record, settings
/// strings and common options.
class SettingsSnapshot {
public:
    static SettingsSnapshot Take(CTaSettingHandle& repository);

    /// Makes the repository hold it again. Groups that came since are destroyed, those that are
    /// gone made again; the list of groups is written to the store, where it is pending.
    void Restore(CTaSettingHandle& repository) const;

    /// Whether both hold the same.
    bool operator==(const SettingsSnapshot&) const = default;

    const std::vector<CString>& GroupNames() const { return m_names; }

private:
    struct Group {
        CString name;
        ST_TA_DRAWINFO record;  ///< its pointers are not used
        std::vector<CString> params;
        std::vector<CString> shapes;
        ::CommonProp common;

        bool operator==(const Group& other) const;
    };

    void Fill(const Group& group, ST_TA_DRAWINFO& record) const;

    std::vector<CString> m_names;
    std::vector<Group> m_groups;
};

}  // namespace ta::settings
