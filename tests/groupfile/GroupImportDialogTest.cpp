// The import dialog: the merge as it is shown, reordering by mouse and keys, and what the
// repository and its store hold after OK and after Cancel.

#include "groupfile/TAGroupImport.h"
#include "platform/DrawInfo.h"
#include "platform/Text.h"
#include "platform/ui/DragListBox.h"
#include "platform/ui/FileAccess.h"
#include "tests/groupfile/GroupDialogFixture.h"
#include "tests/support/ScarceMemory.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <memory>

namespace ta::test {
namespace {

constexpr int kExisting = 20093;
constexpr int kInFile = 20094;
constexpr int kResult = 20095;
constexpr int kReplaceExisting = 16098;

const QString kImportOk = "IDS_TECHVIEW-STRING_GROUPIMPORT_IMPORT_OK";
const QString kNoMemory = "IDS_TECHVIEW-STRING_MEMORY_ERR";

class GroupImportTest : public GroupDialogFixture {
protected:
    GroupImportTest() {
        memory.names = Names{"A", "B", "C"};
        memory.params = {{0, {"a"}}, {1, {"b"}}, {2, {"c"}}};
        Load();
    }

    /// A file with a group of one pane of study 23 for each name.
    std::string FileOf(const Names& names) {
        std::string list;
        std::string sections;
        for (const CString& name : names) {
            list += (list.empty() ? "" : ",") + name;
            sections += "[" + name +
                        "]\r\nStudyType01=23\r\nParamSetting=new\r\nStudyShowCount=1\r\n"
                        "TechWndShowKey=2\r\n";
        }
        return "[Common]\r\nFileVersion=TAS Ver3.0\r\nGroupList=" + list + "\r\n" + sections;
    }
    /// Opens the dialog on a file of these groups.
    CTAGroupImport& Open(const Names& names) { return OpenBytes(FileOf(names)); }
    CTAGroupImport& OpenBytes(const std::string& bytes) {
        Write(path, bytes);
        m_dialog = std::make_unique<CTAGroupImport>(path);
        Show(*m_dialog);
        return *m_dialog;
    }
    QListWidget& List(int id = kResult) {
        return *qobject_cast<QListWidget*>(m_dialog->GetDlgItem(id));
    }
    QStringList Rows(int id = kResult) { return Texts(List(id)); }
    void ToggleReplace() { Click(*m_dialog->GetDlgItem(kReplaceExisting)); }
    QString Notice() {
        const auto& label = Find<QLabel>(*m_dialog, "noticeLabel");
        return label.isVisible() ? label.text() : QString();
    }
    QString Summary() { return Find<QPlainTextEdit>(*m_dialog, "summaryText").toPlainText(); }
    QPoint Centre(int row) { return List().visualItemRect(List().item(row)).center(); }
    void Drag(int from, int to) { DragMouse(*List().viewport(), Centre(from), Centre(to)); }
    /// OK, after which the dialog is closed.
    void Ok() {
        Click(*m_dialog->GetDlgItem(ui::kIdOk));
        EXPECT_FALSE(m_dialog->isVisible());
        EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    }

