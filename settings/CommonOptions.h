#pragma once

#include "platform/CommonProp.h"
#include "platform/ConfigStore.h"

#include <array>
#include <cstdint>
#include <variant>

namespace ta::settings {

/// One common chart option: where the properties hold it and how the store keeps it.
template <class Value>
struct CommonOption {
    Value CommonProp::*field;
    bool (SMXCfgIO2::*load)(unsigned, Value&);
    bool (SMXCfgIO2::*save)(unsigned, Value);
};

using AnyCommonOption = std::variant<CommonOption<bool>, CommonOption<std::uint32_t>>;

/// The eleven options in the order in which they are saved.
inline const std::array<AnyCommonOption, 11> kCommonOptions{{
    CommonOption<std::uint32_t>{&CommonProp::uScalePos, &SMXCfgIO2::LoadTASettingScalePos,
                                &SMXCfgIO2::SaveTASettingScalePos},
    CommonOption<bool>{&CommonProp::bChartGrid, &SMXCfgIO2::LoadTASettingChartGrid,
                       &SMXCfgIO2::SaveTASettingChartGrid},
    CommonOption<bool>{&CommonProp::bCursor, &SMXCfgIO2::LoadTASettingCursor,
                       &SMXCfgIO2::SaveTASettingCursor},
    CommonOption<bool>{&CommonProp::bCursorOld, &SMXCfgIO2::LoadTASettingCursorOld,
                       &SMXCfgIO2::SaveTASettingCursorOld},
    CommonOption<bool>{&CommonProp::bShowTAInfo, &SMXCfgIO2::LoadTASettingShowTAInfo,
                       &SMXCfgIO2::SaveTASettingShowTAInfo},
    CommonOption<bool>{&CommonProp::bCrossLine, &SMXCfgIO2::LoadTASettingCrossLine,
                       &SMXCfgIO2::SaveTASettingCrossLine},
    CommonOption<bool>{&CommonProp::bLowIdx, &SMXCfgIO2::LoadTASettingLowIdx,
                       &SMXCfgIO2::SaveTASettingLowIdx},
    CommonOption<bool>{&CommonProp::bHighLow, &SMXCfgIO2::LoadTASettingHighLow,
                       &SMXCfgIO2::SaveTASettingHighLow},
    CommonOption<bool>{&CommonProp::bCDP, &SMXCfgIO2::LoadTASettingCDP,
                       &SMXCfgIO2::SaveTASettingCDP},
    CommonOption<std::uint32_t>{&CommonProp::uCursorLineLockMode,
                                &SMXCfgIO2::LoadTASettingCursorLineLockMode,
                                &SMXCfgIO2::SaveTASettingCursorLineLockMode},
    CommonOption<std::uint32_t>{&CommonProp::uCursorMoveStyle,
                                &SMXCfgIO2::LoadTASettingCursorMoveStyle,
                                &SMXCfgIO2::SaveTASettingCursorMoveStyle},
}};

}  // namespace ta::settings
