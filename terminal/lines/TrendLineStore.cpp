#include "terminal/lines/TrendLineStore.h"

#include "platform/ConfigStore.h"
#include "platform/SyncInfo.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "settings/TrendLineKeys.h"
#include "terminal/lang/Language.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace ta::terminal {
namespace {

SMXCfgIO2* Store() {
    return CSyncInfo::GetSettingCFG().CApi_pGetUserCfgIO();
}

CString SymbolKeyOf(const BarsKey& chart) {
    return settings::PackSymbolKey(chart.market, chart.symbol);
}

void Commit() {
    if (SMXCfgIO2* store = Store()) {
        store->PackFile();
    }
    Repository().SendTLineUpdate2AllTechView();
}

/// The lines go to the store before anything else: whatever else asks the repository may reload it.
void Save(const BarsKey& chart) {
    Repository().SaveTrendLineData();
    Repository().UpdateTrendLineSymbolTime(kTechViewClass, chart.market, chart.symbol);
    Commit();
}

void SetLines(const BarsKey& chart, const std::vector<CString>& lines) {
    Repository().SetTrendLineData(kTechViewClass, SymbolKeyOf(chart), kPriceLines, chart.period,
                                  chart.count, lines);
    Save(chart);
}

bool IsReached(unsigned count, int limit) {
    return limit >= 0 && count >= static_cast<unsigned>(limit);
}

void AddLines(TrendLineSymbol& symbol, const std::vector<CString>& lines) {
    for (const CString& line : lines) {
        int kind = 0;
        ++symbol.count;
        if (IsTrendLine(line, kind)) {
            ++symbol.kinds[kind];
        } else {
            ++symbol.unreadable;
        }
    }
}

/// count 0: the symbol has no lines, or its key is not one.
TrendLineSymbol ReadSymbol(const CString& chartClass, const CString& symbolKey) {
    CTaSettingHandle& repository = Repository();
    TrendLineSymbol symbol;
    symbol.chartClass = chartClass;
    TrendLineList lines;
    if (repository.DecodeTrendLineServiceSymbolKey(symbolKey, symbol.market, symbol.symbol) == 0 ||
        repository.GetAllTrendLineData(chartClass + '-' + symbolKey, lines) == 0) {
        return symbol;
    }
    for (const auto& [typeKey, data] : lines) {
        AddLines(symbol, data);
        CString key;
        CString scale;
        std::pair<int, int> period;
        if (repository.DecodeTrendLineTypeKey(typeKey, key, scale, period.first, period.second) &&
            scale == kPriceLines) {
            symbol.periods.push_back(period);
        }
    }
    symbol.date = repository.GetTrendLineSymbolUpdTime(chartClass, symbol.market, symbol.symbol);
    return symbol;
}

}  // namespace

const char* const kPriceLines = "price";

std::vector<CString> StoredTrendLines(const BarsKey& chart) {
    std::vector<CString> lines;
    if (!chart.symbol.empty()) {
        Repository().GetTrendLineData(kTechViewClass, SymbolKeyOf(chart), kPriceLines, chart.period,
                                      chart.count, lines);
    }
    return lines;
}

TrendLineAdding MayAddTrendLine(const BarsKey& chart, int* limit) {
    if (chart.symbol.empty()) {
        return TrendLineAdding::Failed;
    }
    CTaSettingHandle& repository = Repository();
    int inAll = -1;
    int perSymbol = -1;
    repository.GetTATrendLineMaxCount(inAll, perSymbol);
    const auto refuse = [limit](TrendLineAdding why, int reached) {
        if (limit) {
            *limit = reached;
        }
        return why;
    };
    if (IsReached(repository.GetTrendLineCount(kTechViewClass, SymbolKeyOf(chart)), perSymbol)) {
        return refuse(TrendLineAdding::TooManyOfSymbol, perSymbol);
    }
    if (IsReached(repository.GetTrendLineCount(kTechViewClass), inAll)) {
        return refuse(TrendLineAdding::TooManyInAll, inAll);
    }
    return TrendLineAdding::Added;
}

