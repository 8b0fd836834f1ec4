#pragma once

#include "platform/Types.h"

#include <compare>
#include <cstdint>
#include <string_view>

namespace ta::terminal {

/// What a stored row holds. The numbers are in the users' files: never change or reuse one.
enum class SettingKind : std::int64_t {
    CommitCounter = 0,  ///< grows by one with every commit; the store's own

    GroupNames = 1,
    GroupMaxCount = 2,

    // Per group: number = group index.
    StudyList = 10,  ///< sub = the pane's key
    UniNum = 11,
    ParamStrings = 12,
    ShapeStrings = 13,
    ShowCount = 14,
    TechWndShowKey = 15,

    ScalePos = 20,
    ChartGrid = 21,
    Cursor = 22,
    CursorOld = 23,
    ShowTAInfo = 24,
    CrossLine = 25,
    LowIdx = 26,
    HighLow = 27,
    CDP = 28,
    CursorLineLockMode = 29,
    CursorMoveStyle = 30,

    ViewGroups = 40,  ///< number = the layout number

    // Per symbol: name = chart class, sub = symbol key.
    TrendLines = 50,
    TrendLineDate = 51,
};

/// True for the kinds whose `name` is a chart class.
constexpr bool IsTrendLineKind(SettingKind kind) {
    return kind == SettingKind::TrendLines || kind == SettingKind::TrendLineDate;
}

/// True for what belongs to the list of groups and the groups in it.
constexpr bool IsGroupKind(SettingKind kind) {
    return kind == SettingKind::GroupNames ||
           (kind >= SettingKind::StudyList && kind <= SettingKind::CursorMoveStyle);
}

/// The key of one stored row. Ordered as the rows in the file are: by kind, number, then the bytes
/// of name and sub. Does not own its texts.
struct SettingKey {
    SettingKind kind{};
    std::int64_t number = 0;
    std::string_view name = {};
    std::string_view sub = {};

    auto operator<=>(const SettingKey&) const = default;
    bool operator==(const SettingKey&) const = default;
};

/// One stored row. Does not own its bytes.
struct SettingRow {
    SettingKey key;
    std::string_view value;
};

/// A key with texts of its own.
struct OwnedSettingKey {
    explicit OwnedSettingKey(const SettingKey& key)
        : kind(key.kind), number(key.number), name(key.name), sub(key.sub) {}

    SettingKey View() const { return {kind, number, name, sub}; }

    SettingKind kind;
    std::int64_t number;
    CString name;
    CString sub;
};

/// Orders keys of both sorts, so that a map of owned keys is searched without a copy.
struct SettingKeyLess {
    using is_transparent = void;

    static const SettingKey& View(const SettingKey& key) { return key; }
    static SettingKey View(const OwnedSettingKey& key) { return key.View(); }

    template <typename A, typename B>
    bool operator()(const A& a, const B& b) const {
        return View(a) < View(b);
    }
};

}  // namespace ta::terminal
