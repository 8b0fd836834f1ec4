#pragma once

#include "settings/TaSettingHandle.h"

#include <vector>

namespace ta {

/// The settings repository of the process, under a name that is short enough for every line.
inline CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

/// The names of its groups, in its order.
inline std::vector<CString> GroupNames() {
    std::vector<CString> names;
    Repository().GetGroupNameList(names);
    return names;
}

}  // namespace ta
