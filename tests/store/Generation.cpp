#include "tests/store/Generation.h"

#include <fmt/format.h>

namespace ta::test {

namespace {

constexpr int kSymbols = 12;
const CString kClass = "MXTechView";

/// The texts differ in length from state to state, so that pages split, join and come free.
CString Text(int generation, int part) {
    return fmt::format("{}/{}/{}", generation, part,
                       CString(static_cast<std::size_t>((generation * 37 + part * 11) % 200),
                               static_cast<char>('a' + generation % 26)));
}

std::vector<CString> Texts(int generation, int part, int count) {
    std::vector<CString> texts;
    for (int i = 0; i < count; ++i) {
        texts.push_back(Text(generation, part + i));
    }
    return texts;
}

std::vector<CString> Names(int generation) {
    std::vector<CString> names = Texts(generation, 0, 4 + generation % 7);
    names.front() = fmt::format("{}", generation);
    return names;
}

bool HasLines(int generation, int symbol) {
    return (generation + symbol) % 3 != 0;
}

TrendLinesByType Lines(int generation, int symbol) {
    if (!HasLines(generation, symbol)) {
        return {};
    }
    return {{fmt::format("0a/{}/0000/0/x", symbol), Texts(generation, symbol, 1 + symbol % 3)}};
}

CString Symbol(int symbol) {
    return fmt::format("{}", 1000 + symbol);
}

void SaveGroup(SMXCfgIO2& store, int generation, unsigned group) {
    const int part = static_cast<int>(group) * 100;
    for (int pane = 1; pane <= 10; ++pane) {
        store.SaveTAGroupStudyList(group, fmt::format("StudyTypeLogKey{:02d}", pane),
                                   {generation, part + pane});
    }
    store.SaveTAStudyParamSetting(group, Texts(generation, part, 5));
    store.SaveTAStudyShapeSetting(group, Texts(generation, part + 50, 5));
    store.SaveTAStudyShowCount(group, generation);
    store.SaveTASettingScalePos(group, static_cast<std::uint32_t>(generation));
    store.SaveTASettingCDP(group, generation % 2 == 0);
    store.SaveTAGroupUniNum(group, generation + part);
}

template <typename T>
bool Holds(SMXCfgIO2& store, bool (SMXCfgIO2::*load)(unsigned, T&), unsigned group,
           const T& wanted) {
    T found{};
    return (store.*load)(group, found) && found == wanted;
}

bool HasGroup(SMXCfgIO2& store, int generation, unsigned group) {
    const int part = static_cast<int>(group) * 100;
    using S = SMXCfgIO2;
    for (int pane = 1; pane <= 10; ++pane) {
        std::vector<std::int32_t> studies;
        if (!store.LoadTAGroupStudyList(group, fmt::format("StudyTypeLogKey{:02d}", pane),
                                        studies) ||
            studies != std::vector<std::int32_t>{generation, part + pane}) {
            return false;
        }
    }
    return Holds(store, &S::LoadTAStudyParamSetting, group, Texts(generation, part, 5)) &&
           Holds(store, &S::LoadTAStudyShapeSetting, group, Texts(generation, part + 50, 5)) &&
           Holds(store, &S::LoadTAStudyShowCount, group, generation) &&
           Holds(store, &S::LoadTASettingScalePos, group, static_cast<std::uint32_t>(generation)) &&
           Holds(store, &S::LoadTASettingCDP, group, generation % 2 == 0) &&
           Holds(store, &S::LoadTAGroupUniNum, group, generation + part);
}

bool HasSymbol(SMXCfgIO2& store, int generation, int symbol) {
    TrendLinesByType lines;
    CString date;
    const bool found = store.LoadTATrendLine(kClass, "0a/" + Symbol(symbol), lines);
    const bool dated = store.LoadTATrendLineSymbolUpdTime(kClass, 0x0a, Symbol(symbol), date);
    const bool wanted = HasLines(generation, symbol);
    return found == wanted && dated == wanted && lines == Lines(generation, symbol) &&
           date == (wanted ? Text(generation, symbol) : CString());
}

bool IsEmpty(SMXCfgIO2& store) {
    std::vector<CString> classes;
    int uniNum = 0;
    return store.LoadTATrendLineSettingClass(classes) && classes.empty() &&
           !store.LoadTAGroupUniNum(0, uniNum);
}

}  // namespace

void SaveGeneration(SMXCfgIO2& store, int generation) {
    if (generation % 5 == 0) {
        store.RemoveAllTrendLineData(kClass);
    }
    for (int symbol = 0; symbol < kSymbols; ++symbol) {
        store.SaveTATrendLine(kClass, "0a/" + Symbol(symbol), Lines(generation, symbol));
        if (HasLines(generation, symbol)) {
            store.SaveTATrendLineSymbolUpdTime(kClass, 0x0a, Symbol(symbol),
                                               Text(generation, symbol));
        }
    }
    const std::vector<CString> names = Names(generation);
    store.SaveTAGroupNameList(names);
    for (unsigned group = 0; group < names.size(); ++group) {
        SaveGroup(store, generation, group);
    }
}

std::optional<int> LoadGeneration(SMXCfgIO2& store) {
    std::vector<CString> names;
    if (!store.LoadTAGroupNameList(names) || names.empty()) {
        return IsEmpty(store) ? std::optional(0) : std::nullopt;
    }
    const int generation = std::atoi(names.front().c_str());
    bool whole = names == Names(generation);
    for (unsigned group = 0; group < names.size(); ++group) {
        whole = whole && HasGroup(store, generation, group);
    }
    for (int symbol = 0; symbol < kSymbols; ++symbol) {
        whole = whole && HasSymbol(store, generation, symbol);
    }
    return whole ? std::optional(generation) : std::nullopt;
}

}  // namespace ta::test
