// Groups carried from one terminal to another through a group file, by the menu and by dropping.

#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"
#include "tests/support/DialogDriver.h"

#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QPushButton>

namespace ta::test {
namespace {

using terminal::Command;

const QString kGroup = QString::fromUtf8("許功蓋的群組");

class GroupExchange : public FrameTest {
protected:
    /// Presses the buttons, one after the other, in the dialog that opens next.
    void WhenDialogOpens(const QStringList& buttons) {
        m_driver.Expect([buttons](QWidget& dialog) {
            for (const QString& name : buttons) {
                auto* button = dialog.findChild<QPushButton*>(name);
                ASSERT_NE(button, nullptr) << name.toStdString();
                QTest::mouseClick(button, Qt::LeftButton);
            }
        });
    }

    /// A group with studies, parameters, shapes and counts that no new group has, shown and
    /// exported. What its legends say.
    QStringList MakeAndExport(const QString& path) {
        AddGroup(kGroup);
        Repository().SetStudyListByGroupName(m_name, {{0, 5}, {16}, {24, 22}});
        Repository().SetStudyCountByGroupName(m_name, 3);
        Repository().SetTechWndKeyByGroupName(m_name, 11);
        std::vector<CString> params;
        Repository().GetStudyParamSettingByGroupName(m_name, params);
        params.push_back("900=1,2");
        Repository().SetStudyParamSettingByGroupName(m_name, params);
        Repository().SaveAllGroupSetting();
        Chart().Reload();
        WhenDialogOpens({"selectButton", "okButton"});
        m_prompts.ExpectSaveFile(path);
        m_prompts.ExpectYesNo(true);  // whether to make a new file
        m_prompts.ExpectMessage();
        Choose(Command::ExportGroups);
        return Chart().LegendTexts();
    }

    DialogDriver m_driver;
    const CString m_name = ui::FromQString(kGroup);
};

TEST_F(GroupExchange, ChartsLookTheSameInAnotherTerminal) {
    const QString file = FilePath("groups.TASG");
    const QStringList legends = MakeAndExport(file);
    ASSERT_EQ(legends.size(), 3);
    End();

    // Another terminal with a store of its own.
    ASSERT_TRUE(QFile::remove(StorePath()));
    Start();
    ASSERT_FALSE(GroupsInRepository().contains(kGroup));
    WhenDialogOpens({"okButton"});
    m_prompts.ExpectFile(file);
    m_prompts.ExpectMessage();
    Choose(Command::ImportGroups);
    EXPECT_TRUE(GroupsInBox().contains(kGroup));
    ChooseGroup(kGroup);
    EXPECT_EQ(Chart().LegendTexts(), legends);
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName(m_name), 11);

    // It was saved: the next run has it.
    End();
    Start();
    EXPECT_TRUE(GroupsInRepository().contains(kGroup));
}

TEST_F(GroupExchange, ADroppedGroupFileIsImportedAndAShownChartFollows) {
    const QString file = FilePath("groups.tasg");
    MakeAndExport(file);
    Repository().SetStudyCountByGroupName(m_name, 1);
    Repository().SaveAllGroupSetting();
    Chart().Reload();
    ASSERT_EQ(Chart().PaneCount(), 1);

    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QDragEnterEvent enter(QPoint(400, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(400, 400), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    m_prompts.ExpectMessage();
    WhenDialogOpens({"okButton"});
    QApplication::sendEvent(&Window(), &drop);
    EXPECT_TRUE(Await([this] { return m_prompts.Waiting() == 0; }));
    EXPECT_EQ(Chart().PaneCount(), 3);
}

}  // namespace
}  // namespace ta::test
