#include "settings/GroupTable.h"

#include "platform/DrawInfo.h"
#include "platform/SyncInfo.h"

#include <algorithm>
#include <set>
#include <utility>

namespace ta::settings {

void MakeDrawInfo(ST_TA_DRAWINFO& record, CWnd& window) {
    ChartModule* module = CSyncInfo::GetSettingCFG().GetServices().chartModule;
    record.pDrawInfo = module != nullptr ? module->MakeTaDrawInfo(window).release() : nullptr;
}

void MakeDataRepository(ST_TA_DRAWINFO& record) {
    record.pDataRepository = new CTADataRepository(0);
    record.DataInterface = CTADataInterface();
    record.DataInterface.bAddptDataRepository2Vec(record.pDataRepository);
}

void DestroyObjects(ST_TA_DRAWINFO& record) {
    delete std::exchange(record.pDrawInfo, nullptr);
    delete std::exchange(record.pDataRepository, nullptr);
    record.DataInterface = CTADataInterface();
}

std::optional<unsigned> GroupTable::IndexOf(const CString& name) const {
    const auto found = std::ranges::find(m_vGroupName, name);
    if (found == m_vGroupName.end()) {
        return std::nullopt;
    }
    return static_cast<unsigned>(found - m_vGroupName.begin());
}

CString GroupTable::NameAt(std::size_t index) const {
    return index < m_vGroupName.size() ? m_vGroupName[index] : CString();
}

ST_TA_DRAWINFO* GroupTable::Find(const CString& name) {
    const auto found = m_mapDrawInfo.find(name);
    return found == m_mapDrawInfo.end() ? nullptr : &found->second;
}

const ST_TA_DRAWINFO* GroupTable::Find(const CString& name) const {
    const auto found = m_mapDrawInfo.find(name);
    return found == m_mapDrawInfo.end() ? nullptr : &found->second;
}

ST_TA_DRAWINFO& GroupTable::Put(const CString& name, ST_TA_DRAWINFO record) {
    const auto [place, isNew] = m_mapDrawInfo.try_emplace(name);
    if (!isNew) {
        Release(place->second.iUniNum);
    }
    ++m_uses[record.iUniNum];
    return place->second = std::move(record);
}

void GroupTable::SetAll(Records records) {
    m_mapDrawInfo = std::move(records);
    m_uses.clear();
    for (const auto& [name, record] : m_mapDrawInfo) {
        ++m_uses[record.iUniNum];
    }
}

void GroupTable::InitDrawInfo(CWnd& window) {
    for (auto& [name, record] : m_mapDrawInfo) {
        MakeDrawInfo(record, window);
        MakeDataRepository(record);
    }
}

CString GroupTable::NameOfUniNum(int uniNum) const {
    const auto found = std::ranges::find_if(
        m_mapDrawInfo, [uniNum](const auto& entry) { return entry.second.iUniNum == uniNum; });
    return found == m_mapDrawInfo.end() ? CString() : found->first;
}

int GroupTable::FreeUniNum(int limit) const {
    int uniNum = 0;
    while (uniNum < limit && IsUniNumInUse(uniNum)) {
        ++uniNum;
    }
    return uniNum < limit ? uniNum : -1;
}

bool GroupTable::Erase(const CString& name) {
    const auto found = m_mapDrawInfo.find(name);
    if (found == m_mapDrawInfo.end()) {
        return false;
    }
    DestroyObjects(found->second);
    Release(found->second.iUniNum);
    m_mapDrawInfo.erase(found);
    return true;
}

bool GroupTable::EraseName(const CString& name) {
    const auto found = std::ranges::find(m_vGroupName, name);
    if (found == m_vGroupName.end()) {
        return false;
    }
    m_vGroupName.erase(found);
    return true;
}

void GroupTable::Rename(const CString& oldName, const CString& newName) {
    auto node = m_mapDrawInfo.extract(oldName);
    if (!node.empty()) {
        node.key() = newName;
        m_mapDrawInfo.insert(std::move(node));
    }
    const auto listed = std::ranges::find(m_vGroupName, oldName);
    if (listed != m_vGroupName.end()) {
        *listed = newName;
    }
}

std::vector<CString> GroupTable::UnlistedNames() const {
    const std::set<CString> listed(m_vGroupName.begin(), m_vGroupName.end());
    std::vector<CString> unlisted;
    for (const auto& [name, record] : m_mapDrawInfo) {
        if (!listed.contains(name)) {
            unlisted.push_back(name);
        }
    }
    return unlisted;
}

void GroupTable::EraseAll() {
    for (auto& [name, record] : m_mapDrawInfo) {
        DestroyObjects(record);
    }
    SetAll({});
}

void GroupTable::Clear() {
    EraseAll();
    m_vGroupName.clear();
}

void GroupTable::Release(int uniNum) {
    const auto found = m_uses.find(uniNum);
    if (found != m_uses.end() && --found->second == 0) {
        m_uses.erase(found);
    }
}

}  // namespace ta::settings
