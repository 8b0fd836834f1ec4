#include "platform/ui/TextBridge.h"
#include "terminal/frame/GroupEditor.h"
#include "tests/frame/FrameFixture.h"

#include <QStatusBar>

namespace ta::test {
namespace {

using terminal::Command;
using Kind = ScriptedPrompts::Kind;

class GroupMenu : public FrameTest {};

TEST_F(GroupMenu, AddsAGroupAndShowsIt) {
    const QStringList before = GroupsInRepository();
    AddGroup("趨勢");
    EXPECT_EQ(GroupsInRepository(), before + QStringList("趨勢"));
    EXPECT_EQ(GroupsInBox(), GroupsInRepository());
    EXPECT_EQ(Window().ToolBar().Group().currentText(), "趨勢");
    EXPECT_EQ(Chart().GroupName(), ui::FromQString("趨勢"));
}

TEST_F(GroupMenu, RefusesNamesAndAsksAgain) {
    AddGroup("趨勢");
    const QString thirtyOneLetters(31, 'a');
    const QString sixteenCharacters(16, QChar(u'線'));
    const QString fifteenCharacters(15, QChar(u'線'));
    for (const QString& refused :
         {QString(""), thirtyOneLetters, sixteenCharacters, QString("趨勢")}) {
        m_prompts.ExpectText(refused);
        m_prompts.ExpectMessage();
    }
    m_prompts.ExpectText(fifteenCharacters);
    Choose(Command::AddGroup);
    EXPECT_EQ(GroupsInRepository().last(), fifteenCharacters);
    // What was refused is there to be corrected.
    const auto& shown = m_prompts.All();
    ASSERT_GE(shown.size(), 9u);
    EXPECT_EQ(shown[shown.size() - 1].preset, "趨勢");
    EXPECT_EQ(shown[shown.size() - 3].preset, sixteenCharacters);
    EXPECT_EQ(shown[shown.size() - 2].icon, ui::PromptIcon::Warning);
    EXPECT_TRUE(shown[shown.size() - 2].text.contains("趨勢"));
    EXPECT_TRUE(shown[shown.size() - 4].text.contains("30"));
}

TEST_F(GroupMenu, ShowsCharactersThatTheCodePageLacksBeforeTakingThem) {
    m_prompts.ExpectText("😀 गट");
    m_prompts.ExpectMessage();
    m_prompts.ExpectText("? ??");
    Choose(Command::AddGroup);
    EXPECT_TRUE(m_prompts.Last().preset.startsWith("?"));
    EXPECT_FALSE(m_prompts.Last().preset.contains(QStringView(u"गट")));
    EXPECT_EQ(GroupsInRepository().last(), "? ??");
}

TEST_F(GroupMenu, CancelledPromptsChangeNothing) {
    AddGroup("趨勢");
    const QStringList before = GroupsInRepository();
    m_prompts.ExpectCancel(Kind::Text);
    Choose(Command::AddGroup);
    m_prompts.ExpectText("");
    m_prompts.ExpectMessage();
    m_prompts.ExpectCancel(Kind::Text);
    Choose(Command::RenameGroup);
    m_prompts.ExpectYesNo(false);
    Choose(Command::DeleteGroup);
    EXPECT_EQ(GroupsInRepository(), before);
    EXPECT_EQ(Chart().GroupName(), ui::FromQString("趨勢"));
}

TEST_F(GroupMenu, StopsAtTheMaximum) {
    ASSERT_EQ(Repository().GetMaxTAGroupCount(), 10);
    for (int i = static_cast<int>(GroupsInRepository().size()); i < 10; ++i) {
        AddGroup(QString("群組%1").arg(i));
    }
    m_prompts.ExpectMessage();
    Choose(Command::AddGroup);
    EXPECT_TRUE(m_prompts.Last().text.contains("10"));
    EXPECT_EQ(GroupsInRepository().size(), 10);
    // A group that another window adds while the name is typed counts as well.
    m_prompts.ExpectYesNo(true);
    Choose(Command::DeleteGroup);
    m_prompts.ExpectText("晚來的");
    m_prompts.Meanwhile([this] { Repository().AddGroupSetting(ui::FromQString("早來的")); });
    m_prompts.ExpectMessage();
    Choose(Command::AddGroup);
    EXPECT_EQ(GroupsInRepository().last(), "早來的");
    EXPECT_EQ(GroupsInRepository().size(), 10);
}

TEST_F(GroupMenu, RenamesTheChartsGroup) {
    AddGroup("舊名");
    AddGroup("別的");
    Window().ToolBar().Group().setCurrentText("舊名");
    emit Window().ToolBar().groupChosen("舊名");
    const int number = Chart().GroupUniNum();
    // Its own name is in use too.
    m_prompts.ExpectText("舊名");
    m_prompts.ExpectMessage();
    m_prompts.ExpectText("新名");
    Choose(Command::RenameGroup);
    EXPECT_EQ(GroupsInBox(), GroupsInRepository());
    EXPECT_EQ(GroupsInRepository().mid(1), QStringList({"新名", "別的"}));
    EXPECT_EQ(Chart().GroupName(), ui::FromQString("新名"));
    EXPECT_EQ(Chart().GroupUniNum(), number);
    EXPECT_EQ(Window().ToolBar().Group().currentText(), "新名");
}

TEST_F(GroupMenu, TellsWhenTheGroupIsGoneWhileItsNewNameIsTyped) {
    AddGroup("舊名");
    m_prompts.ExpectText("新名");
    m_prompts.Meanwhile([this] { Repository().DeleteGroupSetting(ui::FromQString("舊名")); });
    m_prompts.ExpectMessage();
    Choose(Command::RenameGroup);
    EXPECT_TRUE(m_prompts.Last().text.contains("舊名"));
    EXPECT_FALSE(GroupsInRepository().contains("新名"));
}

TEST_F(GroupMenu, DeletesAfterAQuestionThatNamesTheGroup) {
    AddGroup("留下");
    AddGroup("刪除的");
    const QString first = GroupsInRepository().first();
    m_prompts.ExpectYesNo(true);
    Choose(Command::DeleteGroup);
    EXPECT_TRUE(m_prompts.Last().text.contains("「刪除的」"));
    EXPECT_EQ(m_prompts.Last().icon, ui::PromptIcon::Question);
    EXPECT_EQ(GroupsInRepository(), QStringList({first, "留下"}));
    EXPECT_EQ(GroupsInBox(), GroupsInRepository());
    EXPECT_EQ(Chart().GroupName(), ui::FromQString(first));
    EXPECT_EQ(Window().ToolBar().Group().currentText(), first);
}

TEST_F(GroupMenu, NeverDeletesTheLastGroup) {
    ASSERT_EQ(GroupsInRepository().size(), 1);
    EXPECT_FALSE(Window().GetCommands().At(Command::DeleteGroup).isEnabled());
    m_prompts.ExpectMessage();
    EXPECT_FALSE(terminal::GroupEditor(&Window()).Delete(CString(Chart().GroupName())));
    EXPECT_EQ(GroupsInRepository().size(), 1);
    AddGroup("第二個");
    EXPECT_TRUE(Window().GetCommands().At(Command::DeleteGroup).isEnabled());
}

TEST_F(GroupMenu, EveryTabFollowsARenameAndADelete) {
    AddGroup("共用");
    Choose(Command::NewTab);
    ASSERT_EQ(Window().TabCount(), 2);
    m_prompts.ExpectText("改名");
    Choose(Command::RenameGroup);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Window().ChartAt(i).GroupName(), ui::FromQString("改名"));
    }
    m_prompts.ExpectYesNo(true);
    Choose(Command::DeleteGroup);
    const CString byDefault = Repository().GetSystemDefaultGroup();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Window().ChartAt(i).GroupName(), byDefault);
    }
    EXPECT_TRUE(Window().statusBar()->currentMessage().contains(ui::ToQString(byDefault)));
}

}  // namespace
}  // namespace ta::test
