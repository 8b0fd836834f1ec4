// The repository's trend lines.

#include "platform/Clock.h"
#include "platform/ConfigStore.h"
#include "settings/SettingsParts.h"
#include "settings/TaSettingHandle.h"
#include "settings/TrendLineKeys.h"

#include <fmt/printf.h>

using namespace ta::settings;

const char* const kTechViewClass = "MXTechView";

namespace {

CString ClassSymbolKeyOf(const CString& chartClass, unsigned char service, const CString& symbol) {
    return PackTrendLineSymbolKey(chartClass, PackSymbolKey(service, symbol));
}

}  // namespace

int CTaSettingHandle::DecodeTrendLineClassSymbolKey(const CString& key, CString& chartClass,
                                                    CString& symbolKey) const {
    return DecodeClassSymbolKey(key, chartClass, symbolKey) ? 1 : 0;
}

int CTaSettingHandle::DecodeTrendLineServiceSymbolKey(const CString& key, unsigned char& service,
                                                      CString& symbol) const {
    return DecodeSymbolKey(key, service, symbol) ? 1 : 0;
}

int CTaSettingHandle::DecodeTrendLineTypeKey(const CString& key, CString& symbolKey,
                                             CString& trailingName, int& periodCode,
                                             int& count) const {
    return DecodeTypeKey(key, symbolKey, trailingName, periodCode, count) ? 1 : 0;
}

int CTaSettingHandle::DecodeTrendLineData(const CString& data, int& kind, CString& name,
                                          bool& flag) const {
    return DecodeLineData(data, kind, name, flag) ? 1 : 0;
}

int CTaSettingHandle::AddTrendLineData(const CString& chartClass, const CString& symbolKey,
                                       const CString& trailingName, int periodCode,
                                       const CString& data, int count) {
    if (chartClass.empty() || symbolKey.empty() || trailingName.empty() || data.empty()) {
        return 0;
    }
    ReloadTASetting();
    m_parts->trendLines.Add(chartClass, symbolKey,
                            PackTrendLineTypeKey(symbolKey, trailingName, periodCode, count), data);
    return 1;
}

int CTaSettingHandle::SetTrendLineData(const CString& chartClass, const CString& symbolKey,
                                       const CString& trailingName, int periodCode,
                                       const std::vector<CString>& data, int count) {
    if (chartClass.empty() || symbolKey.empty() || trailingName.empty()) {
        return 0;
    }
    ReloadTASetting();
    m_parts->trendLines.Set(chartClass, symbolKey,
                            PackTrendLineTypeKey(symbolKey, trailingName, periodCode, count), data);
    return 1;
}

int CTaSettingHandle::GetTrendLineData(std::vector<CString>& data, const CString& chartClass,
                                       const CString& symbolKey, const CString& trailingName,
                                       int periodCode, int count) {
    ReloadTASetting();
    data.clear();
    const std::vector<CString>* lines =
        m_parts->trendLines.Find(PackTrendLineSymbolKey(chartClass, symbolKey),
                                 PackTrendLineTypeKey(symbolKey, trailingName, periodCode, count));
    if (lines == nullptr) {
        return 0;
    }
    data = *lines;
    return 1;
}

int CTaSettingHandle::GetAllTrendLineData(const CString& classSymbolKey, TrendLineList& out) {
    ReloadTASetting();
    out.clear();
    const TrendLineTable::LinesByTypeKey* lines = m_parts->trendLines.Find(classSymbolKey);
    if (lines == nullptr) {
        return 0;
    }
    for (const auto& [typeKey, list] : *lines) {
        out.emplace_back(typeKey, list.Lines());
    }
    return 1;
}

unsigned CTaSettingHandle::GetTrendLineCount(const CString& chartClass, const CString& symbolKey) {
    if (chartClass.empty() || symbolKey.empty()) {
        return 0;
    }
    ReloadTASetting();
    return m_parts->trendLines.CountOf(PackTrendLineSymbolKey(chartClass, symbolKey));
}

unsigned CTaSettingHandle::GetTrendLineCount(const CString& chartClass) {
    if (chartClass.empty()) {
        return 0;
    }
    ReloadTASetting();
    return m_parts->trendLines.CountOfClass(chartClass);
}

unsigned CTaSettingHandle::GetTrendLineSymbolCount(const CString& chartClass) {
    if (chartClass.empty()) {
        return 0;
    }
    ReloadTASetting();
    return m_parts->trendLines.SymbolCountOfClass(chartClass);
}

void CTaSettingHandle::ClearAllTrendLine(const CString& chartClass) {
    if (chartClass.empty()) {
        return;
    }
    ReloadTASetting();
    if (SMXCfgIO2* store = Parts::Store()) {
        store->RemoveAllTrendLineData(chartClass);
    }
    ReleaseTrendLine(chartClass);
}

void CTaSettingHandle::ReleaseTrendLine(const CString& chartClass) {
    if (!chartClass.empty()) {
        m_parts->trendLines.Release(chartClass);
    }
}

void CTaSettingHandle::SaveTrendLineData() {
    if (SMXCfgIO2* store = Parts::Store()) {
        m_parts->trendLines.Save(*store);
    }
}

CString CTaSettingHandle::GetTrendLineSymbolUpdTime(const CString& chartClass,
                                                    unsigned char service, const CString& symbol) {
    ReloadTASetting();
    const CString key = ClassSymbolKeyOf(chartClass, service, symbol);
    return m_parts->trendLines.Find(key) == nullptr ? CString()
                                                    : m_parts->trendLines.UpdateDate(key);
}

void CTaSettingHandle::UpdateTrendLineSymbolTime(const CString& chartClass, unsigned char service,
                                                 const CString& symbol) {
    SMXCfgIO2* store = Parts::Store();
    if (store == nullptr) {
        return;
    }
    ReloadTASetting();
    const CString key = ClassSymbolKeyOf(chartClass, service, symbol);
    if (m_parts->trendLines.Find(key) == nullptr) {
        return;
    }
    const ta::CalendarDate today = ta::LocalToday();
    const CString date = fmt::sprintf("%04d-%02d-%02d", today.year, today.month, today.day);
    m_parts->trendLines.SetUpdateDate(key, date);
    store->SaveTATrendLineSymbolUpdTime(chartClass, service, symbol, date);
}

void CTaSettingHandle::GetTATrendLineMaxCount(int& inAll, int& perSymbol) const {
    const TrendLineLimits limits = AskTrendLineLimits(m_parts->limits);
    inAll = limits.inAll;
    perSymbol = limits.perSymbol;
}
