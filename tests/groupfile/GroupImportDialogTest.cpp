// The import dialog: the merge as it is shown, reordering by mouse and keys, and what the
// repository and its store hold after OK and after Cancel.

#include "groupfile/TAGroupExport.h"
#include "groupfile/TAGroupImport.h"
#include "platform/DrawInfo.h"
#include "platform/Text.h"
#include "platform/ui/DragListBox.h"
#include "platform/ui/FileAccess.h"
#include "tests/groupfile/GroupDialogFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <fmt/format.h>

#include <memory>

namespace ta::test {
namespace {

constexpr int kExisting = 20093;
constexpr int kInFile = 20094;
constexpr int kResult = 20095;
constexpr int kReplaceExisting = 16098;

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
    QStringList Rows(int id = kResult) {
        QStringList rows;
        for (int row = 0; row < List(id).count(); ++row) {
            rows.append(List(id).item(row)->text());
        }
        return rows;
    }
    void ToggleReplace() { Click(*m_dialog->GetDlgItem(kReplaceExisting)); }
    QString Notice() {
        const auto& label = Find<QLabel>(*m_dialog, "noticeLabel");
        return label.isVisible() ? label.text() : QString();
    }
    QString Summary() { return Find<QPlainTextEdit>(*m_dialog, "summaryText").toPlainText(); }
    QPoint Centre(int row) { return List().visualItemRect(List().item(row)).center(); }
    void Drag(int from, int to) {
        QWidget* const view = List().viewport();
        QTest::mousePress(view, Qt::LeftButton, {}, Centre(from));
        MoveMouse(Centre((from + to) / 2));
        MoveMouse(Centre(to));
        QTest::mouseRelease(view, Qt::LeftButton, {}, Centre(to));
    }
    void MoveMouse(QPoint position) {
        QMouseEvent move(QEvent::MouseMove, position, List().viewport()->mapToGlobal(position),
                         Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(List().viewport(), &move);
    }
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
    EXPECT_EQ(dialog.windowTitle(), "IDS_TECHVIEW-STRING_GROUPIMPORT_TITLE");
    EXPECT_EQ(Notice(), "");
    for (const int id : {20096, 20097, 16278, 16279, 20098}) {
        const QWidget* button = dialog.GetDlgItem(id);
        ASSERT_NE(button, nullptr) << id;
        EXPECT_FALSE(button->isEnabled()) << id;
        EXPECT_EQ(button->isVisible(), id != 20096) << id;
    }
}

TEST_F(GroupImportTest, OkLoadsTheMarkedGroupsAndStoresTheList) {
    Open({"X", "B"});
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C", "X"}));
    EXPECT_EQ(Params("A"), Names{"a"});
    EXPECT_EQ(Params("B"), Names{"new"});
    EXPECT_EQ(Params("X"), Names{"new"});
    EXPECT_EQ(Studies("X"), (StudyLists{{23}}));
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName("X"), 2);
    EXPECT_EQ(*memory.names, (Names{"A", "B", "C", "X"}));
    EXPECT_EQ(memory.params[1], Names{"new"});
    EXPECT_EQ(memory.showCounts[3], 1);
    EXPECT_EQ(memory.packCount, 1);
    const auto* drawInfo = dynamic_cast<MemoryDrawInfo*>(Repository().GetDrawInfo("B"));
    ASSERT_NE(drawInfo, nullptr);
    EXPECT_EQ(drawInfo->paramModes.back(), kDrawInfoReplace);
}

TEST_F(GroupImportTest, WithTheBoxClearedExistingGroupsAreLeftAlone) {
    Open({"X", "B"});
    ToggleReplace();
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C", "* X"}));
    ToggleReplace();
    EXPECT_EQ(Rows(), (QStringList{"A", "* B", "C", "* X"}));
    ToggleReplace();
    Ok();
    EXPECT_EQ(Params("B"), Names{"b"});
    EXPECT_EQ(Params("X"), Names{"new"});
}

TEST_F(GroupImportTest, RowsDraggedWithTheMouseAreStoredInThatOrder) {
    Open({"X", "B"});
    Drag(3, 0);
    EXPECT_EQ(Rows(), (QStringList{"* X", "A", "* B", "C"}));
    Drag(1, 3);
    EXPECT_EQ(Rows(), (QStringList{"* X", "* B", "C", "A"}));
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"X", "B", "C", "A"}));
    EXPECT_EQ(*memory.names, (Names{"X", "B", "C", "A"}));
    EXPECT_EQ(Params("B"), Names{"new"});
    EXPECT_EQ(Params("A"), Names{"a"});
}

