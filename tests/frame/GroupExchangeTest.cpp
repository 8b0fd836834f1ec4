// Groups carried from one terminal to another through a group file, by the menu and by dropping.

#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"

#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>

namespace ta::test {
namespace {

using terminal::Command;

const QString kGroup = QString::fromUtf8("許功蓋的群組");

class GroupExchange : public FrameTest {
protected:
    /// Presses the buttons, one after the other, in the dialog that opens next.
    void WhenDialogOpens(const QStringList& buttons) {
        QTimer::singleShot(0, &Window(), [this, buttons] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            for (const QString& name : buttons) {
                auto* button = dialog->findChild<QPushButton*>(name);
                ASSERT_NE(button, nullptr) << name.toStdString();
                QTest::mouseClick(button, Qt::LeftButton);
            }
        });
    }

    CString Name() const { return ui::FromQString(kGroup); }

    /// A group with studies, parameters, shapes and counts that no new group has.
    void MakeGroup() {
        AddGroup(kGroup);
        Repository().SetStudyListByGroupName(Name(), {{0, 5}, {16}, {24, 22}});
        Repository().SetStudyCountByGroupName(Name(), 3);
        Repository().SetTechWndKeyByGroupName(Name(), 11);
        std::vector<CString> params;
        Repository().GetStudyParamSettingByGroupName(Name(), params);
        params.push_back("900=1,2");
        Repository().SetStudyParamSettingByGroupName(Name(), params);
        Repository().SaveAllGroupSetting();
        Repository().SendMsg2AllTechView(0, 0);
    }

    void Export(const QString& path) {
        WhenDialogOpens({"selectButton", "okButton"});
        m_prompts.ExpectSaveFile(path);
        m_prompts.ExpectYesNo(true);  // whether to make a new file
        m_prompts.ExpectMessage();
        Choose(Command::ExportGroups);
    }
};

TEST_F(GroupExchange, ChartsLookTheSameInAnotherTerminal) {
    const QString file = FilePath("groups.TASG");
    MakeGroup();
    Chart().SetGroup(Name());
    Chart().Reload();
    const QStringList legends = Chart().LegendTexts();
    ASSERT_EQ(legends.size(), 3);
    Export(file);
    End();

    // Another terminal with a store of its own.
    ASSERT_TRUE(QFile::remove(StorePath()));
    Start();
    ASSERT_FALSE(GroupsInRepository().contains(kGroup));
    WhenDialogOpens({"okButton"});
    m_prompts.ExpectFile(file);
    m_prompts.ExpectMessage();
    Choose(Command::ImportGroups);
    EXPECT_TRUE(m_prompts.Last().text.endsWith("新增 1 個，覆蓋 1 個。"))
        << m_prompts.Last().text.toStdString();
    EXPECT_TRUE(GroupsInBox().contains(kGroup));
    Chart().SetGroup(Name());
    EXPECT_EQ(Chart().LegendTexts(), legends);
    EXPECT_EQ(Repository().GetTechWndKeyByGroupName(Name()), 11);

    // It was saved: the next run has it.
    End();
    Start();
    EXPECT_TRUE(GroupsInRepository().contains(kGroup));
}

TEST_F(GroupExchange, ADroppedGroupFileIsImportedAndAShownChartFollows) {
    const QString file = FilePath("groups.tasg");
    MakeGroup();
    Export(file);
    Chart().SetGroup(Name());
    Repository().SetStudyCountByGroupName(Name(), 1);
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
    QApplication::sendEvent(&Window(), &drop);
    WhenDialogOpens({"okButton"});
    EXPECT_TRUE(Await([this] { return m_prompts.Waiting() == 0; }));
    EXPECT_EQ(Chart().PaneCount(), 3);
}

}  // namespace
}  // namespace ta::test
