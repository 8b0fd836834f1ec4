#include "settings/SettingsSnapshot.h"

#include "platform/DrawInfo.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace ta::settings {
namespace {

using RecordsByName = std::map<CString, ST_TA_DRAWINFO>;

RecordsByName CurrentRecords(CTaSettingHandle& repository) {
    GroupRecords records;
    repository.GetAllDrawInfo(records);
    return {records.begin(), records.end()};
}

/// Adds a group under a name that nobody has; the name, empty without success.
CString AddPlaceholder(CTaSettingHandle& repository) {
    const RecordsByName records = CurrentRecords(repository);
    CString name = "?";
    while (records.contains(name) || repository.FindGroup(name) == 1) {
        name += '?';
    }
    return repository.AddGroupSetting(name) == 1 ? name : CString();
}

/// Takes out of `free` the record of a number: under the name, else the first one; its name, empty
/// when there is none.
CString TakeRecord(RecordsByName& free, const CString& name, int uniNum) {
    auto found = free.find(name);
    if (found == free.end() || found->second.iUniNum != uniNum) {
        found = std::ranges::find_if(
            free, [uniNum](const auto& entry) { return entry.second.iUniNum == uniNum; });
    }
    if (found == free.end()) {
        return {};
    }
    const CString taken = found->first;
    free.erase(found);
    return taken;
}

}  // namespace

SettingsSnapshot SettingsSnapshot::Take(CTaSettingHandle& repository) {
    SettingsSnapshot snapshot;
    GroupRecords records;
    repository.GetAllDrawInfo(records);
    for (const auto& [name, record] : records) {
        Group& group = snapshot.m_groups.emplace_back(Group{name, record, {}, {}, {}});
        if (record.pDrawInfo != nullptr) {
            record.pDrawInfo->vMapParam2VecCstring(group.params);
            record.pDrawInfo->vMapShapeParam2VecCstring(group.shapes);
            group.common = record.pDrawInfo->CommonProperty();
        }
    }
    repository.GetGroupNameList(snapshot.m_names);
    return snapshot;
}

bool SettingsSnapshot::Group::operator==(const Group& other) const {
    const auto values = [](const Group& group) {
        return std::tie(group.name, group.record.iUniNum, group.record.iStudyShowCount,
                        group.record.iTechWndShowKey, group.record.vStudyList, group.params,
                        group.shapes, group.common);
    };
    return values(*this) == values(other);
}

void SettingsSnapshot::Restore(CTaSettingHandle& repository) const {
    // The names under which the objects for each group are found now.
    RecordsByName surplus = CurrentRecords(repository);
    std::vector<CString> sources;
    for (const Group& group : m_groups) {
        sources.push_back(TakeRecord(surplus, group.name, group.record.iUniNum));
    }
    for (const auto& [name, record] : surplus) {
        repository.DeleteGroupSetting(name);
    }
    for (CString& source : sources) {
        source = source.empty() ? AddPlaceholder(repository) : source;
    }
    RecordsByName now = CurrentRecords(repository);
    GroupRecords table;
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        if (const auto found = now.find(sources[i]); found != now.end()) {
            Fill(m_groups[i], found->second);
            table.emplace_back(m_groups[i].name, found->second);
        }
    }
    repository.SetAllDrawInfo(table);
    std::vector<CString> names = m_names;
    repository.SetGroupNameList(names);
}

void SettingsSnapshot::Fill(const Group& group, ST_TA_DRAWINFO& record) const {
    record.iUniNum = group.record.iUniNum;
    record.iStudyShowCount = group.record.iStudyShowCount;
    record.iTechWndShowKey = group.record.iTechWndShowKey;
    record.vStudyList = group.record.vStudyList;
    if (record.pDrawInfo != nullptr) {
        record.pDrawInfo->vVecCstring2MapParam(group.params, kDrawInfoLoad);
        record.pDrawInfo->vVecCstring2MapShapeParam(group.shapes, kDrawInfoLoad);
        record.pDrawInfo->CommonProperty() = group.common;
    }
}

}  // namespace ta::settings