    const QString path = Path("groups.TASG");

private:
    std::unique_ptr<CTAGroupImport> m_dialog;
};

TEST_F(GroupImportTest, ShowsWhatThereIsAndWhatWillBe) {
    CTAGroupImport& dialog = Open({"X", "B"});
    EXPECT_EQ(Rows(kExisting), (QStringList{"A", "B", "C"}));
    EXPECT_EQ(Rows(kInFile), (QStringList{"X", "B"}));
    EXPECT_EQ(Rows(), (QStringList{"A", "* B", "C", "* X"}));
    EXPECT_TRUE(qobject_cast<QCheckBox*>(dialog.GetDlgItem(kReplaceExisting))->isChecked());
    EXPECT_EQ(Notice(), "");
    for (const int id : {20096, 20097, 16278, 16279, 20098}) {
        const QWidget* button = dialog.GetDlgItem(id);
        ASSERT_NE(button, nullptr) << id;
        EXPECT_FALSE(button->isEnabled()) << id;
        EXPECT_EQ(button->isVisible(), id != 20096) << id;
    }
}

TEST_F(GroupImportTest, GroupsThatTheNextLoadWillReplaceAreNamed) {
    std::string bytes = FileOf({"X", "B", "Y"});
    for (const CString& group : Names{"[X]", "[B]"}) {
        bytes.replace(bytes.find("=23", bytes.find(group)), 3, "=-1");
    }
    const CTAGroupImport& dialog = OpenBytes(bytes);
    Ok();
    EXPECT_EQ(dialog.ResultText(), kImportOk + "\nadded 2, overwritten 1\nno first pane: X;B");
}

TEST_F(GroupImportTest, OkLoadsTheMarkedGroupsAndStoresTheList) {
    const CTAGroupImport& dialog = Open({"X", "B", "Y"});
    Ok();
    EXPECT_EQ(dialog.ResultText(), kImportOk + "\nadded 2, overwritten 1");
    EXPECT_EQ(dialog.AddedGroups(), (Names{"X", "Y"}));
    EXPECT_EQ(dialog.OverwrittenGroups(), Names{"B"});
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C", "X", "Y"}));
    EXPECT_EQ(*memory.names, GroupNames());
    EXPECT_EQ(memory.params[0], Names{"a"});
    for (const unsigned index : {1U, 3U, 4U}) {
        EXPECT_EQ(memory.params[index], Names{"new"});
        EXPECT_EQ(memory.showCounts[index], 1);
        EXPECT_EQ(memory.wndShowKeys[index], 2);
    }
    EXPECT_EQ(Studies("X"), (StudyLists{{23}}));
    EXPECT_EQ(memory.packCount, 1);
    const auto* drawInfo = dynamic_cast<MemoryDrawInfo*>(Repository().GetDrawInfo("B"));
    ASSERT_NE(drawInfo, nullptr);
    EXPECT_EQ(drawInfo->paramModes.back(), kDrawInfoReplace);
}

TEST_F(GroupImportTest, WithTheBoxClearedExistingGroupsAreLeftAlone) {
    Open({"X", "B"});
    for (const char* existing : {"B", "* B", "B"}) {
        ToggleReplace();
        EXPECT_EQ(Rows(), (QStringList{"A", existing, "C", "* X"}));
    }
    Ok();
    EXPECT_EQ(Params("B"), Names{"b"});
    EXPECT_EQ(Params("X"), Names{"new"});
}

TEST_F(GroupImportTest, RowsDraggedWithTheMouseAreStoredInThatOrder) {
    Open({"X", "B"});
    Drag(3, 0);
    ToggleReplace();
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C", "* X"})) << "toggling computes the order again";
    ToggleReplace();
    Drag(3, 0);
    EXPECT_EQ(Rows(), (QStringList{"* X", "A", "* B", "C"}));
    Drag(1, 3);
    EXPECT_EQ(Rows(), (QStringList{"* X", "* B", "C", "A"}));
    Ok();
    EXPECT_EQ(*memory.names, (Names{"X", "B", "C", "A"}));
    EXPECT_EQ(memory.params,
              (std::map<unsigned, Names>{{0, {"new"}}, {1, {"new"}}, {2, {"c"}}, {3, {"a"}}}));
}

TEST_F(GroupImportTest, EscapeDuringADragOnlyEndsTheDrag) {
    CTAGroupImport& dialog = Open({"X"});
    DragMouse(*List().viewport(), Centre(0), Centre(2), [&] {
        EXPECT_EQ(Rows(), (QStringList{"B", "C", "A", "* X"}));
        Press(dialog, Qt::Key_Escape);
        EXPECT_EQ(Rows(), (QStringList{"A", "B", "C", "* X"}));
        EXPECT_TRUE(dialog.isVisible());
    });
    Press(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(GroupImportTest, CancelChangesNothing) {
    const auto stored = [this] { return std::pair(memory.names, memory.params); };
    const auto before = stored();
    const auto closing = {+[](CTAGroupImport& dialog) { Click(*dialog.GetDlgItem(ui::kIdCancel)); },
                          +[](CTAGroupImport& dialog) { Press(dialog, Qt::Key_Escape); },
                          +[](CTAGroupImport& dialog) { dialog.close(); }};
    for (const auto close : closing) {
        CTAGroupImport& dialog = Open({"X", "B"});
        Drag(3, 0);
        ToggleReplace();
        ToggleReplace();
        close(dialog);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.result(), QDialog::Rejected);
        EXPECT_EQ(GroupNames(), (Names{"A", "B", "C"}));
        EXPECT_EQ(Params("B"), Names{"b"});
        EXPECT_EQ(stored(), before);
        EXPECT_EQ(memory.packCount, 0);
    }
}

TEST_F(GroupImportTest, OnlySoManyNewGroupsAsThereIsRoomFor) {
    memory.names = Names{"1", "2", "3", "4", "5", "6", "7", "8"};
    Load();
    Open({"X", "2", "Y", "Z", "W"});
    const QStringList merged{"1", "* 2", "3", "4", "5", "6", "7", "8", "* X", "* Y"};
    EXPECT_EQ(Rows(), merged);
    EXPECT_EQ(Notice(), "2 left out of 10");
    Drag(9, 1);
    List().setCurrentRow(4);
    const QStringList dragged{"1", "* Y", "* 2", "3", "4", "5", "6", "7", "8", "* X"};
    ToggleReplace();
    EXPECT_EQ(Rows(), dragged) << "with the maximum of rows nothing is merged again";
    EXPECT_EQ(List().currentRow(), 4);
    EXPECT_EQ(Notice(), "stays at 10\n2 left out of 10");
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"1", "Y", "2", "3", "4", "5", "6", "7", "8", "X"}));
    EXPECT_EQ(Params("2"), Names{"new"});
    EXPECT_EQ(Params("Y"), Names{"new"});
    // Now there is none.
    const CTAGroupImport& dialog = Open({"V", "3"});
    EXPECT_TRUE(Rows().filter("*").isEmpty());
    EXPECT_EQ(Notice(), "full at 10\n1 left out of 10");
    Ok();
    EXPECT_EQ(dialog.ResultText(), "nothing imported");
    EXPECT_EQ(GroupNames().size(), 10U);
    EXPECT_EQ(Params("3"), Names{"c"});
}

