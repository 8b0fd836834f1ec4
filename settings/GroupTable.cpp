#include "settings/GroupTable.h"

#include "platform/DrawInfo.h"
#include "platform/SyncInfo.h"

#include <algorithm>
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
    const auto found = std::ranges::find(m_names, name);
    if (found == m_names.end()) {
        return std::nullopt;
    }
    return static_cast<unsigned>(found - m_names.begin());
}

CString GroupTable::NameAt(std::size_t index) const {
    return index < m_names.size() ? m_names[index] : CString();
}

ST_TA_DRAWINFO* GroupTable::Find(const CString& name) {
    const auto found = m_records.find(name);
    return found == m_records.end() ? nullptr : &found->second;
}

const ST_TA_DRAWINFO* GroupTable::Find(const CString& name) const {
    const auto found = m_records.find(name);
    return found == m_records.end() ? nullptr : &found->second;
}

CString GroupTable::NameOfUniNum(int uniNum) const {
    const auto found = std::ranges::find_if(
        m_records, [uniNum](const auto& entry) { return entry.second.iUniNum == uniNum; });
    return found == m_records.end() ? CString() : found->first;
}

int GroupTable::FreeUniNum(int limit) const {
    const auto inUse = [this](int uniNum) {
        return std::ranges::any_of(
            m_records, [uniNum](const auto& entry) { return entry.second.iUniNum == uniNum; });
    };
    for (int uniNum = 0; uniNum < limit; ++uniNum) {
        if (!inUse(uniNum)) {
            return uniNum;
        }
    }
    return -1;
}

bool GroupTable::Erase(const CString& name) {
    const auto found = m_records.find(name);
    if (found == m_records.end()) {
        return false;
    }
    DestroyObjects(found->second);
    m_records.erase(found);
    return true;
}

bool GroupTable::EraseName(const CString& name) {
    const auto found = std::ranges::find(m_names, name);
    if (found == m_names.end()) {
        return false;
    }
    m_names.erase(found);
    return true;
}

void GroupTable::Rename(const CString& oldName, const CString& newName) {
    auto node = m_records.extract(oldName);
    if (!node.empty()) {
        node.key() = newName;
        m_records.insert(std::move(node));
    }
    const auto listed = std::ranges::find(m_names, oldName);
    if (listed != m_names.end()) {
        *listed = newName;
    }
}

std::vector<CString> GroupTable::UnlistedNames() const {
    std::vector<CString> unlisted;
    for (const auto& [name, record] : m_records) {
        if (!IndexOf(name)) {
            unlisted.push_back(name);
        }
    }
    return unlisted;
}

void GroupTable::Clear() {
    for (auto& [name, record] : m_records) {
        DestroyObjects(record);
    }
    m_records.clear();
    m_names.clear();
}

}  // namespace ta::settings
