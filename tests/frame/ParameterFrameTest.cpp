// Study parameters carried from one group to another through a text file, by the menu.

#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "terminal/frame/openers/ParameterPreviewDialog.h"
#include "terminal/parameters/GroupParameters.h"
#include "tests/support/DialogDriver.h"

#include <QFile>
#include <QPushButton>
#include <QTableWidget>

namespace ta::test {
namespace {

using terminal::Command;

constexpr StudyType kMacd = 22;
constexpr StudyType kVolume = 16;
const QString kFrom = QString::fromUtf8("許功蓋");
const QString kTo = QString::fromUtf8("短線");

class ParameterFrame : public FrameTest {
protected:
    void SetUp() override {
        FrameTest::SetUp();
        for (const QString& name : {kTo, kFrom}) {
            AddGroup(name);
            Repository().SetStudyListByGroupName(ui::FromQString(name), {{0}, {kMacd, kVolume}});
        }
        Set(kFrom, {kMacd, {5, 35, 5}, m_shapes});
        Set(kFrom, {kVolume, {3, 9}, Settings(kFrom, kVolume).shapes});
        Repository().SaveAllGroupSetting();
    }

    static void Set(const QString& group, const terminal::StudySettings& settings) {
        EXPECT_TRUE(terminal::WriteGroup(ui::FromQString(group), {settings}).empty());
    }
    static terminal::StudySettings Settings(const QString& group, StudyType study) {
        const auto settings = terminal::ReadGroup(ui::FromQString(group), {study});
        return settings.empty() ? terminal::StudySettings() : settings.front();
    }
    static void Push(QWidget& dialog, const char* button) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    static QTreeWidget& List(QWidget& dialog) { return *dialog.findChild<QTreeWidget*>(); }
    static QStringList RowsOf(QWidget& dialog) {
        QStringList rows;
        for (QTreeWidgetItemIterator item(&List(dialog)); *item != nullptr; ++item) {
            rows.append((*item)->text(0) + '|' + (*item)->text(1) + '|' + (*item)->text(2));
        }
        return rows;
    }

    /// Exports the studies of `group` that stand in the rows of the chooser.
    void Export(const QString& group, const QString& path, const std::vector<int>& rows) {
        ChooseGroup(group);
        m_driver.Expect([rows](QWidget& dialog) {
            auto& list = *dialog.findChild<QTableWidget*>();
            EXPECT_EQ(list.rowCount(), 3);
            for (const int row : rows) {
                list.setCurrentCell(row, 0);
                QTest::keyClick(&list, Qt::Key_Space);
            }
            Push(dialog, "okButton");
        });
        m_prompts.ExpectSaveFile(path);
        if (m_exportFails) {
            m_prompts.ExpectMessage();
        }
        Choose(Command::ExportParameters);
    }
    void Import(const QString& path, const DialogDriver::Action& preview) {
        m_driver.Expect(preview);
        m_prompts.ExpectFile(path);
        Choose(Command::ImportParameters);
    }
    /// The message that importing the file brings.
    QString Refused(const QString& path) {
        m_prompts.ExpectFile(path);
        m_prompts.ExpectMessage();
        Choose(Command::ImportParameters);
        EXPECT_EQ(m_prompts.Last().title, "看盤終端機");
        return m_prompts.Last().text;
    }
    /// Another terminal sets the parameters of a group's studies.
    void SaveInOther(const QString& group, const std::vector<CString>& strings) {
        terminal::SqliteStore other;
        ASSERT_EQ(other.Open(StorePath()).state, terminal::OpenResult::Opened);
        const unsigned index = Repository().GetGroupIndexByName(ui::FromQString(group));
        ASSERT_TRUE(other.SaveTAStudyParamSetting(index, strings));
        other.PackFile();
    }

    const QString m_file = FilePath("parameters.csv");
    const std::vector<StudyShape> m_shapes{
        {0x123456, 3, 4, true}, {0xE8590C, 1, 0, false}, {0x7C848C, 1, 0, true}};
    bool m_exportFails = false;
    DialogDriver m_driver;
};

TEST_F(ParameterFrame, ChosenStudiesGoFromOneGroupToAnother) {
    Export(kFrom, m_file, {2, 1});
    EXPECT_EQ(m_prompts.Last().preset, kFrom + ".csv");
    EXPECT_TRUE(Status().contains("parameters.csv"));
    EXPECT_EQ(QLocale().dayName(1), "星期一") << "as calendars name it";
    Choose(Command::English);
    EXPECT_EQ(Status(), "") << "it was Chinese";
    EXPECT_EQ(QLocale().dayName(1), "Monday");
    Choose(Command::Chinese);
    ChooseGroup(kTo);
    const terminal::StudySettings volume = Settings(kTo, kVolume);
    Import(m_file, [](QWidget& dialog) {
        EXPECT_EQ(
            RowsOf(dialog),
            (QStringList{"指數平滑異同移動平均線||", "短期|12|5", "長期|26|35", "訊號期數|9|5",
                         "DIF 顏色|#1C7ED6|#123456", "DIF 線寬|1|3", "DIF 線型|實線|雙點虛線",
                         "MACD 顯示|顯示|不顯示", "成交量||", "短期|5|3", "長期|20|9"}));
        QTreeWidget& list = List(dialog);
        list.collapseItem(list.topLevelItem(0));
        list.setCurrentItem(list.topLevelItem(1)->child(0));
        Set(kTo, {kMacd, {12, 26, 7}, Settings(kTo, kMacd).shapes});
        Repository().SendMsg2AllTechView(kGroupChangeMessage, 0);
        EXPECT_TRUE(RowsOf(dialog).contains("訊號期數|7|5"));
        EXPECT_FALSE(list.topLevelItem(0)->isExpanded());
        EXPECT_EQ(list.currentItem(), list.topLevelItem(1));
        list.setCurrentItem(list.topLevelItem(0));
        Push(dialog, "selectButton");
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled()) << "none checked";
        List(dialog).setFocus();
        QTest::keyClick(&List(dialog), Qt::Key_Space);
        QTest::keyClick(&List(dialog), Qt::Key_Return);
    });
    EXPECT_EQ(Settings(kTo, kMacd), (terminal::StudySettings{kMacd, {5, 35, 5}, m_shapes}));
    EXPECT_EQ(Settings(kTo, kVolume), volume) << "it was not checked";
    EXPECT_TRUE(Chart().LegendTexts().join(' ').contains("5,35,5"))
        << Chart().LegendTexts().join(' ').toStdString();
    EXPECT_TRUE(Status().contains(kTo));

