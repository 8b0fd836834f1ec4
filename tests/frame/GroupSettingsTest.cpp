// The settings sheet in the terminal, from opening it to what the charts, the store and a group
// file show afterwards.

#include "groupfile/TAGroupExport.h"
#include "platform/SyncInfo.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "sheet/TaSettingSheet.h"
#include "terminal/store/OpenResult.h"
#include "tests/frame/FrameFixture.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RecordingView.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeWidget>

#include <SQLiteCpp/Database.h>

#include <algorithm>

namespace ta::test {
namespace {

using terminal::Command;
using Strings = std::vector<CString>;

/// What the file keeps of a group.
struct StoredGroup {
    int uniNum = -1;
    int showCount = -1;
    std::vector<std::vector<std::int32_t>> studies;
    Strings params;
    Strings shapes;

    bool operator==(const StoredGroup&) const = default;
};

class SettingsSheet : public FrameTest {
protected:
    void SetUp() override {
        Start();
        AddGroup("趨勢");
        AddGroup("短線");
    }

    // ---- Driving the sheet ----

    /// Opens the sheet as the user does and runs `action` in it.
    void InSheet(std::function<void(CTaSettingSheet&)> action) {
        m_driver.Expect([action = std::move(action)](QWidget& dialog) {
            auto* sheet = qobject_cast<CTaSettingSheet*>(&dialog);
            ASSERT_NE(sheet, nullptr);
            action(*sheet);
        });
        Activate(Window());
        QTest::keyClick(&Window(), Qt::Key_T, Qt::ControlModifier);
    }

    /// A control of the page in front.
    template <class Control = QWidget>
    static Control& Find(QWidget& dialog, const char* name) {
        for (Control* control : dialog.findChildren<Control*>(name)) {
            if (control->isVisible()) {
                return *control;
            }
        }
        ADD_FAILURE() << "no control " << name;
        std::abort();
    }
    static void Click(QWidget& dialog, const char* button) {
        QWidget& control = Find(dialog, button);
        EXPECT_TRUE(control.isEnabled()) << button;
        QTest::mouseClick(&control, Qt::LeftButton);
    }
    /// A window manager does so when the window over this one closes.
    static void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(Await([&window] { return QApplication::activeWindow() == &window; }));
    }
    static QWidget& Focus() {
        Activate(*QApplication::activeModalWidget());
        return *QApplication::focusWidget();
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Focus(), key, modifiers);
    }
    static void Type(const QString& text) { QTest::keyClicks(&Focus(), text); }
    /// Goes by the Tab key to the first control of a kind in the study's editor.
    template <class Control>
    static void TabToFirst(CTaSettingSheet& sheet) {
        auto* control = Find(sheet, "settingView").findChild<Control*>();
        ASSERT_NE(control, nullptr);
        constexpr int kMostStops = 60;
        for (int i = 0; i < kMostStops && !control->hasFocus(); ++i) {
            Press(Qt::Key_Tab);
        }
        ASSERT_TRUE(control->hasFocus()) << "cannot be reached";
    }
    static void End(CTaSettingSheet& sheet, int button) {
        QTest::mouseClick(sheet.GetDlgItem(button), Qt::LeftButton);
    }
    static void Save(CTaSettingSheet& sheet) { End(sheet, ui::kIdOk); }
    static void Cancel(CTaSettingSheet& sheet) { End(sheet, ui::kIdCancel); }