TEST_F(GroupImportTest, FilesThatAreRefusedAndOneThatIsNot) {
    const QString large = Path("large.TASG");
    Write(large, FileOf({"X"}));
    QFile(large).resize(static_cast<qint64>(ui::kMaxFileSize) + 1);
    Write(path, "[Common]\r\nFileVersion=TAS Ver2.0\r\nGroupList=X\r\n");
    const std::pair<QString, QString> refused[] = {
        {path, "IDS_TECHVIEW-STRING_GROUPIMPORT_VERSION_ERR"},
        {large, large + " unreadable: larger than 64"},
        {Path("none.TASG"), Path("none.TASG") + " unreadable: IDS_TADIALOGS-FILE_NOT_FOUND"},
        {Path("."), Path(".") + " unreadable: IDS_TADIALOGS-FILE_NOT_A_FILE"},
    };
    for (const auto& [file, message] : refused) {
        CTAGroupImport dialog(file);
        EXPECT_EQ(dialog.CheckImportFile(), 0);
        prompts.ExpectMessage();
        prompts.Meanwhile([&dialog] { EXPECT_FALSE(dialog.isVisible()); });
        EXPECT_EQ(dialog.DoModal(), ui::kIdCancel) << file.toStdString();
        EXPECT_EQ(prompts.Last().text, message);
        EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Warning);
        EXPECT_EQ(Find<QListWidget>(dialog, "existingList").count(), 3)
            << "the dialog is initialised all the same";
    }
    EXPECT_EQ(memory.packCount, 0);
    // One that is not, for comparison.
    Write(path, FileOf({"X"}));
    CTAGroupImport dialog(path);
    EXPECT_EQ(dialog.CheckImportFile(), 1);
    QTimer::singleShot(0, &dialog, [&dialog] { Press(dialog, Qt::Key_Return); });
    EXPECT_EQ(dialog.DoModal(), ui::kIdOk);
    EXPECT_EQ(GroupNames().back(), "X");
}

