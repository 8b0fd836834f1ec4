// The data viewer of a chart in a running terminal.

#include "terminal/frame/DataViewer.h"

#include "platform/Text.h"
#include "terminal/chart/ChartTable.h"
#include "terminal/compare/ComparisonModel.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Commands.h"
#include "terminal/frame/ExportProfileFile.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/quotes/CsvImport.h"
#include "tests/frame/FrameFixture.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/ManualTimers.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QPushButton>
#include <QTableView>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::DataViewer;

class DataViewerTest : public FrameTest {
protected:
    DataViewerTest() { m_options.language = terminal::Language::English; }

    MXTechDataDlg& Open() {
        Choose(Command::ViewData);
        Fill();
        return *Viewer();
    }
    MXTechDataDlg* Viewer() { return DataViewer::Of(Tabs().Current()).Window(); }
    void Fill() { m_timers.Tick(MXTechDataDlg::kFillTimer, 100); }
    QTableView& List() {
        return *qobject_cast<QTableView*>(Viewer()->GetDlgItem(MXTechDataDlg::kIdList));
    }
    int Rows() { return List().model()->rowCount(); }
    QString Cell(int row, int column) {
        return List().model()->index(row, column).data().toString();
    }
    QString Heading(int column) {
        return List().model()->headerData(column, Qt::Horizontal).toString();
    }
    bool IsMarked(int row) {
        return List().model()->index(row, 0).data(Qt::BackgroundRole).isValid();
    }

    ManualTimers m_timers;
};

TEST_F(DataViewerTest, ShowsTheChartsNumbersAndFollowsIt) {
    MXTechDataDlg& viewer = Open();
    EXPECT_EQ(Rows(), Chart().BarCount());
    const auto& model = Chart().Model();
    EXPECT_EQ(List().model()->columnCount(), static_cast<int>(Chart().Table().headers.size()));
    EXPECT_GT(List().model()->columnCount(), 6);
    EXPECT_EQ(Heading(0) + Heading(4) + Heading(5), "DateCloseVolume");
    EXPECT_EQ(Cell(7, 0), "2019/01/08");
    EXPECT_EQ(Cell(7, 4), QString::number(model.Bars()[7].close, 'f', 2));
    EXPECT_EQ(Cell(7, 5), "1007");
    Choose(Command::ViewData);
    EXPECT_EQ(Viewer(), &viewer);

    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(Rows(), 0);
    Fill();
    EXPECT_EQ(Rows(), 90);
    unsigned char market = 0;
    CString symbol;
    viewer.GetSymbolInfo(market, symbol);
    EXPECT_EQ(symbol, "9901");
    Tabs().SelectPeriod(3);  // one minute
    Fill();
    EXPECT_EQ(Cell(1, 0), "2019/01/02 09:01");

    const int columns = List().model()->columnCount();
    AddGroup("empty");
    Repository().SetStudyListByGroupName("empty", StudyLists(10));
    Repository().SaveAllGroupSetting();
    Chart().Reload();
    Fill();
    EXPECT_LT(List().model()->columnCount(), columns);
    // A redraw that changes nothing leaves the rows alone.
    Chart().Reload();
    EXPECT_EQ(Rows(), 240);
}