TEST_F(GroupImportTest, TogglingAfterADragRestoresTheComputedOrder) {
    Open({"X", "B"});
    Drag(3, 0);
    ToggleReplace();
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C", "* X"}));
    Drag(0, 3);
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"B", "C", "X", "A"}));
    EXPECT_EQ(Params("B"), Names{"b"});
}

TEST_F(GroupImportTest, ReorderingWithKeys) {
    CTAGroupImport& dialog = Open({"X"});
    EXPECT_TRUE(List().hasFocus());
    Press(dialog, Qt::Key_Down, Qt::ControlModifier);
    Press(dialog, Qt::Key_Down, Qt::ControlModifier);
    Press(dialog, Qt::Key_End);
    Press(dialog, Qt::Key_Up, Qt::ControlModifier);
    Press(dialog, Qt::Key_Enter);
    EXPECT_EQ(GroupNames(), (Names{"B", "C", "X", "A"}));
}

TEST_F(GroupImportTest, EscapeDuringADragOnlyEndsTheDrag) {
    CTAGroupImport& dialog = Open({"X"});
    QTest::mousePress(List().viewport(), Qt::LeftButton, {}, Centre(0));
    MoveMouse(Centre(2));
    EXPECT_EQ(Rows(), (QStringList{"B", "C", "A", "* X"}));
    Press(dialog, Qt::Key_Escape);
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C", "* X"}));
    EXPECT_TRUE(dialog.isVisible());
    QTest::mouseRelease(List().viewport(), Qt::LeftButton, {}, Centre(2));
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
    ToggleReplace();
    EXPECT_EQ(Rows(), merged) << "with the maximum of rows nothing is merged again";
    EXPECT_EQ(Notice(), "stays at 10\n2 left out of 10");
    Ok();
    EXPECT_EQ(GroupNames().size(), 10U);
    EXPECT_EQ(Params("2"), Names{"new"});
    EXPECT_EQ(Params("Y"), Names{"new"});
}

TEST_F(GroupImportTest, ARepositoryAtItsMaximum) {
    memory.names = Names{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"};
    memory.params[1] = {"b"};
    Load();
    Open({"X", "2"});
    EXPECT_EQ(Rows(), (QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}));
    EXPECT_EQ(Notice(), "full at 10\n1 left out of 10");
    Ok();
    EXPECT_EQ(GroupNames(), *memory.names);
    EXPECT_EQ(GroupNames().size(), 10U);
    EXPECT_EQ(Params("2"), Names{"b"});
}

TEST_F(GroupImportTest, FiftyGroupsOfWhichManyAreNew) {
    memory.maxCount = 50;
    Load();
    Names names{"B"};
    for (int i = 0; i < 50; ++i) {
        names.push_back(fmt::format("{}{}", text::FromUtf8("群組"), i));
    }
    Open(names);
    EXPECT_EQ(Rows().size(), 50);
    EXPECT_EQ(Notice(), "3 left out of 50");
    Ok();
    EXPECT_EQ(GroupNames().size(), 50U);
    EXPECT_EQ(GroupNames().back(), text::FromUtf8("群組46"));
    EXPECT_EQ(Params(text::FromUtf8("群組46")), Names{"new"});
}

TEST_F(GroupImportTest, FilesThatAreRefused) {
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
}

TEST_F(GroupImportTest, TheModalLoopEndsWithOk) {
    Write(path, FileOf({"X"}));
    CTAGroupImport dialog(path);
    EXPECT_EQ(dialog.CheckImportFile(), 1);
    QTimer::singleShot(0, &dialog, [&dialog] { Press(dialog, Qt::Key_Return); });
    EXPECT_EQ(dialog.DoModal(), ui::kIdOk);
    EXPECT_EQ(GroupNames().back(), "X");
}

