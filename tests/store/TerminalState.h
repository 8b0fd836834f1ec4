#pragma once

#include "settings/TaSettingHandle.h"

namespace ta::test {

/// Gives the repository a state of its own: some groups, their studies and parameters, and a trend
/// line, all told from those of every other tag and turn. Not saved.
void MakeState(CTaSettingHandle& repository, const CString& tag, int turn);

/// The name of the state that the repository shows, "tag turn"; empty for a mixture of states.
CString StateOf(CTaSettingHandle& repository);

}  // namespace ta::test