    // It was saved: the next run has it, and then only the other study differs.
    End();
    Start();
    ChooseGroup(kTo);
    EXPECT_EQ(Settings(kTo, kMacd).params, (std::vector<double>{5, 35, 5}));
    Import(m_file, [](QWidget& dialog) {
        EXPECT_EQ(List(dialog).topLevelItemCount(), 1);
        Push(dialog, "cancelButton");
    });
    EXPECT_EQ(Settings(kTo, kVolume), volume) << "cancelled";
    ChooseGroup(kFrom);
    EXPECT_TRUE(Refused(m_file).contains("相同")) << "nothing differs";
}

TEST_F(ParameterFrame, WhatAnotherTerminalSavesMeanwhileIsNotLost) {
    Export(kFrom, m_file, {1, 2});
    ChooseGroup(kTo);
    Import(m_file, [this](QWidget& dialog) {
        List(dialog).topLevelItem(1)->setCheckState(0, Qt::Unchecked);
        m_prompts.ExpectMessage();
        SaveInOther(kTo, {"22=12,26,7", "16=3,9", "24=4,8"});
        Push(dialog, "okButton");
        EXPECT_TRUE(m_prompts.Last().text.contains("清單已更新"));
        ASSERT_TRUE(dialog.isVisible()) << "the user looks again";
        EXPECT_TRUE(RowsOf(dialog).contains("訊號期數|7|5"))
            << RowsOf(dialog).join('\n').toStdString();
        EXPECT_EQ(List(dialog).topLevelItemCount(), 1) << "no difference in the other any more";
        Push(dialog, "okButton");
    });
    EXPECT_EQ(Settings(kTo, kMacd).params, (std::vector<double>{5, 35, 5}));
    EXPECT_EQ(Settings(kTo, 24).params, (std::vector<double>{4, 8})) << "of the other terminal";
    End();
    Start();
    EXPECT_EQ(Settings(kTo, 24).params, (std::vector<double>{4, 8}));
}

TEST_F(ParameterFrame, AGroupThatGoesMeanwhileIsToldAndNothingIsSet) {
    Export(kFrom, m_file, {1});
    ChooseGroup(kTo);
    Import(m_file, [](QWidget& dialog) {
        Repository().DeleteGroupSetting(ui::FromQString(kTo));
        Repository().SaveAllGroupSetting();
        Repository().SendMsg2AllTechView(kGroupChangeMessage, 0);
        EXPECT_EQ(List(dialog).topLevelItemCount(), 0);
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    ChooseGroup(kFrom);
    m_driver.Expect([](QWidget& dialog) {
        Push(dialog, "selectButton");
        Push(dialog, "okButton");
    });
    m_prompts.ExpectSaveFile(m_file);
    m_prompts.Meanwhile([] { Repository().DeleteGroupSetting(ui::FromQString(kFrom)); });
    m_prompts.ExpectMessage();
    const QByteArray before = [this] {
        QFile file(m_file);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }();
    Choose(Command::ExportParameters);
    QFile file(m_file);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before) << "the file of before stays";
}

TEST_F(ParameterFrame, BadFilesAndChoicesAreToldAndNothingChanges) {
    const auto before = Settings(kFrom, kMacd);
    m_driver.Expect([](QWidget& dialog) { Push(dialog, "okButton"); });
    m_prompts.ExpectMessage();
    Choose(Command::ExportParameters);
    EXPECT_TRUE(m_prompts.Last().text.contains("沒有勾選"));
    m_driver.Expect([](QWidget& dialog) { Push(dialog, "cancelButton"); });
    Choose(Command::ExportParameters);

    EXPECT_TRUE(Refused(FilePath("none.csv")).contains("不存在"));
    const QString damaged = Refused(WriteFile("bad.csv", "TA study parameters,1\nStudy,Kind\n"));
    EXPECT_TRUE(damaged.contains("bad.csv") && damaged.contains("第 2 行"))
        << damaged.toStdString();
    QFile large(FilePath("large.csv"));
    ASSERT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(100 << 20));
    QElapsedTimer time;
    time.start();
    EXPECT_TRUE(Refused(large.fileName()).contains("檔案太大"));
    EXPECT_LT(time.elapsed(), 1000);
    m_prompts.ExpectCancel(ScriptedPrompts::Kind::OpenFile);
    Choose(Command::ImportParameters);
    EXPECT_EQ(Settings(kFrom, kMacd), before);

    m_exportFails = true;
    Export(kFrom, FilePath("no folder/a.csv"), {1});
    EXPECT_TRUE(m_prompts.Last().text.contains("資料夾不存在"));
}

}  // namespace
}  // namespace ta::test