    /// Adds a group on the group page.
    void AddInSheet(CTaSettingSheet& sheet, const QString& name) {
        m_driver.Expect([name](QWidget& dialog) {
            Find<QLineEdit>(dialog, "nameEdit").setText(name);
            Click(dialog, "okButton");
        });
        Click(sheet, "addButton");
    }
    static void SelectGroup(CTaSettingSheet& sheet, const QString& name) {
        auto& list = Find<QListWidget>(sheet, "groupList");
        const auto rows = list.findItems(name, Qt::MatchExactly);
        ASSERT_EQ(rows.size(), 1);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(rows.front()).center());
    }
    static void ShowStudyPage(CTaSettingSheet& sheet) {
        sheet.SetActivePage(sheet.GetPageCount() - 1);
    }
    /// Selects a study on the study page and types into its first parameter's field.
    static void EnterParam(CTaSettingSheet& sheet, int pane, int study, const QString& text) {
        auto& tree = Find<QTreeWidget>(sheet, "studyTree");
        tree.setCurrentItem(tree.topLevelItem(pane)->child(study));
        auto* field = Find(sheet, "settingView").findChild<QAbstractSpinBox*>();
        ASSERT_NE(field, nullptr);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    static QStringList Rows(CTaSettingSheet& sheet) {
        const auto& list = Find<QListWidget>(sheet, "groupList");
        QStringList texts;
        for (int row = 0; row < list.count(); ++row) {
            texts.append(list.item(row)->text());
        }
        return texts;
    }

    // ---- What came of it ----

    /// The groups in the file, in their order.
    std::vector<std::pair<QString, StoredGroup>> Stored() {
        terminal::SqliteStore store;
        store.Open(StorePath());
        Strings names;
        store.LoadTAGroupNameList(names);
        std::vector<std::pair<QString, StoredGroup>> groups;
        for (unsigned i = 0; i < names.size(); ++i) {
            StoredGroup group;
            store.LoadTAGroupUniNum(i, group.uniNum);
            store.LoadTAStudyShowCount(i, group.showCount);
            for (int pane = 1; pane <= kPaneCount; ++pane) {
                const QString key = QString("StudyTypeLogKey%1").arg(pane, 2, 10, QChar('0'));
                store.LoadTAGroupStudyList(i, key.toStdString(), group.studies.emplace_back());
            }
            store.LoadTAStudyParamSetting(i, group.params);
            store.LoadTAStudyShapeSetting(i, group.shapes);
            groups.emplace_back(ui::ToQString(names[i]), group);
        }
        return groups;
    }
    StoredGroup StoredGroupOf(const QString& name) {
        const auto groups = Stored();
        const auto found =
            std::ranges::find(groups, name, [](const auto& each) { return each.first; });
        return found == groups.end() ? StoredGroup() : found->second;
    }
    /// The repository's strings and studies of all groups, in their order.
    std::vector<std::pair<QString, StoredGroup>> InRepository() {
        std::vector<std::pair<QString, StoredGroup>> groups;
        for (const QString& name : GroupsInRepository()) {
            const CString bytes = ui::FromQString(name);
            StoredGroup group;
            group.uniNum = Repository().GetUniNumByGroupName(bytes);
            group.showCount = Repository().GetStudyCountByGroupName(bytes);
            Repository().GetStudyListByGroupName(bytes, group.studies);
            Repository().GetStudyParamSettingByGroupName(bytes, group.params);
            Repository().GetStudyShapeSettingByGroupName(bytes, group.shapes);
            groups.emplace_back(name, group);
        }
        return groups;
    }
    static bool Holds(const Strings& strings, const CString& begin) {
        return std::ranges::any_of(
            strings, [&begin](const CString& each) { return each.starts_with(begin); });
    }
    /// Another terminal adds a group and commits.
    void SaveInOther(const QString& group) {
        terminal::SqliteStore other;
        other.Open(StorePath());
        Strings names;
        other.LoadTAGroupNameList(names);
        names.push_back(ui::FromQString(group));
        other.SaveTAGroupNameList(names);
        other.SaveTAGroupUniNum(static_cast<unsigned>(names.size()) - 1, 77);
        other.PackFile();
    }
    bool AwaitPrompts() {
        return Await([this] { return m_prompts.Waiting() == 0; });
    }

    DialogDriver m_driver;
};

// ---- The typical edit ----