TEST_F(GroupImportTest, WhatWasShownIsImportedWhateverBecomesOfTheFile) {
    Open({"X", "B"});
    Write(path, FileOf({"C", "Z"}));
    ToggleReplace();
    ToggleReplace();
    EXPECT_EQ(Rows(), (QStringList{"A", "* B", "C", "* X"}));
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C", "X"}));
    EXPECT_EQ(Params("B"), Names{"new"});
    EXPECT_EQ(Params("C"), Names{"c"});
    Open({"Y"});
    QFile::remove(path);
    Ok();
    EXPECT_EQ(Params("Y"), Names{"new"});
}

TEST_F(GroupImportTest, AnotherPartyThatCommitsDuringTheImportIsLoadedAfterTheSave) {
    const auto commitElsewhere = [this] {
        memory.names = Names{"Other"};
        memory.reloadFlag = true;
    };
    Open({"X", "B"});
    for (const char* operation : {"SaveTAStudyShowCount", "SaveTAGroupNameList"}) {
        store.RunBefore(operation, 1, commitElsewhere);
    }
    Ok();
    EXPECT_EQ(*memory.names, (Names{"A", "B", "C", "X"}));
    EXPECT_EQ(memory.params,
              (std::map<unsigned, Names>{{0, {"a"}}, {1, {"new"}}, {2, {"c"}}, {3, {"new"}}}));
    EXPECT_EQ(memory.packCount, 1);
    EXPECT_TRUE(memory.reloadFlag) << "the next look loads what is stored";
}

TEST_F(GroupImportTest, WhatAnotherPartyHasChangedSinceTheListsWereFilled) {
    Open({"X", "B"});
    Drag(3, 0);
    memory.names = Names{"D", "C", "B"};
    memory.params = {{0, {"d"}}, {1, {"c"}}, {2, {"b"}}};
    memory.reloadFlag = true;
    Ok();
    EXPECT_EQ(*memory.names, (Names{"X", "B", "C", "D"})) << "A was deleted, D is new";
    EXPECT_EQ(memory.params,
              (std::map<unsigned, Names>{{0, {"new"}}, {1, {"new"}}, {2, {"c"}}, {3, {"d"}}}));
}

