#pragma once

#include "settings/TaSettingHandle.h"

#include <vector>

namespace ta::sheet {

inline CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

/// The repository's groups in its order.
inline std::vector<CString> GroupNames() {
    std::vector<CString> names;
    Repository().GetGroupNameList(names);
    return names;
}

}  // namespace ta::sheet
