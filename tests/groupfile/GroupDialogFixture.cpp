#include "tests/groupfile/GroupDialogFixture.h"

#include "platform/SyncInfo.h"

namespace ta::test {
namespace {

// The texts that carry arguments.
constexpr std::pair<const char*, const char*> kTexts[] = {
    {"IDS_TADIALOGS-FILE_UNREADABLE", "%1 unreadable: %2"},
    {"IDS_TADIALOGS-FILE_UNWRITABLE", "%1 unwritable: %2"},
    {"IDS_TADIALOGS-FILE_TOO_LARGE", "larger than %1"},
    {"IDS_TADIALOGS-FILE_ASK_CREATE", "create %1?"},
    {"IDS_TADIALOGS-GROUPFILE_NOT_CARRIED", "not carried: %1"},
    {"IDS_TADIALOGS-FILE_WILDCARD", "no file: %1"},
    {"IDS_TADIALOGS-GROUPFILE_TOO_MANY_NAMES", "%1 listed, %2 read"},
    {"IDS_TADIALOGS-GROUPFILE_IMPORTED", "added %1, overwritten %2"},
    {"IDS_TADIALOGS-GROUPFILE_NOTHING_IMPORTED", "nothing imported"},
    {"IDS_TADIALOGS-GROUPFILE_NO_FIRST_PANE", "no first pane: %1"},
    {"IDS_TADIALOGS-GROUPFILE_FULL", "full at %1"},
    {"IDS_TADIALOGS-GROUPFILE_NOT_MERGED_AGAIN", "stays at %1"},
    {"IDS_TADIALOGS-GROUPFILE_LEFT_OUT", "%1 left out of %2"},
    {"IDS_TADIALOGS-GROUPFILE_LIST_SEPARATOR", ";"},
    {"IDS_TADIALOGS-GROUPFILE_SHOW_COUNT", "shows %1"},
    {"IDS_TADIALOGS-GROUPFILE_PANE", "pane %1: %2"},
    {"IDS_TADIALOGS-GROUPFILE_HIDDEN_PANE", "hidden %1: %2"},
    {"IDS_TADIALOGS-GROUPFILE_NO_STUDY", "none"},
    {"IDS_TADIALOGS-GROUPFILE_UNKNOWN_STUDY", "study %1"},
    {"IDS_TADIALOGS-GROUPFILE_NEW", "new"},
    {"IDS_TADIALOGS-GROUPFILE_SAME", "same"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT", "other %1"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_COUNT", "count %1>%2"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_PANE", "pane %1"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_PARAMS", "params"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_SHAPES", "shapes"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_LAYOUT", "layout"},
};

void UseStore(SMXCfgIO2& store) {
    Services services = CSyncInfo::GetSettingCFG().GetServices();
    services.configStore = &store;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

}  // namespace

GroupDialogFixture::GroupDialogFixture() {
    for (const auto& [key, text] : kTexts) {
        quotes.language[key] = text;
    }
    UseStore(store);
}

GroupDialogFixture::~GroupDialogFixture() {
    UseStore(memory);
}

StudyLists GroupDialogFixture::Studies(const CString& name) {
    StudyLists lists;
    Repository().GetStudyListByGroupName(name, lists);
    for (auto& pane : lists) {
        std::erase(pane, kNoStudy);
    }
    while (!lists.empty() && lists.back().empty()) {
        lists.pop_back();
    }
    return lists;
}

Names GroupDialogFixture::Params(const CString& name) {
    Names params;
    Repository().GetStudyParamSettingByGroupName(name, params);
    return params;
}

}  // namespace ta::test
