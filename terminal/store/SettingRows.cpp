#include "terminal/store/SettingRows.h"

#include "settings/TrendLineKeys.h"

#include <algorithm>

namespace ta::terminal {

namespace {

bool HasLine(const TrendLinesByType& lines) {
    return std::ranges::any_of(lines, [](const auto& type) { return !type.second.empty(); });
}

}  // namespace

bool SettingRows::SetTAViewGroupSetting(int layout, const ViewGroups& views) {
    const SettingKey key{K::ViewGroups, layout};
    if (!views.empty()) {
        return Save(key, views);
    }
    return Guarded([&] {
        RemoveRow(key);
        return true;
    });
}

bool SettingRows::LoadTATrendLineSettingClass(std::vector<CString>& classes) {
    return Guarded([&] {
        std::vector<CString> found;
        ForEachRow([&](const SettingRow& row) {
            if (row.key.kind == K::TrendLines && (found.empty() || found.back() != row.key.name)) {
                found.emplace_back(row.key.name);
            }
        });
        classes = std::move(found);
        return true;
    });
}

bool SettingRows::LoadTATrendLineSettingSymbols(const CString& chartClass,
                                                std::vector<CString>& symbolKeys) {
    return Guarded([&] {
        std::vector<CString> found;
        ForEachRow([&](const SettingRow& row) {
            if (row.key.kind == K::TrendLines && row.key.name == chartClass) {
                found.emplace_back(row.key.sub);
            }
        });
        symbolKeys = std::move(found);
        return true;
    });
}

bool SettingRows::LoadTATrendLine(const CString& chartClass, const CString& symbolKey,
                                  TrendLinesByType& lines) {
    return Load({K::TrendLines, 0, chartClass, symbolKey}, lines);
}

bool SettingRows::SaveTATrendLine(const CString& chartClass, const CString& symbolKey,
                                  const TrendLinesByType& lines) {
    if (HasLine(lines)) {
        return Save({K::TrendLines, 0, chartClass, symbolKey}, lines);
    }
    return Guarded([&] {
        RemoveRow({K::TrendLines, 0, chartClass, symbolKey});
        RemoveRow({K::TrendLineDate, 0, chartClass, symbolKey});
        return true;
    });
}

bool SettingRows::RemoveAllTrendLineData(const CString& chartClass) {
    return Guarded([&] {
        RemoveClassRows(chartClass);
        return true;
    });
}

bool SettingRows::LoadTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                               const CString& symbol, CString& date) {
    return Guarded([&] {
        const CString symbolKey = settings::PackSymbolKey(service, symbol);
        return Load({K::TrendLineDate, 0, chartClass, symbolKey}, date);
    });
}

bool SettingRows::SaveTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                               const CString& symbol, const CString& date) {
    return Guarded([&] {
        const CString symbolKey = settings::PackSymbolKey(service, symbol);
        return Save({K::TrendLineDate, 0, chartClass, symbolKey}, date);
    });
}

}  // namespace ta::terminal
