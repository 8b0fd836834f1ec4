// The export dialog: what is checked, what is asked, and what is in the file afterwards.

#include "groupfile/TAGroupExport.h"
#include "platform/ProfileFile.h"
#include "platform/Text.h"
#include "tests/groupfile/GroupDialogFixture.h"
#include "tests/support/ScarceMemory.h"
#include "tests/support/SmallFilesOnly.h"

#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <functional>
#include <memory>
#include <new>

namespace ta::test {
namespace {

using ui::PromptIcon;
using Kind = ScriptedPrompts::Kind;

const CString kAllNames = text::FromUtf8("Trend,許功蓋,Volume");

class GroupExportTest : public GroupDialogFixture {
protected:
    std::unique_ptr<CTAGroupExport> Make() {
        memory.names = Names{"Trend", text::FromUtf8("許功蓋"), "Volume"};
        memory.params[0] = {"4=5,10", "x"};
        memory.showCounts[1] = 3;
        Load();
        return std::make_unique<CTAGroupExport>();
    }

    QTableWidget& List() { return Find<QTableWidget>(dialog, "groupList"); }
    QPushButton& SelectAll() { return Find<QPushButton>(dialog, "selectButton"); }
    std::string Checked() {
        std::string checks;
        for (int row = 0; row < List().rowCount(); ++row) {
            checks += List().item(row, 0)->checkState() == Qt::Checked ? 'x' : '.';
        }
        return checks;
    }
    /// Shows the dialog and checks these rows with the mouse.
    void Open(std::initializer_list<int> rows = {}) {
        Show(dialog);
        for (const int row : rows) {
            ClickCheckBox(row);
        }
    }
    void ClickCheckBox(int row) {
        const QRect cell = List().visualItemRect(List().item(row, 0));
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, cell.center());
    }
    void ExpectClosed(int result, int commits) {
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.result(), result);
        EXPECT_EQ(memory.packCount, commits);
    }
    ProfileReader File(const char* name) { return ProfileReader(Read(Path(name))); }
    /// The names that a file says it has.
    CString GroupList(const char* name) {
        return File(name).GetString("Common", "GroupList", "none");
    }

    const std::unique_ptr<CTAGroupExport> made = Make();
    CTAGroupExport& dialog = *made;
};