TEST_F(GroupImportTest, AFileThatIsGoneOrOtherAtOkLeavesTheDialogOpen) {
    CTAGroupImport& dialog = Open({"X"});
    QFile::remove(path);
    prompts.ExpectMessage();
    Click(*dialog.GetDlgItem(ui::kIdOk));
    EXPECT_EQ(prompts.Last().text, path + " unreadable: IDS_TADIALOGS-FILE_NOT_FOUND");
    Write(path, "[Common]\nFileVersion=4\n");
    prompts.ExpectMessage();
    Click(*dialog.GetDlgItem(ui::kIdOk));
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_GROUPIMPORT_VERSION_ERR");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C"}));
    EXPECT_EQ(memory.packCount, 0);
    Write(path, FileOf({"X"}));
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C", "X"}));
}

TEST_F(GroupImportTest, WhatVanishedFromTheFileIsToldAndTheRestImported) {
    Open({"X", "B", "Y", "C"});
    // B is no longer listed, X is listed without its settings, Y has other ones, Z is new.
    std::string changed = FileOf({"Y", "C", "Z"});
    changed.replace(changed.find("GroupList=Y"), 11, "GroupList=X,Y");
    changed.replace(changed.find("=new"), 4, "=other");
    Write(path, changed);
    prompts.ExpectMessage();
    Ok();
    EXPECT_EQ(prompts.Last().text, "vanished: B;X");
    EXPECT_EQ(GroupNames(), (Names{"A", "B", "C", "Y"}));
    EXPECT_EQ(Params("B"), Names{"b"}) << "the existing group is kept";
    EXPECT_EQ(Params("Y"), Names{"other"});
    EXPECT_EQ(*memory.names, (Names{"A", "B", "C", "Y"}));
}

TEST_F(GroupImportTest, FilesWithStrangeLists) {
    Open({});
    EXPECT_EQ(Rows(), (QStringList{"A", "B", "C"}));
    EXPECT_EQ(Notice(), "IDS_TADIALOGS-GROUPFILE_EMPTY");
    Ok();
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

TEST_F(GroupImportTest, TheMarkInsideAName) {
    memory.names = Names{"A* B", "C"};
    Load();
    Open({"* X"});
    EXPECT_EQ(Rows(), (QStringList{"A* B", "C", "* * X"}));
    Ok();
    EXPECT_EQ(GroupNames(), (Names{"B", "C", "* X"})) << "cut after the first mark";
    EXPECT_EQ(Params("* X"), Names{"new"});
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
    QMouseEvent move(QEvent::MouseMove, centre, existing.viewport()->mapToGlobal(centre),
                     Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(existing.viewport(), &move);
    EXPECT_EQ(Summary(), QString("B\nshows 2\npane 1: MACD\npane 2: none\nhidden 3: 移動平均線"));
    Click(*dialog.GetDlgItem(ui::kIdOk));
    Open({"B"});
    Write(path, bytes);
    OpenBytes(bytes);
    Press(dialog, Qt::Key_Down);
    List().setCurrentRow(1);
    EXPECT_TRUE(Summary().startsWith("B\nsame\n")) << Summary().toStdString();
}

TEST_F(GroupImportTest, WhatOneTerminalExportsAnotherImports) {
    const CString chinese = text::FromUtf8("許功蓋［］");
    memory = MemoryConfigStore();
    memory.names = Names{chinese, "Second"};
    memory.params[0] = {"4=5,10", "23=9"};
    memory.shapes[0] = {"4=red"};
    memory.showCounts = {{0, 3}, {1, 1}};
    memory.wndShowKeys = {{0, 13}, {1, -4}};
    Load();
    Repository().SetStudyListByGroupName(chinese, {{0, 4}, {16}, {22, 23}});
    EXPECT_EQ(CTAGroupExport().ExportFile(path), 1);

    memory = MemoryConfigStore();
    memory.names = Names{"Other"};
    Load();
    OpenBytes(Read(path));
    Ok();
    Load();
    EXPECT_EQ(GroupNames(), (Names{"Other", chinese, "Second"}));
    EXPECT_EQ(Params(chinese), (Names{"4=5,10", "23=9"}));
    EXPECT_EQ(Studies(chinese), (StudyLists{{0, 4}, {16}, {22, 23}}));
    EXPECT_EQ(Repository().GetStudyCountByGroupName(chinese), 3);
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName(chinese), 13);
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName("Second"), -4);
}

}  // namespace
}  // namespace ta::test
