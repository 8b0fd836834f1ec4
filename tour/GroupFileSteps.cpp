#include "groupfile/TAGroupExport.h"
#include "settings/TaSettingHandle.h"
#include "terminal/frame/openers/Openers.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

namespace ta::tour {
namespace {

int GroupCount() {
    std::vector<CString> names;
    return static_cast<int>(CTaSettingHandle::GetInstance().GetGroupNameList(names));
}

void ShowExport(Guide& guide) {
    guide.Choose(Command::ExportGroups, {[&guide](QWidget& dialog) {
                     auto* list = dialog.findChild<QTableWidget*>();
                     Expect(list != nullptr && list->rowCount() == GroupCount(),
                            "the export dialog lacks groups");
                     Push(dialog, "selectButton");
                     guide.Picture("group-export");
                     Dismiss(dialog);
                 }});
}

void ShowImport(Guide& guide) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("groups.TASG");
    Expect(CTAGroupExport().ExportFile(path) == 1, "the group file is not written");
    // A group that is not here any more, and one that is here in another form.
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    const int before = GroupCount();
    Expect(before >= 2, "there are too few groups");
    repository.DeleteGroupSetting(
        repository.GetGroupNameByIndex(static_cast<unsigned>(before - 1)));
    repository.SetStudyCountByGroupName(repository.GetSystemDefaultGroup(), 2);
    guide.WithDialogs([&] { ImportGroups(guide.Parts(), path); },
                      {[&guide](QWidget& dialog) {
                           auto* merged = dialog.findChild<QListWidget*>("mergeList");
                           Expect(merged != nullptr && merged->count() == GroupCount() + 1,
                                  "the merge lacks the new group");
                           merged->setCurrentRow(0);
                           Settle();
                           guide.Picture("group-import");
                           Push(dialog, "okButton");
                       },
                       Confirm});
    Expect(GroupCount() == before, "the groups are not imported");
}

}  // namespace

std::vector<Step> GroupFileSteps() {
    return {{"group export", ShowExport}, {"group import", ShowImport}};
}

}  // namespace ta::tour