TEST_F(GroupImportTest, LackOfMemoryForAValueIsToldAndTheImportGoesOn) {
    // The value of X does not fit, the list of Y is too much once it is split.
    std::string bytes = FileOf({"X", "B", "Y"});
    bytes.replace(bytes.rfind("=new"), 4, "=" + std::string(30'000, '$'));
    bytes.replace(bytes.find("=new"), 4, "=" + std::string(1 << 20, 'x'));
    CTAGroupImport& dialog = OpenBytes(bytes);
    {
        const ScarceMemory scarce(1 << 16);
        Press(dialog, Qt::Key_End);
        EXPECT_TRUE(Summary().endsWith("\n" + kNoMemory));
        EXPECT_EQ(ToldBy([&] { Ok(); }), kNoMemory);

        CTAGroupImport other(path);
        prompts.ExpectMessage();
        EXPECT_EQ(other.CheckImportFile(), 0);
        prompts.ExpectMessage();
        EXPECT_EQ(other.ImportGroupSetting("A", path), 0);
        EXPECT_EQ(prompts.Last().text, kNoMemory);
    }
    EXPECT_EQ(Params("X"), Names{""});
    EXPECT_EQ(Params("Y"), Names{""});
    EXPECT_EQ(Studies("X"), (StudyLists{{23}}));
    EXPECT_EQ(Params("B"), Names{"new"});
    EXPECT_EQ(Params("A"), Names{"a"});
    EXPECT_EQ(dialog.ImportGroupSetting("A", path), 1);
    EXPECT_EQ(Params("A"), Names{""});
    EXPECT_EQ(dialog.ImportGroupSetting("A", Path("none")), 0);

    // A list of names that has no memory is an empty one.
    Write(path, FileOf({CString(1 << 17, 'n')}));
    CTAGroupImport longList(path);
    ASSERT_EQ(longList.CheckImportFile(), 1);
    const ScarceMemory scarce(1 << 16);
    EXPECT_EQ(ToldBy([&] { longList.Create(); }), kNoMemory);
    EXPECT_EQ(Find<QListWidget>(longList, "fileList").count(), 0);
}

TEST_F(GroupImportTest, OfAListOfNamesWithoutEndTheFirstAreRead) {
    Names names{"B"};
    while (names.size() < 1'001) {
        names.push_back("n" + std::to_string(names.size()));
    }
    Open(names);
    EXPECT_EQ(List(kInFile).count(), 1'000);
    EXPECT_EQ(Notice(), "992 left out of 10\n1001 listed, 1000 read");
    OpenBytes("[Common]\nFileVersion=TAS Ver3.0\nGroupList=" + std::string(1 << 20, ','));
    EXPECT_EQ(List(kInFile).count(), 1'000);
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C", "* "}));
    EXPECT_EQ(Notice(), "1048577 listed, 1000 read");
}

TEST_F(GroupImportTest, FilesWithStrangeLists) {
    const CTAGroupImport& dialog = Open({});
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C"}));
    EXPECT_EQ(Notice(), "IDS_TADIALOGS-GROUPFILE_EMPTY");
    Ok();
    EXPECT_EQ(dialog.ResultText(), "nothing imported");
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C"}));
    // An empty name between two commas, one without a section, one in bytes that are no character.
    const CString broken = "\xFF\x41";
    OpenBytes("[Common]\nFileVersion=TAS Ver3.0\nGroupList=X,," + broken + ",W\n[" + broken +
              "]\nParamSetting=p\n");
    EXPECT_EQ(Rows().size(), 7);
    EXPECT_EQ(Rows()[4], "* ");
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C", "X", "", broken, "W"}));
    EXPECT_EQ(Params(broken), Names{"p"});
    EXPECT_EQ(Repository().GetStudyCountByGroupName("W"), 1);
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName("W"), 1);
}

TEST_F(GroupImportTest, TheMarkInsideANameIsPartOfIt) {
    memory.names = Names{"A* B", "* C", "D"};
    Load();
    Open({"* X", "D"});
    EXPECT_EQ(Rows(), (QStringList{"A* B", "* C", "* D", "* * X"}));
    Drag(3, 0);
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"* X", "A* B", "* C", "D"}));
    EXPECT_EQ(memory.params,
              (std::map<unsigned, Names>{{0, {"new"}}, {1, {"a"}}, {2, {"b"}}, {3, {"new"}}}));
}

TEST_F(GroupImportTest, TheSummaryOfTheRowUnderTheCursor) {
    std::string bytes = FileOf({"B", "X"});
    bytes.replace(bytes.find("StudyType01=23"), 14, "StudyType01=22$99\r\nStudyType03=4");
    memory.studyLists[{1, "StudyTypeLogKey01"}] = {22};
    memory.studyLists[{1, "StudyTypeLogKey03"}] = {4};
    memory.showCounts[1] = 2;
    Load();
    Repository().SetStudyListByGroupName("B", {{22}, {}, {4}});
    CTAGroupImport& dialog = OpenBytes(bytes);
    Press(dialog, Qt::Key_Down);
    EXPECT_EQ(Summary(),
              QString("B\nother count 2>1;pane 1;params;layout\nshows 1\npane 1: MACD;study 99\n"
                      "hidden 3: 移動平均線"));
    Press(dialog, Qt::Key_End);
    EXPECT_EQ(Summary(), "X\nnew\nshows 1\npane 1: KD");
    // The mouse over a row of the existing groups.
    QListWidget& existing = List(kExisting);
    const QPoint centre = existing.visualItemRect(existing.item(1)).center();
    MoveMouse(*existing.viewport(), centre, Qt::NoButton);
    EXPECT_EQ(Summary(), QString("B\nshows 2\npane 1: MACD\npane 2: none\nhidden 3: 移動平均線"));
    Click(*dialog.GetDlgItem(ui::kIdOk));
    Open({"B"});
    Write(path, bytes);
    OpenBytes(bytes);
    Press(dialog, Qt::Key_Down);
    List().setCurrentRow(1);
    EXPECT_TRUE(Summary().startsWith("B\nsame\n")) << Summary().toStdString();
}

}  // namespace
}  // namespace ta::test
