#include "terminal/store/PendingWrites.h"

namespace ta::terminal {

void PendingWrites::Put(const SettingKey& key, std::string_view value) {
    const auto at = m_values.lower_bound(key);
    if (at != m_values.end() && at->first.View() == key) {
        at->second = value;
    } else {
        m_values.emplace_hint(at, key, value);
    }
}

void PendingWrites::Remove(const SettingKey& key) {
    m_values.insert_or_assign(OwnedSettingKey(key), std::nullopt);
}

void PendingWrites::RemoveClass(const CString& chartClass) {
    m_removedClasses.insert(chartClass);
    std::erase_if(m_values, [&](const auto& entry) {
        return IsTrendLineKind(entry.first.kind) && entry.first.name == chartClass;
    });
}

void PendingWrites::ClearGroups() {
    std::erase_if(m_values, [](const auto& entry) { return IsGroupKind(entry.first.kind); });
}

void PendingWrites::Clear() {
    m_values.clear();
    m_removedClasses.clear();
}

std::optional<std::string_view> PendingWrites::Find(const SettingKey& key,
                                                    const CommittedRows& committed) const {
    const auto at = m_values.find(key);
    if (at != m_values.end()) {
        return at->second ? std::optional<std::string_view>(*at->second) : std::nullopt;
    }
    return FindBelow(key, committed);
}

std::optional<std::string_view> PendingWrites::FindBelow(const SettingKey& key,
                                                         const CommittedRows& committed) const {
    return Hides(key) ? std::nullopt : committed.Find(key);
}

void PendingWrites::ForEachOver(const CommittedRows& committed,
                                const std::function<void(const SettingRow&)>& visit) const {
    auto written = m_values.begin();
    const auto visitWritten = [&] {
        if (written->second) {
            visit({written->first.View(), *written->second});
        }
        ++written;
    };
    for (const SettingRow& row : committed.Rows()) {
        while (written != m_values.end() && written->first.View() < row.key) {
            visitWritten();
        }
        if (written != m_values.end() && written->first.View() == row.key) {
            visitWritten();
        } else if (!Hides(row.key)) {
            visit(row);
        }
    }
    while (written != m_values.end()) {
        visitWritten();
    }
}

bool PendingWrites::Hides(const SettingKey& key) const {
    return !m_removedClasses.empty() && IsTrendLineKind(key.kind) &&
           m_removedClasses.find(key.name) != m_removedClasses.end();
}

}  // namespace ta::terminal
