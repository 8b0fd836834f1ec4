#pragma once

#include "settings/TaSettingHandle.h"

namespace ta {

/// The settings repository of the process, under a name that is short enough for every line.
inline CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

}  // namespace ta