TEST_F(GroupExportTest, OpensWithEveryGroupUncheckedAndTheButtonChecksAllOrNone) {
    Open();
    QTableWidgetItem& name = *List().item(1, 1);
    EXPECT_EQ(name.text(), QString("許功蓋"));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualItemRect(&name).center());
    EXPECT_EQ(Checked(), "...") << "a name is no check box";
    Press(dialog, Qt::Key_Space);
    EXPECT_EQ(Checked(), ".x.") << "but its row has the keys";
    EXPECT_EQ(SelectAll().text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL");
    Click(SelectAll());
    EXPECT_EQ(Checked(), "xxx");
    EXPECT_EQ(SelectAll().text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL");
    ClickCheckBox(1);
    EXPECT_EQ(Checked(), "x.x");
    Click(SelectAll());
    EXPECT_EQ(Checked(), "...");
    EXPECT_EQ(SelectAll().text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL");
}

TEST_F(GroupExportTest, NothingCheckedIsToldAndEscapeWritesNothing) {
    Open();
    EXPECT_EQ(ToldBy([&] { Press(dialog, Qt::Key_Enter); }), "IDS_DIALOG-EXPORTTA_SELECT");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_TRUE(dialog.isVisible());
    ClickCheckBox(0);
    Press(dialog, Qt::Key_Escape);
    ExpectClosed(QDialog::Rejected, 0);
}

TEST_F(GroupExportTest, TheCheckedGroupsReplaceTheWholeFile) {
    Write(Path("groups.TASG"), "[Old]\r\nStudyShowCount=9\r\n");
    Open({2, 0});
    prompts.ExpectSaveFile(Path("groups.TASG"));
    prompts.ExpectMessage();
    prompts.Meanwhile([this] { EXPECT_EQ(memory.packCount, 1) << "saved before it is exported"; });
    Click(*dialog.GetDlgItem(ui::kIdOk));
    const auto& asked = prompts.All().front();
    EXPECT_EQ(asked.text, "*.TASG");
    EXPECT_EQ(asked.preset, "*.TASG");
    EXPECT_EQ(asked.title, "IDS_DIALOG-EXPORTTA_TITLE");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPEXPORT_EXPORT_OK");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::None);
    ExpectClosed(QDialog::Accepted, 1);
    EXPECT_TRUE(Read(Path("groups.TASG"))
                    .starts_with("[Common]\r\nFileVersion=TAS Ver3.0\r\nGroupList=Trend,Volume\r\n"
                                 "[Trend]\r\nStudyType01="));
    const ProfileReader file = File("groups.TASG");
    EXPECT_FALSE(file.HasSection("Old"));
    EXPECT_FALSE(file.HasSection(text::FromUtf8("許功蓋")));
    EXPECT_EQ(file.GetString("Trend", "ParamSetting"), "4=5,10$x");
}

TEST_F(GroupExportTest, CancellingTheFileDialogIsToldAndClosesThisOne) {
    Open({0});
    prompts.ExpectCancel(Kind::SaveFile);
    EXPECT_EQ(ToldBy([&] { Press(dialog, Qt::Key_Enter); }),
              "IDS_TECHVIEW-STRING_GROUPEXPORT_NOSELECTFILE");
    ExpectClosed(QDialog::Accepted, 0);
}

TEST_F(GroupExportTest, AFileDialogThatCannotBeShown) {
    QString path = "before";
    const std::function<void()> attempts[] = {
        [this] { EXPECT_EQ(dialog.SelectPathAndExport(), 1); },
        [&] { EXPECT_EQ(dialog.GetSaveFilePath(path), 0); },
    };
    for (const auto& attempt : attempts) {
        prompts.ExpectSaveFile(Path("never.TASG"));
        prompts.Meanwhile([] { throw std::bad_alloc(); });
        EXPECT_EQ(ToldBy([&] { attempt(); }), "IDS_TECHVIEW-STRING_MEMORY_ERR");
    }
    EXPECT_EQ(path, "");
    EXPECT_EQ(memory.packCount, 0);
}

TEST_F(GroupExportTest, WithoutAFilledListEveryGroupIsExported) {
    EXPECT_EQ(dialog.ExportFile(""), 0);
    EXPECT_EQ(memory.packCount, 0);
    EXPECT_EQ(CTAGroupExport::CheckFileExist(Path("all.TASG")), 0);
    EXPECT_EQ(dialog.ExportFile(Path("all.TASG")), 1);
    EXPECT_EQ(CTAGroupExport::CheckFileExist(Path("all.TASG")), 1);
    EXPECT_EQ(GroupList("all.TASG"), kAllNames);
    dialog.Create();
    EXPECT_EQ(dialog.ExportFile(Path("none.TASG")), 1);
    EXPECT_EQ(GroupList("none.TASG"), "");
    List().removeRow(1);
    EXPECT_EQ(dialog.ExportFile(Path("step.TASG")), 1) << "the list is out of step";
    EXPECT_EQ(GroupList("step.TASG"), kAllNames);
}

TEST_F(GroupExportTest, AFailedWriteIsToldWithItsReason) {
    Open({0});
    prompts.ExpectSaveFile(Path("gone/groups.TASG"));
    prompts.ExpectYesNo(true);  // a new file
    EXPECT_EQ(ToldBy([&] { Press(dialog, Qt::Key_Enter); }),
              Path("gone/groups.TASG") + " unwritable: IDS_TADIALOGS-FILE_PATH_GONE");
    ExpectClosed(QDialog::Accepted, 1);
}

TEST_F(GroupExportTest, WhatIsCommittedElsewhereDuringAnExportDoesNotMixIn) {
    store.RunBefore("PackFile", 1 + store.Calls("PackFile"), [this] {
        memory.names = Names{"Theirs"};
        memory.reloadFlag = true;
    });
    EXPECT_EQ(dialog.ExportFile(Path("all.TASG")), 1);
    EXPECT_EQ(File("all.TASG").GetString("Trend", "ParamSetting"), "4=5,10$x");
    EXPECT_TRUE(memory.reloadFlag);
}

TEST_F(GroupExportTest, AnExportWithoutMemoryOrDiskIsToldAndLeavesTheFileAsItWas) {
    const QString path = Path("groups.TASG");
    Write(path, "precious");
    prompts.ExpectMessage();
    {
        const SmallFilesOnly small(16);
        EXPECT_EQ(dialog.ExportFile(path), 0);
    }
    EXPECT_TRUE(prompts.Last().text.startsWith(path + " unwritable: "));
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files), QStringList("groups.TASG"))
        << "nothing is left lying about";
    Repository().SetStudyParamSettingByGroupName("Trend", {CString(1 << 16, 'x'), "y"});
    prompts.ExpectMessage();
    const ScarceMemory scarce((1 << 16) + 1000);
    EXPECT_EQ(dialog.ExportFile(path), 0);
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_EQ(Read(path), "precious");
}

TEST_F(GroupExportTest, GroupsThatTheFileDoesNotCarryAreNamedAfterTheSuccess) {
    Open();
    Click(SelectAll());
    prompts.ExpectSaveFile(Path("groups.TASG"));
    prompts.Meanwhile([this] {
        memory.names = Names{"Volume"};
        memory.reloadFlag = true;
    });
    prompts.ExpectYesNo(true);
    prompts.ExpectMessage();
    prompts.ExpectMessage();
    Click(*dialog.GetDlgItem(ui::kIdOk));
    EXPECT_EQ(GroupList("groups.TASG"), kAllNames);
    EXPECT_EQ(prompts.All()[2].text, "IDS_TECHVIEW-STRING_GROUPEXPORT_EXPORT_OK");
    EXPECT_EQ(prompts.Last().text, QString("not carried: Trend;許功蓋"));
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_EQ(*memory.names, Names{"Volume"});
}

}  // namespace
}  // namespace ta::test