TEST_F(SettingsSheet, ATypicalEditByKeyboardIsSeenEverywhere) {
    m_prompts.ExpectColour(QColor(0x12, 0x34, 0x56));
    InSheet([this](CTaSettingSheet& sheet) {
        m_driver.Expect([](QWidget&) {
            Type("RSI group");
            Press(Qt::Key_Return);
        });
        Press(Qt::Key_Insert);
        EXPECT_EQ(Rows(sheet).last(), "RSI group");
        Press(Qt::Key_Tab, Qt::ControlModifier);
        Press(Qt::Key_T, Qt::AltModifier);
        Press(Qt::Key_End);
        m_driver.Expect([](QWidget&) {
            Type("rsi");
            Press(Qt::Key_Return);
        });
        Press(Qt::Key_Insert);
        auto& tree = Find<QTreeWidget>(sheet, "studyTree");
        ASSERT_NE(tree.currentItem(), nullptr);
        EXPECT_EQ(tree.currentItem()->text(0), "相對強弱指標");
        TabToFirst<QAbstractSpinBox>(sheet);
        Type("5");
        TabToFirst<QPushButton>(sheet);
        Press(Qt::Key_Space);
        Press(Qt::Key_S, Qt::AltModifier);
        Await([&sheet] { return !sheet.isVisible(); });  // the button is seen going down first
    });
    // The chart from which it was opened shows the new group.
    EXPECT_EQ(Chart().GroupName(), "RSI group");
    EXPECT_TRUE(Chart().LegendTexts().join(' ').contains("RSI5 "));
    // So does another chart window that is set to it.
    Choose(Command::NewTab);
    EXPECT_TRUE(Chart().LegendTexts().join(' ').contains("RSI5 "));
    // The store has it.
    const StoredGroup stored = StoredGroupOf("RSI group");
    EXPECT_TRUE(Holds(stored.params, "24=5,12"));
    EXPECT_TRUE(Holds(stored.shapes, "24=123456:"));
    ASSERT_EQ(stored.studies.size(), 10u);
    EXPECT_EQ(std::ranges::count(stored.studies[3], 24), 1);
    // And a group file.
    ASSERT_EQ(CTAGroupExport(&Window()).ExportFile(FilePath("all.TASG")), 1);
    QFile file(FilePath("all.TASG"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.contains("[RSI group]"));
    EXPECT_TRUE(bytes.contains("24=5,12"));
    EXPECT_TRUE(bytes.contains("24=123456:"));
}

TEST_F(SettingsSheet, ALegendsDoubleClickOpensItsStudy) {
    m_driver.Expect([](QWidget& dialog) {
        auto& sheet = static_cast<CTaSettingSheet&>(dialog);
        EXPECT_EQ(sheet.GetActiveIndex(), 1);
        EXPECT_EQ(sheet.GetActiveGroup(), ui::FromQString("短線"));
        const auto& tree = Find<QTreeWidget>(dialog, "studyTree");
        ASSERT_NE(tree.currentItem(), nullptr);
        EXPECT_EQ(tree.currentItem()->text(0), "移動平均線");
        EnterParam(sheet, 0, 1, "8");
        Save(sheet);
    });
    Choose(Command::NewTab);
    emit Chart().legendDoubleClicked(0, 2);
    for (int tab = 0; tab < 2; ++tab) {
        EXPECT_TRUE(Tabs().At(tab).LegendTexts().join(' ').contains("MA8 ")) << tab;
    }
    EXPECT_TRUE(Holds(StoredGroupOf("短線").params, "4=8,10"));
    EXPECT_TRUE(Holds(StoredGroupOf("趨勢").params, "4=5,10"));
}

TEST_F(SettingsSheet, OnlyChartsOfChangedGroupsAreTold) {
    RecordingView view;
    Repository().AddTechViewPtr(&view);
    const auto takeTold = [&view] {
        std::vector<std::uintptr_t> groups;
        for (const SentMessage& sent : std::exchange(view.messages, {})) {
            EXPECT_EQ(sent.message, kGroupChangeMessage);
            groups.push_back(sent.wParam);
        }
        return groups;
    };
    InSheet([](CTaSettingSheet& sheet) { Cancel(sheet); });
    EXPECT_EQ(takeTold(), std::vector<std::uintptr_t>());
    InSheet([](CTaSettingSheet& sheet) {
        SelectGroup(sheet, "趨勢");
        ShowStudyPage(sheet);
        EnterParam(sheet, 0, 1, "9");
        Save(sheet);
    });
    EXPECT_EQ(takeTold(), std::vector<std::uintptr_t>{1});
    InSheet([](CTaSettingSheet& sheet) {
        auto& list = Find<QListWidget>(sheet, "groupList");
        list.setFocus();
        list.setCurrentRow(0);
        Press(Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(sheet.IsDragList(), 1);
        Save(sheet);
    });
    EXPECT_EQ(takeTold(), (std::vector<std::uintptr_t>{0, 1, 2}));
    EXPECT_EQ(Stored()[0].first, "趨勢");
    Repository().RemoveTechViewPtr(&view);
}

TEST_F(SettingsSheet, StudiesThatTheGroupPageStoresAreToldToo) {
    Choose(Command::NewTab);  // a second chart of the same group
    InSheet([this](CTaSettingSheet& sheet) {
        ShowStudyPage(sheet);
        auto& tree = Find<QTreeWidget>(sheet, "studyTree");
        tree.setCurrentItem(tree.topLevelItem(0)->child(1));
        Click(sheet, "removeButton");
        sheet.SetActivePage(0);
        AddInSheet(sheet, "新的");
        EXPECT_TRUE(sheet.IsEditStudy());
        Save(sheet);
    });
    EXPECT_FALSE(Tabs().At(0).LegendTexts().join(' ').contains("MA5 "));
    EXPECT_EQ(Chart().GroupName(), ui::FromQString("新的"));
}

TEST_F(SettingsSheet, ChartsOfADeletedGroupShowTheDefaultGroup) {
    const int number = Chart().GroupUniNum();
    Choose(Command::NewTab);
    emit ToolBar().groupChosen("趨勢");
    m_prompts.ExpectYesNo(true);
    InSheet([](CTaSettingSheet& sheet) {
        SelectGroup(sheet, "短線");
        Click(sheet, "deleteButton");
        Save(sheet);
    });
    EXPECT_FALSE(GroupsInRepository().contains("短線"));
    EXPECT_EQ(Tabs().ChartAt(0)->GroupName(), Repository().GetSystemDefaultGroup());
    EXPECT_EQ(Tabs().ChartAt(1)->GroupName(), ui::FromQString("趨勢"));
    EXPECT_TRUE(Repository().GetGroupNameByUniNum(number).empty()) << "The record is not cleared.";
    EXPECT_EQ(GroupsInBox(), GroupsInRepository());
}

// ---- Cancel ----

TEST_F(SettingsSheet, NoTakesBackEditsAndImportsAndYesKeepsThem) {
    const QString file = FilePath("groups.TASG");
    ASSERT_EQ(CTAGroupExport(&Window()).ExportFile(file), 1);
    Repository().DeleteGroupSetting(Repository().GetSystemDefaultGroup());
    Repository().SaveAllGroupSetting();
    const auto stored = Stored();
    const auto inRepository = InRepository();
    for (const bool yes : {false, true}) {
        InSheet([this, &file, yes](CTaSettingSheet& sheet) {
            SelectGroup(sheet, "趨勢");
            auto& tree = Find<QTreeWidget>(sheet, "studyTree");
            tree.setCurrentItem(tree.topLevelItem(0)->child(0));
            Click(sheet, "moveDownButton");
            m_prompts.ExpectYesNo(true);
            Click(sheet, "deleteButton");
            m_prompts.ExpectFile(file);
            m_prompts.ExpectMessage();
            m_driver.Expect([](QWidget& dialog) { Click(dialog, "okButton"); });
            Click(sheet, "importButton");
            EXPECT_EQ(Stored().size(), 3U);
            AddInSheet(sheet, "新的");
            SelectGroup(sheet, "短線");
            ShowStudyPage(sheet);
            EnterParam(sheet, 0, 1, "9");
            m_prompts.ExpectYesNo(yes);
            Cancel(sheet);
            EXPECT_EQ(sheet.IsAlwaysSave(), yes ? 1 : 0);
        });
        EXPECT_EQ(Stored() == stored, !yes);
        Choose(Command::SaveSettings);
        EXPECT_EQ(Stored() == stored, !yes) << "Something is left for a later save.";
        EXPECT_EQ(InRepository() == inRepository, !yes);
        EXPECT_EQ(GroupsInBox(), GroupsInRepository());
    }
    EXPECT_EQ(Stored().back().first, "新的");
    EXPECT_TRUE(Holds(StoredGroupOf("短線").params, "4=9,10"));
    ChooseGroup("短線");
    EXPECT_TRUE(Chart().LegendTexts().join(' ').contains("MA9 "));
}

TEST_F(SettingsSheet, AFileThatRefusesASaveIsToldAndTheEditsStay) {
    const auto setVersion = [this](const char* sql) {
        SQLite::Database(StorePath().toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    };
    InSheet([this, &setVersion](CTaSettingSheet& sheet) {
        ShowStudyPage(sheet);
        EnterParam(sheet, 0, 1, "9");
        setVersion("PRAGMA user_version = 99");
        m_prompts.ExpectMessage();
        Save(sheet);
    });
    ASSERT_TRUE(AwaitPrompts());
    EXPECT_EQ(m_prompts.Last().icon, ui::PromptIcon::Warning);
    EXPECT_EQ(m_prompts.Last().text,
              terminal::PackErrorMessage({terminal::PackError::NewerVersion, StorePath(), {}, {}}));
    EXPECT_TRUE(Chart().LegendTexts().join(' ').contains("MA9 "));
    EXPECT_FALSE(Holds(StoredGroupOf("短線").params, "4=9,10"));
    setVersion("PRAGMA user_version = 1");
    Choose(Command::SaveSettings);
    EXPECT_TRUE(Holds(StoredGroupOf("短線").params, "4=9,10"));
}

// ---- Another terminal saves while the sheet is open ----

TEST_F(SettingsSheet, AnothersGroupsAndTheUsersDraftsAreBothSaved) {
    InSheet([this](CTaSettingSheet& sheet) {
        ShowStudyPage(sheet);
        EnterParam(sheet, 0, 1, "9");
        sheet.SetActivePage(0);
        AddInSheet(sheet, "落空");
        m_prompts.ExpectChoice(0);
        SaveInOther("他的");
        ASSERT_TRUE(AwaitPrompts());
        EXPECT_EQ(Rows(sheet).mid(1), QStringList({"趨勢", "短線", "他的"}));
        AddInSheet(sheet, "我的");
        Save(sheet);
    });
    const auto stored = Stored();
    ASSERT_EQ(stored.size(), 5U);
    EXPECT_EQ(stored[3].first + stored[4].first, "他的我的");
    EXPECT_EQ(stored[3].second.uniNum, 77);
    EXPECT_TRUE(Holds(stored[2].second.params, "4=9,10"));
}

TEST_F(SettingsSheet, ClosingInsteadShowsTheOthersState) {
    InSheet([this](CTaSettingSheet& sheet) {
        ShowStudyPage(sheet);
        EnterParam(sheet, 0, 1, "9");
        m_prompts.ExpectChoice(1);
        SaveInOther("他的");
        ASSERT_TRUE(AwaitPrompts());
    });
    EXPECT_FALSE(Holds(StoredGroupOf("短線").params, "4=9,10"));
    EXPECT_EQ(GroupsInBox(), GroupsInRepository());
    EXPECT_EQ(GroupsInBox().last(), "他的");
}

}  // namespace
}  // namespace ta::test
