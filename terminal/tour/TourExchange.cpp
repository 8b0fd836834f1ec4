#include "terminal/tour/TourExchange.h"

#include "groupfile/TAGroupExport.h"
#include "settings/TaSettingHandle.h"
#include "terminal/frame/GroupExchange.h"
#include "terminal/tour/TourGuide.h"

#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

namespace ta::terminal {
namespace {

void PressButton(QWidget& dialog, const char* name) {
    auto* button = dialog.findChild<QPushButton*>(name);
    TourGuide::Expect(button != nullptr, "a dialog lacks a button");
    TourGuide::Click(*button, button->rect().center());
}

int GroupCount() {
    std::vector<CString> names;
    return static_cast<int>(CTaSettingHandle::GetInstance().GetGroupNameList(names));
}

}  // namespace

void ShowExport(TourGuide& guide) {
    guide.Choose(Command::ExportGroups, {[&guide](QWidget& dialog) {
                     auto* list = dialog.findChild<QTableWidget*>();
                     TourGuide::Expect(list != nullptr && list->rowCount() == GroupCount(),
                                       "the export dialog lacks groups");
                     PressButton(dialog, "selectButton");
                     guide.Picture("group-export");
                     TourGuide::Press(dialog, Qt::Key_Escape);
                 }});
}

void ShowImport(TourGuide& guide) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("groups.TASG");
    TourGuide::Expect(CTAGroupExport().ExportFile(path) == 1, "the group file is not written");
    // A group that is not here any more, and one that is here in another form.
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    const int before = GroupCount();
    TourGuide::Expect(before >= 2, "there are too few groups");
    repository.DeleteGroupSetting(
        repository.GetGroupNameByIndex(static_cast<unsigned>(before - 1)));
    repository.SetStudyCountByGroupName(repository.GetSystemDefaultGroup(), 2);
    guide.WithDialogs([&] { ImportGroups(guide.Window(), path); },
                      {[&guide](QWidget& dialog) {
                           auto* merged = dialog.findChild<QListWidget*>("mergeList");
                           TourGuide::Expect(
                               merged != nullptr && merged->count() == GroupCount() + 1,
                               "the merge lacks the new group");
                           merged->setCurrentRow(0);
                           TourGuide::Settle();
                           guide.Picture("group-import");
                           PressButton(dialog, "okButton");
                       },
                       [](QWidget& message) { TourGuide::Press(message, Qt::Key_Return); }});
    TourGuide::Expect(GroupCount() == before, "the groups are not imported");
}

}  // namespace ta::terminal
