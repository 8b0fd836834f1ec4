// The export dialog: what is checked, what is asked, and what is in the file afterwards.

#include "groupfile/TAGroupExport.h"
#include "platform/ProfileFile.h"
#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "tests/groupfile/GroupDialogFixture.h"
#include "tests/support/ScarceMemory.h"

#include <QHeaderView>
#include <QPushButton>
#include <QStyleOptionViewItem>
#include <QTableWidget>
#include <QTest>

#include <csignal>
#include <new>
#include <string_view>

#include <sys/resource.h>

namespace ta::test {
namespace {

using ui::PromptIcon;
using Kind = ScriptedPrompts::Kind;

class GroupExportTest : public GroupDialogFixture {
protected:
    GroupExportTest() {
        memory.names = Names{"Trend", text::FromUtf8("許功蓋"), "Volume"};
        memory.params[0] = {"4=5,10", "x"};
        memory.showCounts[1] = 3;
        Load();
    }

    static QTableWidget& List(CTAGroupExport& dialog) {
        return Find<QTableWidget>(dialog, "groupList");
    }
    static std::string Checked(CTAGroupExport& dialog) {
        std::string checks;
        for (int row = 0; row < List(dialog).rowCount(); ++row) {
            checks += List(dialog).item(row, 0)->checkState() == Qt::Checked ? 'x' : '.';
        }
        return checks;
    }
    static void ClickCheckBox(CTAGroupExport& dialog, int row) {
        QTableWidget& list = List(dialog);
        const QRect cell = list.visualItemRect(list.item(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell.center());
    }
    /// The names that a file says it has.
    static CString GroupList(const std::string& bytes) {
        return ProfileReader(bytes).GetString("Common", "GroupList", "none");
    }
};

TEST_F(GroupExportTest, OpensWithEveryGroupUnchecked) {
    CTAGroupExport dialog;
    Show(dialog);
    const QTableWidget& list = List(dialog);
    EXPECT_EQ(Checked(dialog), "...");
    EXPECT_EQ(list.item(1, 1)->text(), QString("許功蓋"));
    EXPECT_EQ(list.horizontalHeaderItem(0)->text(), "");
    EXPECT_EQ(list.horizontalHeaderItem(1)->text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_GROUPNAME");
    EXPECT_EQ(list.columnWidth(0), 20);
    ExpectTexts(dialog, {{"TAGroupExport.windowTitle", "DIALOG-EXPORTTA_TITLE"},
                         {"selectLabel.text", "DIALOG-EXPORTTA_SELECT"},
                         {"okButton.text", "DIALOG-EXPORTTA_BUTTON_OK"},
                         {"cancelButton.text", "DIALOG-EXPORTTA_BUTTON_CANCEL"}});
    EXPECT_EQ(dialog.GetDlgItem(77), nullptr);
}

TEST_F(GroupExportTest, TheSelectAllButton) {
    CTAGroupExport dialog;
    Show(dialog);
    auto& button = Find<QPushButton>(dialog, "selectButton");
    EXPECT_EQ(button.text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL");
    ClickCheckBox(dialog, 1);
    Click(button);
    EXPECT_EQ(Checked(dialog), "xxx");
    EXPECT_EQ(button.text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL");
    ClickCheckBox(dialog, 1);
    EXPECT_EQ(Checked(dialog), "x.x");
    Click(button);
    EXPECT_EQ(Checked(dialog), "...");
    EXPECT_EQ(button.text(), "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL");
    Click(button);
    EXPECT_EQ(Checked(dialog), "xxx");
}

TEST_F(GroupExportTest, TheSpaceBarChecksTheRow) {
    CTAGroupExport dialog;
    Show(dialog);
    QTableWidget& list = List(dialog);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(1, 1)).center());
    EXPECT_EQ(Checked(dialog), "...") << "a click on the name only selects";
    Press(dialog, Qt::Key_Space);
    Press(dialog, Qt::Key_Down);
    Press(dialog, Qt::Key_Space);
    EXPECT_EQ(Checked(dialog), ".xx");
    Press(dialog, Qt::Key_Space);
    EXPECT_EQ(Checked(dialog), ".x.");
}

TEST_F(GroupExportTest, NothingChecked) {
    CTAGroupExport dialog;
    Show(dialog);
    prompts.ExpectMessage();
    Press(dialog, Qt::Key_Enter);
    EXPECT_EQ(prompts.Last().text, "IDS_DIALOG-EXPORTTA_SELECT");
    EXPECT_EQ(prompts.Last().title, "Terminal");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(memory.packCount, 0);
}

TEST_F(GroupExportTest, TheCheckedGroupsReplaceTheWholeFile) {
    const QString path = Path("groups.TASG");
    Write(path, "[Old]\r\nStudyShowCount=9\r\n");
    CTAGroupExport dialog;
    Show(dialog);
    ClickCheckBox(dialog, 2);
    ClickCheckBox(dialog, 0);
    prompts.ExpectSaveFile(path);
    prompts.ExpectMessage();
    prompts.Meanwhile([this] { EXPECT_EQ(memory.packCount, 1) << "saved before it is exported"; });
    Click(*dialog.GetDlgItem(ui::kIdOk));
    const auto& asked = prompts.All().front();
    EXPECT_EQ(asked.text, "*.TASG");
    EXPECT_EQ(asked.preset, "*.TASG");
    EXPECT_EQ(asked.title, "IDS_DIALOG-EXPORTTA_TITLE");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPEXPORT_EXPORT_OK");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::None);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const std::string bytes = Read(path);
    EXPECT_TRUE(
        bytes.starts_with("[Common]\r\nFileVersion=TAS Ver3.0\r\nGroupList=Trend,Volume\r\n"
                          "[Trend]\r\nStudyType01="))
        << bytes;
    const ProfileReader file(bytes);
    EXPECT_FALSE(file.HasSection("Old"));
    EXPECT_FALSE(file.HasSection(text::FromUtf8("許功蓋")));
    EXPECT_EQ(file.GetString("Trend", "ParamSetting"), "4=5,10$x");
}

TEST_F(GroupExportTest, ANewFileIsAskedForUntilItHasAName) {
    CTAGroupExport dialog;
    Show(dialog);
    Click(Find<QPushButton>(dialog, "selectButton"));
    prompts.ExpectSaveFile(Path("*.TASG"));
    prompts.ExpectMessage();
    prompts.ExpectSaveFile(Path("first.TASG"));
    prompts.ExpectYesNo(false);
    prompts.ExpectSaveFile(Path("first.TASG"));
    prompts.ExpectCancel(Kind::YesNo);
    prompts.ExpectSaveFile(Path("second.TASG"));
    prompts.ExpectYesNo(true);
    prompts.ExpectMessage();
    Click(Find<QPushButton>(dialog, "okButton"));
    EXPECT_EQ(prompts.All()[1].text, "no file: *.TASG");
    EXPECT_EQ(prompts.All()[1].icon, PromptIcon::Warning);
    const auto& question = prompts.All()[3];
    EXPECT_EQ(question.text, "create first.TASG?");
    EXPECT_EQ(question.title, "IDS_DIALOG-EXPORTTA_TITLE");
    EXPECT_EQ(question.icon, PromptIcon::Question);
    EXPECT_EQ(question.presetAnswer, ui::Answer::Yes) << "nothing is lost by it";
    EXPECT_EQ(CTAGroupExport::CheckFileExist(Path("first.TASG")), 0);
    EXPECT_EQ(CTAGroupExport::CheckFileExist(Path("second.TASG")), 1);
    EXPECT_EQ(GroupList(Read(Path("second.TASG"))), text::FromUtf8("Trend,許功蓋,Volume"));
}

TEST_F(GroupExportTest, CancellingTheFileDialogIsToldAndClosesThisOne) {
    CTAGroupExport dialog;
    Show(dialog);
    ClickCheckBox(dialog, 0);
    prompts.ExpectCancel(Kind::SaveFile);
    prompts.ExpectMessage();
    Press(dialog, Qt::Key_Enter);
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPEXPORT_NOSELECTFILE");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(memory.packCount, 0);
}

TEST_F(GroupExportTest, EscapeWritesNothing) {
    CTAGroupExport dialog;
    Show(dialog);
    ClickCheckBox(dialog, 0);
    Press(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(memory.packCount, 0);
    EXPECT_TRUE(prompts.All().empty());
}

TEST_F(GroupExportTest, AFileDialogThatCannotBeShown) {
    CTAGroupExport dialog;
    const auto expectFailure = [this] {
        prompts.ExpectSaveFile(Path("never.TASG"));
        prompts.Meanwhile([] { throw std::bad_alloc(); });
        prompts.ExpectMessage();
    };
    expectFailure();
    EXPECT_EQ(dialog.SelectPathAndExport(), 1);
    expectFailure();
    QString path = "before";
    EXPECT_EQ(dialog.GetSaveFilePath(path), 0);
    EXPECT_EQ(path, "");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_EQ(memory.packCount, 0);
}

TEST_F(GroupExportTest, AnExportWithoutMemoryIsToldAndLeavesTheFileAsItWas) {
    const QString path = Path("groups.TASG");
    Write(path, "precious");
    Repository().SetStudyParamSettingByGroupName("Trend", {CString(1 << 16, 'x'), "y"});
    CTAGroupExport dialog;
    prompts.ExpectMessage();
    const ScarceMemory scarce((1 << 16) + 1000);
    EXPECT_EQ(dialog.ExportFile(path), 0);
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_EQ(Read(path), "precious");
}

TEST_F(GroupExportTest, WithoutAFilledListEveryGroupIsExported) {
    CTAGroupExport dialog;
    EXPECT_EQ(dialog.ExportFile(""), 0);
    EXPECT_EQ(memory.packCount, 0);
    EXPECT_EQ(dialog.ExportFile(Path("all.TASG")), 1);
    EXPECT_EQ(GroupList(Read(Path("all.TASG"))), text::FromUtf8("Trend,許功蓋,Volume"));
    dialog.Create();
    EXPECT_EQ(dialog.ExportFile(Path("none.TASG")), 1);
    EXPECT_EQ(GroupList(Read(Path("none.TASG"))), "");
    List(dialog).removeRow(1);
    EXPECT_EQ(dialog.ExportFile(Path("step.TASG")), 1) << "the list is out of step";
    EXPECT_EQ(GroupList(Read(Path("step.TASG"))), text::FromUtf8("Trend,許功蓋,Volume"));
}

TEST_F(GroupExportTest, AFailedWriteIsToldWithItsReason) {
    CTAGroupExport dialog;
    Show(dialog);
    ClickCheckBox(dialog, 0);
    prompts.ExpectSaveFile(Path("gone/groups.TASG"));
    prompts.ExpectYesNo(true);
    prompts.ExpectMessage();
    Press(dialog, Qt::Key_Enter);
    EXPECT_EQ(prompts.Last().text,
              Path("gone/groups.TASG") + " unwritable: IDS_TADIALOGS-FILE_PATH_GONE");
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_EQ(dialog.result(), QDialog::Accepted) << "closed whatever came of it";
}

TEST_F(GroupExportTest, WhatIsCommittedElsewhereDuringAnExportDoesNotMixIn) {
    store.RunBefore("PackFile", 1 + store.Calls("PackFile"), [this] {
        memory.names = Names{"Theirs"};
        memory.reloadFlag = true;
    });
    EXPECT_EQ(CTAGroupExport().ExportFile(Path("all.TASG")), 1);
    EXPECT_EQ(ProfileReader(Read(Path("all.TASG"))).GetString("Trend", "ParamSetting"), "4=5,10$x");
    EXPECT_TRUE(memory.reloadFlag);
}

/// While one lives, no file can become longer than a few bytes, as on a full disk.
class SmallFilesOnly {
public:
    explicit SmallFilesOnly(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFilesOnly() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    SmallFilesOnly(const SmallFilesOnly&) = delete;
    SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

TEST_F(GroupExportTest, AFailedWriteLeavesTheFileAsItWas) {
    const QString path = Path("groups.TASG");
    Write(path, "precious");
    CTAGroupExport dialog;
    prompts.ExpectMessage();
    {
        const SmallFilesOnly small(16);
        EXPECT_EQ(dialog.ExportFile(path), 0);
    }
    EXPECT_TRUE(prompts.Last().text.startsWith(path + " unwritable: "))
        << prompts.Last().text.toStdString();
    EXPECT_EQ(Read(path), "precious");
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files), QStringList("groups.TASG"))
        << "nothing is left lying about";
}

TEST_F(GroupExportTest, GroupsThatTheFileDoesNotCarryAreNamedAfterTheSuccess) {
    CTAGroupExport dialog;
    Show(dialog);
    Click(Find<QPushButton>(dialog, "selectButton"));
    prompts.ExpectSaveFile(Path("groups.TASG"));
    prompts.Meanwhile([this] {
        memory.names = Names{"Volume"};
        memory.reloadFlag = true;
    });
    prompts.ExpectYesNo(true);
    prompts.ExpectMessage();
    prompts.ExpectMessage();
    Click(Find<QPushButton>(dialog, "okButton"));
    EXPECT_EQ(prompts.All()[2].text, "IDS_TECHVIEW-STRING_GROUPEXPORT_EXPORT_OK");
    EXPECT_EQ(prompts.Last().text, QString("not carried: Trend;許功蓋"));
    EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
    EXPECT_EQ(*memory.names, Names{"Volume"});
}

}  // namespace
}  // namespace ta::test