TEST_F(DataViewerTest, PricesHaveTheDecimalsOfTheUsersOwnFile) {
    QFile own(FilePath("own.csv"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("Date,Open,High,Low,Close\n2024-01-02,1.08,1.1,1.07,1.08342\n");
    own.close();
    m_prompts.ExpectFile(own.fileName());
    Choose(Command::OpenCsv);
    Open();
    EXPECT_EQ(Cell(0, 1) + ' ' + Cell(0, 4), "1.08000 1.08342");
}

TEST_F(DataViewerTest, IsTiedToTheCursorLine) {
    Chart().SetCursorBar(9);
    Open();
    EXPECT_TRUE(IsMarked(9)) << "though its row has come later";
    Chart().SetCursorBar(12);
    EXPECT_TRUE(IsMarked(12));
    Chart().SetCursorBar(-1);
    EXPECT_FALSE(IsMarked(12));
    ASSERT_TRUE(Await([this] { return Viewer()->isActiveWindow(); }));
    List().setCurrentIndex(List().model()->index(40, 2));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_TRUE(Await([this] { return Chart().CursorBar() == 40; }));
    EXPECT_TRUE(IsMarked(40));
    DialogDriver driver;
    driver.Expect([](QWidget& dialog) {
        dialog.findChild<QDateEdit*>("dateEdit")->setDate({2019, 1, 8});
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    QTest::keyClick(&List(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(Await([this] { return Chart().CursorBar() == 7; }));
    EXPECT_TRUE(IsMarked(7));
    Chart().Reload();  // takes the cursor line away
    EXPECT_FALSE(IsMarked(7));
}

TEST_F(DataViewerTest, OneAChartWhichClosesWithItAndStaysWhereItWasPut) {
    QPointer<MXTechDataDlg> first = &Open();
    first->move(77, 88);
    const QPoint place = first->pos();
    first->resize(500, 400);
    Choose(Command::NewTab);
    EXPECT_EQ(Viewer(), nullptr);
    QPointer<MXTechDataDlg> second = &Open();
    Choose(Command::CloseTab);
    EXPECT_TRUE(Await([&] { return second == nullptr; }));
    ASSERT_NE(first, nullptr);
    first->close();
    EXPECT_TRUE(Await([&] { return first == nullptr; }));
    Open();
    EXPECT_EQ(Viewer()->pos(), place);
    EXPECT_EQ(Viewer()->size(), QSize(500, 400));
    Viewer()->OnEraseAll();
    EXPECT_EQ(Rows(), 0);
    QApplication::processEvents();
    Chart().SetCursorBar(3);
    // Erased rows stay away from the same bars, whatever becomes of the studies.
    const int columns = List().model()->columnCount();
    Chart().Reload();
    Fill();
    EXPECT_EQ(Rows(), 0);
    Repository().SetStudyListByGroupName(Chart().GroupName(), StudyLists(10));
    Repository().SaveAllGroupSetting();
    Chart().Reload();
    Fill();
    EXPECT_LT(List().model()->columnCount(), columns);
    EXPECT_EQ(Rows(), 0);
    Tabs().OpenSymbol(16, "9901");
    Fill();
    EXPECT_EQ(Rows(), 90);
    Tabs().OpenSymbol(2, "SPX");
    Fill();
    EXPECT_EQ(Rows(), Chart().BarCount());
}

TEST_F(DataViewerTest, OfAComparisonHasAColumnASymbol) {
    Tabs().Compare({{{2, "SPX"}, {16, "9901"}, {2, "gone"}}, {.recordCount = 5000}, 0});
    terminal::ComparisonView& comparison = *Tabs().CurrentComparison();
    QTest::keyClick(&Window(), Qt::Key_B, Qt::ControlModifier);
    ASSERT_NE(Viewer(), nullptr);
    Fill();
    const auto headings = [this] {
        return Heading(0) + '|' + Heading(1) + '|' + Heading(2) + '|' + Heading(3);
    };
    EXPECT_EQ(headings(), "Date|S&P 500 index (%)|Simulated Electronics (%)|gone ??? (%)");
    EXPECT_EQ(Rows(), 300);
    const auto& lines = comparison.Model().Result().lines;
    EXPECT_EQ(Cell(7, 2), QString::number(lines[1].values[7], 'f', 2));
    EXPECT_EQ(Cell(7, 3) + Cell(90, 2), "")
        << "there are 90 bars of the second and none of the third";
    EXPECT_EQ(Cell(90, 1), QString::number(lines[0].values[90], 'f', 2));
    comparison.SetMode(terminal::ComparisonMode::Prices);
    Fill();
    EXPECT_EQ(headings(), "Date|S&P 500 index|Simulated Electronics|gone ???");
    EXPECT_EQ(Cell(7, 1) + ' ' + Cell(7, 2), "108.00 108.0") << "with the decimals of each";
    comparison.SetCursorBar(12);
    EXPECT_TRUE(IsMarked(12));
    ASSERT_TRUE(Await([this] { return Viewer()->isActiveWindow(); }));
    List().setCurrentIndex(List().model()->index(40, 2));
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_TRUE(Await([&] { return comparison.CursorBar() == 40; }));
    EXPECT_TRUE(IsMarked(40));
    const QPointer<MXTechDataDlg> viewer = Viewer();
    Choose(Command::CloseTab);
    EXPECT_TRUE(Await([&] { return viewer == nullptr; }));
}

TEST_F(DataViewerTest, WhatItExportsReadsBackAsTheChartsBars) {
    Open();
    DialogDriver driver;
    for (const int form : {1, 3}) {  // for spreadsheets, for analysis
        driver.Expect([form](QWidget& dialog) {
            dialog.findChild<QComboBox*>("formCombo")->setCurrentIndex(form);
            dialog.findChild<QPushButton*>("okButton")->click();
        });
        const QString path = FilePath("out.csv");
        QFile::remove(path);
        m_prompts.ExpectSaveFile(path);
        m_prompts.ExpectYesNo(true);
        m_prompts.ExpectMessage();
        Viewer()->OnExport();
        const terminal::CsvImportResult read = terminal::ImportCsvFile(path);
        EXPECT_EQ(read.error, "");
        EXPECT_EQ(read.bars, Chart().Model().Bars());
    }
}

TEST(ExportProfileFileTest, KeepsProfilesAndRefusesGarbage) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("profiles.json");
    terminal::ExportProfileFile file(path);
    std::vector<ExportProfile> read{{}};
    EXPECT_TRUE(file.bLoadExportProfiles(read));
    EXPECT_TRUE(read.empty());
    const std::vector<ExportProfile> profiles{
        {text::FromUtf8("甲\"乙"),
         ExportForm::CodePage,
         {text::FromUtf8("收盤價"), ",\n2"},
         true,
         3,
         936},
        {"b", ExportForm::Fixed, {}, false, -1, 0},
    };
    EXPECT_TRUE(file.bSaveExportProfiles(profiles));
    EXPECT_TRUE(file.bLoadExportProfiles(read));
    EXPECT_EQ(read, profiles);
    const auto readText = [&](const char* text) {
        QFile raw(path);
        EXPECT_TRUE(raw.open(QIODevice::WriteOnly));
        raw.write(text);
        raw.close();
        return file.bLoadExportProfiles(read);
    };
    EXPECT_FALSE(readText("[{\"name\":"));
    EXPECT_EQ(read, profiles);
    EXPECT_TRUE(
        readText("[1, {}, {\"name\":\"x\",\"form\":\"?\"}, {\"form\":\"fixed\"},"
                 "{\"name\":\"y\",\"form\":\"analysis\",\"decimals\":99}]"));
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].decimals, 9);
    // A save keeps what it does not understand, and leaves alone what is no list.
    const auto rawText = [&] {
        QFile raw(path);
        EXPECT_TRUE(raw.open(QIODevice::ReadOnly));
        return raw.readAll().simplified();
    };
    EXPECT_TRUE(readText("[{\"form\":\"newer\",\"name\":\"x\",\"more\":[1]}]") && read.empty());
    EXPECT_TRUE(file.bSaveExportProfiles(profiles) && file.bSaveExportProfiles({}));
    EXPECT_EQ(rawText(), R"([ { "form": "newer", "more": [ 1 ], "name": "x" } ])");
    EXPECT_FALSE(readText("{}"));
    EXPECT_FALSE(file.bSaveExportProfiles(profiles));
    EXPECT_EQ(rawText(), "{}");
    EXPECT_FALSE(
        terminal::ExportProfileFile(folder.filePath("no/p")).bSaveExportProfiles(profiles));
}

}  // namespace
}  // namespace ta::test
