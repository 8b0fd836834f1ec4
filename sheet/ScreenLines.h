#pragma once

#include "settings/TaSettingHandle.h"

#include <vector>

namespace ta::sheet {

/// One line per screen that a group is used in, in byte order of the names: the name, or
/// "name [3]" when three views of that screen use the group.
std::vector<CString> ScreenLines(const std::vector<ST_TA_ViewGroupInfo>& views);

}  // namespace ta::sheet
