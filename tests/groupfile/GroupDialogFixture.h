#pragma once

#include "tests/support/DialogFixture.h"
#include "tests/support/RecordingConfigStore.h"

#include <vector>

namespace ta::test {

using Names = std::vector<CString>;

/// A dialog's surroundings, with a record of the calls to the store, and what the repository has of
/// a group.
class GroupDialogFixture : public DialogFixture {
protected:
    GroupDialogFixture();
    ~GroupDialogFixture() override;

    static StudyLists Studies(const CString& name);
    static Names Params(const CString& name);

    RecordingConfigStore store{memory};
};

}  // namespace ta::test