TrendLineAdding AddTrendLine(const BarsKey& chart, const CString& data, int* limit) {
    const TrendLineAdding may = MayAddTrendLine(chart, limit);
    if (may != TrendLineAdding::Added) {
        return may;
    }
    if (Repository().AddTrendLineData(kTechViewClass, SymbolKeyOf(chart), kPriceLines, chart.period,
                                      data, chart.count) == 0) {
        return TrendLineAdding::Failed;
    }
    Save(chart);
    return TrendLineAdding::Added;
}

bool ReplaceTrendLine(const BarsKey& chart, const CString& from, const CString& to) {
    std::vector<CString> lines = StoredTrendLines(chart);
    const auto found = std::ranges::find(lines, from);
    if (found == lines.end()) {
        return false;
    }
    if (from == to) {
        return true;
    }
    if (std::ranges::find(lines, to) == lines.end()) {
        *found = to;
    } else {
        lines.erase(found);
    }
    SetLines(chart, lines);
    return true;
}

int RemoveTrendLines(const BarsKey& chart, const std::vector<CString>& lines) {
    std::vector<CString> kept = StoredTrendLines(chart);
    const std::set<CString> unwanted(lines.begin(), lines.end());
    const auto removed =
        std::erase_if(kept, [&](const CString& line) { return unwanted.contains(line); });
    if (removed > 0) {
        SetLines(chart, kept);
    }
    return static_cast<int>(removed);
}

std::vector<TrendLineSymbol> ListTrendLineSymbols() {
    std::vector<TrendLineSymbol> symbols;
    SMXCfgIO2* store = Store();
    if (store == nullptr) {
        return symbols;
    }
    std::vector<CString> classes;
    Repository().ReloadTASetting();
    store->LoadTATrendLineSettingClass(classes);
    for (const CString& chartClass : classes) {
        std::vector<CString> symbolKeys;
        store->LoadTATrendLineSettingSymbols(chartClass, symbolKeys);
        for (const CString& symbolKey : symbolKeys) {
            TrendLineSymbol symbol = ReadSymbol(chartClass, symbolKey);
            if (symbol.count > 0) {
                symbols.push_back(std::move(symbol));
            }
        }
    }
    return symbols;
}

void ClearTrendLineClass(const CString& chartClass) {
    Repository().ClearAllTrendLine(chartClass);
    SMXCfgIO2* store = Store();
    if (store == nullptr) {
        return;
    }
    store->PackFile();
    // The repository has forgotten every key that contains the text, the store only the class.
    std::vector<CString> classes;
    store->LoadTATrendLineSettingClass(classes);
    const bool forgotten = std::ranges::any_of(classes, [&](const CString& other) {
        std::vector<CString> symbolKeys;
        store->LoadTATrendLineSettingSymbols(other, symbolKeys);
        return std::ranges::any_of(symbolKeys, [&](const CString& symbolKey) {
            return (other + '-' + symbolKey).find(chartClass) != CString::npos;
        });
    });
    if (forgotten) {
        store->SetTASettingReloadType(true);
        Repository().ReloadTASetting();
    }
    Repository().SendTLineUpdate2AllTechView();
}

QString TrendLineKindName(int kind) {
    CString name;
    int decoded = 0;
    bool flag = false;
    Repository().DecodeTrendLineData(fmt::format("{}/////", kind), decoded, name, flag);
    return name.empty() ? Tr("IDS_TERMINAL-CHART_LINE_KIND").arg(kind) : ui::ToQString(name);
}

bool IsTrendLine(const CString& data, int& kind) {
    CString name;
    bool flag = false;
    return Repository().DecodeTrendLineData(data, kind, name, flag) != 0 && kind > 0;
}

}  // namespace ta::terminal
