#include "platform/SyncInfo.h"

CSyncInfo& CSyncInfo::GetSettingCFG() {
    // Never destroyed: the repository's own destructor, at process exit, may still ask.
    static CSyncInfo& instance = *new CSyncInfo;
    return instance;
}
