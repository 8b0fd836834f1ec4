#pragma once

#include "terminal/store/CommittedRows.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace ta::terminal {

/// What this process has written since its last commit.
class PendingWrites {
public:
    /// Null is a removal.
    using Values = std::map<OwnedSettingKey, std::optional<std::string>, SettingKeyLess>;

    void Put(const SettingKey& key, std::string_view value);
    void Remove(const SettingKey& key);
    /// Removes all trend lines and dates of a chart class, written before by anyone.
    void RemoveClass(const CString& chartClass);
    /// Forgets what was written of the list of groups and the groups.
    void ClearGroups();
    void Clear();

    bool Empty() const { return m_values.empty() && m_removedClasses.empty(); }
    const Values& All() const { return m_values; }
    /// The classes whose rows go before All() is written.
    const std::set<CString, std::less<>>& RemovedClasses() const { return m_removedClasses; }

    /// The value as this process sees it: pending, else committed. Valid until the next change of
    /// either.
    std::optional<std::string_view> Find(const SettingKey& key,
                                         const CommittedRows& committed) const;

    /// The committed value that a pending write of this key replaces.
    std::optional<std::string_view> FindBelow(const SettingKey& key,
                                              const CommittedRows& committed) const;

    /// Calls `visit` with every row as this process sees it, in key order.
    void ForEachOver(const CommittedRows& committed,
                     const std::function<void(const SettingRow&)>& visit) const;

private:
    bool Hides(const SettingKey& key) const;

    Values m_values;
    std::set<CString, std::less<>> m_removedClasses;
};

}  // namespace ta::terminal
