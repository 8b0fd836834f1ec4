// The repository's draw infos, data objects and settings strings.

#include "platform/DrawInfo.h"
#include "settings/SettingsParts.h"
#include "settings/StudyLists.h"
#include "settings/TaSettingHandle.h"

#include <algorithm>
#include <set>

using namespace ta::settings;

namespace {

using StringsGetter = void (ChartBaseDrawInfo::*)(std::vector<CString>&) const;
using StringsSetter = void (ChartBaseDrawInfo::*)(const std::vector<CString>&, int);

int CollectStrings(const GroupTable& groups, StringsGetter get, SettingsByGroup& out) {
    out.clear();
    for (const auto& [name, record] : groups.All()) {
        if (record.pDrawInfo != nullptr) {
            auto& entry = out.emplace_back(name, std::vector<CString>());
            (record.pDrawInfo->*get)(entry.second);
        }
    }
    return out.empty() ? 0 : 1;
}

int GetStrings(const GroupTable& groups, const CString& name, StringsGetter get,
               std::vector<CString>& out) {
    out.clear();
    const ST_TA_DRAWINFO* group = groups.Find(name);
    if (group == nullptr || group->pDrawInfo == nullptr) {
        return 0;
    }
    (group->pDrawInfo->*get)(out);
    return 1;
}

void SetStrings(const GroupTable& groups, const CString& name, StringsSetter set,
                const std::vector<CString>& in, int mode) {
    const ST_TA_DRAWINFO* group = groups.Find(name);
    if (group != nullptr && group->pDrawInfo != nullptr) {
        (group->pDrawInfo->*set)(in, mode);
    }
}

}  // namespace

ChartBaseDrawInfo* CTaSettingHandle::GetDrawInfo(const CString& name) {
    ReloadTASetting();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    return group == nullptr ? nullptr : group->pDrawInfo;
}

CTADataInterface* CTaSettingHandle::GetTaDataInterface(const CString& name) {
    ReloadTASetting();
    ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    return group == nullptr ? nullptr : &group->DataInterface;
}

CTADataRepository* CTaSettingHandle::GetTaDataRepository(const CString& name) {
    ReloadTASetting();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    return group == nullptr ? nullptr : group->pDataRepository;
}

void CTaSettingHandle::GetAllDrawInfo(GroupRecords& out) {
    ReloadTASetting();
    out.assign(m_parts->groups.All().begin(), m_parts->groups.All().end());
}

void CTaSettingHandle::SetAllDrawInfo(const GroupRecords& in) {
    std::set<const void*> before;
    for (const auto& [name, record] : m_parts->groups.All()) {
        before.insert({record.pDrawInfo, record.pDataRepository});
    }
    const bool reloaded = bReloadIfFlagged();
    const auto isGone = [&](const void* object) { return reloaded && before.contains(object); };
    GroupTable::Records table;
    for (const auto& [name, given] : in) {
        ST_TA_DRAWINFO& record = table[name] = given;
        record.vStudyList = PackStudyLists(given.vStudyList);
        // What the reload has destroyed gives way to new objects.
        if (isGone(given.pDrawInfo)) {
            MakeDrawInfo(record, *this);
        }
        if (isGone(given.pDataRepository)) {
            MakeDataRepository(record);
        }
    }
    if (reloaded) {
        // The caller cannot know the objects that the reload made.
        m_parts->groups.EraseAll();
    }
    m_parts->groups.SetAll(std::move(table));
}

int CTaSettingHandle::GetAllStudyParamSetting(SettingsByGroup& out) {
    ReloadTASetting();
    return CollectStrings(m_parts->groups, &ChartBaseDrawInfo::vMapParam2VecCstring, out);
}

int CTaSettingHandle::GetAllStudyShapeSetting(SettingsByGroup& out) {
    ReloadTASetting();
    return CollectStrings(m_parts->groups, &ChartBaseDrawInfo::vMapShapeParam2VecCstring, out);
}

void CTaSettingHandle::SetAllStudyParamSetting(const SettingsByGroup& in) {
    ReloadTASetting();
    for (const auto& [name, strings] : in) {
        SetStrings(m_parts->groups, name, &ChartBaseDrawInfo::vVecCstring2MapParam, strings,
                   kDrawInfoLoad);
    }
}

void CTaSettingHandle::SetAllStudyShapeSetting(const SettingsByGroup& in) {
    ReloadTASetting();
    for (const auto& [name, strings] : in) {
        SetStrings(m_parts->groups, name, &ChartBaseDrawInfo::vVecCstring2MapShapeParam, strings,
                   kDrawInfoLoad);
    }
}

int CTaSettingHandle::GetStudyParamSettingByGroupName(const CString& name,
                                                      std::vector<CString>& out) {
    ReloadTASetting();
    return GetStrings(m_parts->groups, name, &ChartBaseDrawInfo::vMapParam2VecCstring, out);
}

int CTaSettingHandle::GetStudyShapeSettingByGroupName(const CString& name,
                                                      std::vector<CString>& out) {
    ReloadTASetting();
    return GetStrings(m_parts->groups, name, &ChartBaseDrawInfo::vMapShapeParam2VecCstring, out);
}

void CTaSettingHandle::SetStudyParamSettingByGroupName(const CString& name,
                                                       const std::vector<CString>& in, int mode) {
    ReloadTASetting();
    SetStrings(m_parts->groups, name, &ChartBaseDrawInfo::vVecCstring2MapParam, in, mode);
}

void CTaSettingHandle::SetStudyShapeSettingByGroupName(const CString& name,
                                                       const std::vector<CString>& in, int mode) {
    ReloadTASetting();
    SetStrings(m_parts->groups, name, &ChartBaseDrawInfo::vVecCstring2MapShapeParam, in, mode);
}

void CTaSettingHandle::DeleteAllParam(const CString& name) {
    ReloadTASetting();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    if (group != nullptr && group->pDrawInfo != nullptr) {
        group->pDrawInfo->bDeleteAllParam();
        group->pDrawInfo->bDeleteAllShapeParam();
    }
}

void CTaSettingHandle::vGetStudyInfoVec(std::vector<StudyInfo*>& out, int studyType) {
    out.clear();
    if (const ChartBaseDrawInfo* drawInfo = GetDrawInfo(GetSystemDefaultGroup())) {
        drawInfo->vGetStudyInfoVec(out, studyType);
    }
}
