#include "platform/ui/CheckList.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/parameters/GroupParameters.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QFile>
#include <QTreeWidget>

namespace ta::tour {
namespace {

// The same in both languages, so that the steps find them again.
const QString kFrom = QStringLiteral("Parameters A");
const QString kTo = QStringLiteral("Parameters B");
constexpr StudyType kMacd = 22;

void AddGroup(const QString& name, const StudyLists& studies) {
    const CString group = ui::FromQString(name);
    Expect(Repository().AddGroupSetting(group) == 1, "the group is not added");
    Repository().SetStudyListByGroupName(group, studies);
}

void AddGroups(Guide& guide) {
    const StudyLists studies{{0, 4, 7}, {16}, {kMacd}, {23, 40}};
    AddGroup(kFrom, studies);
    AddGroup(kTo, studies);
    const std::vector<terminal::StudySettings> tuned{
        {4, {3, 8, 21, 55}, terminal::ReadGroup(ui::FromQString(kTo), {4}).front().shapes},
        {kMacd,
         {5, 35, 5},
         {{0xD6336C, 2, 0, true}, {0xE8590C, 1, 4, true}, {0x7C848C, 1, 0, true}}}};
    Expect(terminal::WriteGroup(ui::FromQString(kFrom), tuned).empty(), "the values are refused");
    Repository().SaveAllGroupSetting();
    terminal::TellChartsOfGroups();
    guide.Window().PollStore();
}

void ShowChooser(Guide& guide, const QString& language, const QString& path) {
    QFile::remove(path);
    guide.ChooseGroup(kFrom);
    const auto chooser = [&](QWidget& dialog) {
        auto& list = Find<ui::CheckList>(dialog, "studyList");
        Expect(list.rowCount() == 7, "the chooser lacks studies");
        guide.Picture("parameters-none-" + language);
        list.setCurrentCell(4, 0);
        QTest::keyClick(&list, Qt::Key_Space);
        guide.Picture("parameters-some-" + language);
        Push(dialog, "selectButton");
        guide.Picture("parameters-all-" + language);
        if (language == "zh") {
            guide.DarkPicture("parameters-all-dark");
        }
        Push(dialog, "okButton");
    };
    guide.Choose(Command::ExportParameters, {chooser, ChooseFile(path)});
    Expect(QFile::exists(path), "the parameters are not written");
    guide.Picture("parameters-exported-" + language);
}

void ShowPreview(Guide& guide, const QString& language, const QString& path) {
    guide.ChooseGroup(kTo);
    const auto preview = [&](QWidget& dialog) {
        auto& list = Find<QTreeWidget>(dialog, "changeList");
        Expect(list.topLevelItemCount() == 2, "the preview does not have what differs");
        guide.Picture("parameters-preview-" + language);
        if (language == "zh") {
            guide.DarkPicture("parameters-preview-dark");
        }
        Dismiss(dialog);
    };
    guide.Choose(Command::ImportParameters, {ChooseFile(path), preview});
}

void ShowRefusal(Guide& guide, const QString& language, const QString& path) {
    QFile file(path);
    Expect(file.open(QIODevice::ReadOnly), "the file is gone");
    const QByteArray bytes = file.readAll().replace(",35,", ",3500,");
    QFile damaged(guide.FileBeside("damaged.csv"));
    Expect(damaged.open(QIODevice::WriteOnly) && damaged.write(bytes) == bytes.size(),
           "the file cannot be written");
    damaged.close();
    const auto refusal = [&](QWidget& message) {
        guide.Picture("parameters-refused-" + language);
        Confirm(message);
    };
    guide.Choose(Command::ImportParameters, {ChooseFile(damaged.fileName()), refusal});
    damaged.remove();
}

void ShowParameters(Guide& guide) {
    AddGroups(guide);
    InBothLanguages(guide, [&guide](const QString& language) {
        guide.MenuPicture(MenuId::Group, "parameters-menu-" + language);
        const QString path = guide.FileBeside("parameters-" + language + ".csv");
        ShowChooser(guide, language, path);
        ShowPreview(guide, language, path);
        ShowRefusal(guide, language, path);
    });
    for (const QString& name : {kFrom, kTo}) {
        Repository().DeleteGroupSetting(ui::FromQString(name));
    }
    Repository().SaveAllGroupSetting();
    terminal::TellChartsOfGroups();
    guide.Window().PollStore();
    guide.ChooseDefaultGroup();
}

}  // namespace

std::vector<Step> ParameterSteps() {
    return {{"study parameters", ShowParameters}};
}

}  // namespace ta::tour
