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

std::vector<CString> LinesOn(const BarsKey& chart, const CString& scale) {
    std::vector<CString> lines;
    if (!chart.symbol.empty()) {
        Repository().GetTrendLineData(lines, kTechViewClass, SymbolKeyOf(chart), scale,
                                      chart.period, chart.count);
    }
    return lines;
}

bool IsExceeded(unsigned count, int more, int limit) {
    return limit >= 0 && count + static_cast<unsigned>(more) > static_cast<unsigned>(limit);
}

/// Takes `from` out of the lines, or the lines that are equal to it; the place of the first. -1: it
/// is not there.
int TakeOut(std::vector<CString>& lines, const CString& from) {
    const auto found = std::ranges::find(lines, from);
    const auto place = static_cast<int>(found - lines.begin());
    return std::erase(lines, from) > 0 ? place : -1;
}

/// Does one edit to the lines; what takes it back goes in front of the result's.
void Edit(std::vector<CString>& lines, const TrendLineEdit& edit, TrendLineResult& result) {
    int place = edit.place;
    if (!edit.from.empty()) {
        place = TakeOut(lines, edit.from);
        if (place < 0) {
            ++result.missing;
            return;
        }
    }
    const bool comes = !edit.to.empty() && std::ranges::find(lines, edit.to) == lines.end();
    if (comes) {
        const auto end = static_cast<int>(lines.size());
        lines.insert(lines.begin() + (place < 0 ? end : std::min(place, end)), edit.to);
    }
    if (comes || !edit.from.empty()) {
        result.back.insert(result.back.begin(), {comes ? edit.to : CString(), edit.from, place});
    }
}

/// The lines of one symbol: of every period and scale whose key is one.
void ListSymbol(const CString& symbolKey, std::vector<ListedTrendLine>& listed) {
    CTaSettingHandle& repository = Repository();
    BarsKey chart;
    TrendLineList byType;
    if (repository.DecodeTrendLineServiceSymbolKey(symbolKey, chart.market, chart.symbol) == 0) {
        return;
    }
    repository.GetAllTrendLineData(CString(kTechViewClass) + '-' + symbolKey, byType);
    const CString date =
        repository.GetTrendLineSymbolUpdTime(kTechViewClass, chart.market, chart.symbol);
    for (const auto& [typeKey, lines] : byType) {
        CString key;
        CString scale;
        if (repository.DecodeTrendLineTypeKey(typeKey, key, scale, chart.period, chart.count) ==
                0 ||
            LinesOn(chart, scale) != lines) {
            continue;
        }
        std::set<CString> seen{CString()};
        for (const CString& line : lines) {
            if (seen.insert(line).second) {
                listed.push_back({chart, scale, line, date});
            }
        }
    }
}

}  // namespace

std::vector<CString> StoredTrendLines(const BarsKey& chart) {
    return LinesOn(chart, kPriceLines);
}

TrendLineAdding MayAddTrendLines(const BarsKey& chart, int lines, int* limit) {
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
    const unsigned ofSymbol = repository.GetTrendLineCount(kTechViewClass, SymbolKeyOf(chart));
    if (IsExceeded(ofSymbol, lines, perSymbol)) {
        return refuse(TrendLineAdding::TooManyOfSymbol, perSymbol);
    }
    if (IsExceeded(repository.GetTrendLineCount(kTechViewClass), lines, inAll)) {
        return refuse(TrendLineAdding::TooManyInAll, inAll);
    }
    return TrendLineAdding::Added;
}

TrendLineResult EditTrendLines(const BarsKey& chart, const std::vector<TrendLineEdit>& edits,
                               const CString& scale) {
    Repository().ReloadTASetting();
    const CTaSettingHandle::ReloadHold hold(Repository());
    TrendLineResult result;
    const std::vector<CString> before = LinesOn(chart, scale);
    std::vector<CString> lines = before;
    for (const TrendLineEdit& edit : edits) {
        Edit(lines, edit, result);
    }
    if (lines.size() > before.size()) {
        const auto more = static_cast<int>(lines.size() - before.size());
        int limit = 0;
        const TrendLineAdding adding = MayAddTrendLines(chart, more, &limit);
        if (adding != TrendLineAdding::Added) {
            return {{}, 0, adding, limit};
        }
    }
    if (!result.back.empty()) {
        Repository().SetTrendLineData(kTechViewClass, SymbolKeyOf(chart), scale, chart.period,
                                      lines, chart.count);
        Save(chart);
    }
    return result;
}

std::vector<TrendLineEdit> Removing(const std::vector<CString>& lines) {
    std::vector<TrendLineEdit> edits;
    edits.reserve(lines.size());
    for (const CString& line : lines) {
        edits.push_back({line, {}});
    }
    return edits;
}

std::vector<ListedTrendLine> ListTrendLines() {
    std::vector<ListedTrendLine> listed;
    if (SMXCfgIO2* store = Store()) {
        std::vector<CString> symbolKeys;
        Repository().ReloadTASetting();
        store->LoadTATrendLineSettingSymbols(kTechViewClass, symbolKeys);
        for (const CString& symbolKey : symbolKeys) {
            ListSymbol(symbolKey, listed);
        }
    }
    return listed;
}

QString TrendLineKindName(int kind) {
    if (kind <= 0) {
        return Tr("IDS_TERMINAL-FRAME_LINES_UNREADABLE");
    }
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
