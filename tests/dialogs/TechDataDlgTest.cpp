// The technical data viewer, driven as its owner and its user do; ticks come by hand.

#include "dialogs/MXTechDataDlg.h"
#include "platform/ExportProfiles.h"
#include "platform/Text.h"
#include "platform/ui/LongWork.h"
#include "tests/dialogs/TechDataFixture.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/DialogFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace ta::test {
namespace {

using namespace ta::techdata;

constexpr unsigned kClose = 0xC102;
constexpr unsigned kErase = 0xC103;
constexpr std::size_t kSpreadsheetLines = 1'048'576;
constexpr const char* kGoodCsv = "T\r\nA,B,\r\n2024/03/05,0.00,\r\n2024/03/06,1.00,\r\n";

class Owner : public CWnd {
public:
    CString got;

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
        got += fmt::format("{} {} {};", message - kClose, wParam, lParam);
        return 0;
    }
};

class MemoryProfiles : public ExportProfiles {
public:
    std::vector<ExportProfile> profiles;
    bool broken = false;

    bool bLoadExportProfiles(std::vector<ExportProfile>& out) override {
        out = broken ? out : profiles;
        return !broken;
    }
    bool bSaveExportProfiles(const std::vector<ExportProfile>& in) override {
        profiles = broken ? profiles : in;
        return !broken;
    }
};

class TechDataViewer : public DialogFixture {
protected:
    TechDataViewer() {
        Services services = CSyncInfo::GetSettingCFG().GetServices();
        services.numberDisplay = &display;
        services.exportProfiles = &profiles;
        CSyncInfo::GetSettingCFG().SetServices(services);
        quotes.language["IDC_TECHVIEW-STRING_TECHDATA_VIEW_DATA"] = "View";
    }
    ~TechDataViewer() override {
        ui::SetProgressDelay(500);
        CSyncInfo::GetSettingCFG().SetServices({});
    }

    MXTechDataDlg& Open(std::size_t rows, const char* title = "T") {
        records = MakeRecords(rows, 1);
        viewer = std::make_unique<MXTechDataDlg>(title, "second", kDailyData, headers, records,
                                                 0xC101, kClose, kErase, 77, "SYM/1", 5, 6, &owner);
        viewer->Create();
        return *viewer;
    }
    MXTechDataDlg& OpenFull(std::size_t rows) {
        Open(rows);
        Fill();
        return *viewer;
    }
    void Fill() {
        while (timers.Period(MXTechDataDlg::kFillTimer) > 0) {
            Tick();
        }
    }
    void Tick() { timers.Tick(MXTechDataDlg::kFillTimer); }
    int Period() const { return timers.Period(MXTechDataDlg::kFillTimer); }
    QTableView& List() { return Item<QTableView>(*viewer, MXTechDataDlg::kIdList); }
    int Rows() { return List().model()->rowCount(); }
    QString Cell(int row, int column) {
        return List().model()->index(row, column).data().toString();
    }
    /// How many of the exports are enabled.
    int Exports() {
        const auto ids = {MXTechDataDlg::kIdCopy, MXTechDataDlg::kIdSaveCsv,
                          MXTechDataDlg::kIdExport};
        return static_cast<int>(std::ranges::count_if(
            ids, [this](int id) { return Item<QWidget>(*viewer, id).isEnabled(); }));
    }
    /// What the copy button tells.
    QString Copy() {
        return Told([this] { Click(*viewer, MXTechDataDlg::kIdCopy); });
    }
    void PressControl(Qt::Key key, Qt::KeyboardModifiers more = {}) {
        Press(*viewer, key, Qt::ControlModifier | more);
    }
    void Refill() { viewer->reInitializeList("T", kDailyData, 0, 0); }
    /// What the owner has got, after `before` of it was there without delivery.
    CString Posted(const CString& before = {}) {
        EXPECT_EQ(owner.got, before);
        while (window::DeliverPostedMessage()) {
        }
        return std::exchange(owner.got, {});
    }
    static QString Clipboard() { return QApplication::clipboard()->text(); }
    /// Saves with the button, into a file of that name.
    QString SaveAs(const QString& path) {
        prompts.ExpectSaveFile(path);
        if (!QFile::exists(path)) {
            prompts.ExpectYesNo(true);
        }
        return Told([this] { Click(*viewer, MXTechDataDlg::kIdSaveCsv); });
    }
    /// Runs `action` as soon as the progress shows.
    void AtProgress(const std::function<void(QProgressDialog&)>& action) {
        ui::SetProgressDelay(0);
        QTimer::singleShot(0, &m_context, [action] {
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                if (auto* progress = qobject_cast<QProgressDialog*>(widget)) {
                    EXPECT_TRUE(progress->isVisible());
                    return action(*progress);
                }
            }
            ADD_FAILURE() << "no progress is shown";
        });
    }
    static void CancelWork(QProgressDialog& progress) { Click(Find<QPushButton>(progress, "")); }

    bool IsInView(int row) {
        return List().viewport()->rect().intersects(
            List().visualRect(List().model()->index(row, 0)));
    }

    Owner owner;
    MemoryProfiles profiles;
    PlainNumberDisplay display;
    Headers headers = MakeHeaders({"A", "B"});
    Records records;
    std::unique_ptr<MXTechDataDlg> viewer;

private:
    QObject m_context;
};

// ---- The fill ----

TEST_F(TechDataViewer, FillsInBatchesFitsOnceEarlyAndAtTheEnd) {
    MXTechDataDlg& dialog = Open(1000);
    records[100].values[0] = 1e12;
    Show(dialog);
    EXPECT_EQ(Period(), 100);
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(Exports(), 0);
    const int unfitted = List().columnWidth(1);
    Tick();
    const int early = List().columnWidth(1);
    EXPECT_NE(early, unfitted);  // fitted when row 100 was about to come
    for (const int rows : {300, 600, 900, 1000}) {
        EXPECT_EQ(fmt::format("{} {} {}", Rows(), Exports(), List().columnWidth(1)),
                  fmt::format("{} 0 {}", rows, early));
        if (rows < 1000) {
            Tick();
        }
    }
    viewer->setFocus();
    Tick();
    EXPECT_EQ(Period(), 0);
    EXPECT_EQ(Exports(), 3);
    EXPECT_TRUE(List().hasFocus());
    EXPECT_TRUE(IsInView(999));
    EXPECT_GT(List().columnWidth(1), early);
    for (const int column : {0, 1}) {
        const QModelIndex widest = List().model()->index(100, column);
        EXPECT_GE(List().columnWidth(column), List().sizeHintForIndex(widest).width());
    }
    EXPECT_EQ(Cell(100, 0), "2024/06/13");
    EXPECT_EQ(Cell(100, 1), "1000000000000.00");
}

TEST_F(TechDataViewer, ABatchIsAtLeastAPage) {
    MXTechDataDlg& dialog = Open(2000);
    Show(dialog);
    dialog.resize(800, 500 * List().verticalHeader()->defaultSectionSize());
    QApplication::processEvents();
    Tick();
    EXPECT_GT(Rows(), 400);
    EXPECT_LE(Rows(), 500);
}

TEST_F(TechDataViewer, WithoutRecordsOrHeadersTheFirstTickIsTheLast) {
    for (const bool withHeaders : {true, false}) {
        headers =
            MakeHeaders(withHeaders ? std::vector<CString>{"A", "B"} : std::vector<CString>{});
        Open(0);
        Tick();
        EXPECT_EQ(Period(), 0);
        Copy();
        EXPECT_EQ(Clipboard(), withHeaders ? "T\r\nA\tB\t\r\n" : "T\r\n\r\n");
    }
}

TEST_F(TechDataViewer, TheTickWithoutAListStops) {
    Open(1000);
    delete viewer->GetDlgItem(MXTechDataDlg::kIdList);
    Tick();
    EXPECT_EQ(Period(), 0);
    viewer->TuneColWidth();
    viewer->vInsertOneData(records[0]);
    EXPECT_TRUE(viewer->SetDataValue(0, records[0]));
}

TEST_F(TechDataViewer, TheOwnerChangesHisVectorsBetweenTicks) {
    Open(1000);
    Tick();
    records.resize(2);
    EXPECT_EQ(Cell(1, 1), "1.00");
    EXPECT_EQ(Cell(299, 1), "");
    Tick();  // the list is longer than the records now: the fill is over
    EXPECT_EQ(fmt::format("{} {} {}", Period(), Exports(), Rows()), "0 3 300");
    headers.clear();
    EXPECT_EQ(Cell(1, 1), "");
    Headers otherHeaders = MakeHeaders({"X", "Y", "Z"});
    Records otherRecords = MakeRecords(3, 2);
    viewer->SetHeaderList(otherHeaders);
    viewer->SetDataList(otherRecords);
    headers.clear();
    records.clear();
    EXPECT_EQ(Cell(2, 1), "2.00");
    EXPECT_EQ(List().model()->columnCount(), 2);
    viewer->reInitializeList("T2", 0, 7, 8, 'm', "NEW");
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(List().model()->columnCount(), 3);
    EXPECT_EQ(List().model()->headerData(2, Qt::Horizontal).toString(), "Z");
    EXPECT_EQ(Period(), 1000);
    EXPECT_EQ(Exports(), 0);
    Fill();
    EXPECT_EQ(Rows(), 3);
    EXPECT_EQ(Cell(2, 0), "2024/03/07 00:00");
    unsigned char market = 0;
    CString symbol;
    viewer->GetSymbolInfo(market, symbol);
    EXPECT_EQ(fmt::format("{} {} {} {}", market, symbol, viewer->GetTADataParam(),
                          viewer->GetTADataType()),
              "109 NEW 7 8");
    viewer.reset();  // before the vectors
}

TEST_F(TechDataViewer, InsertedAndReplacedRows) {
    OpenFull(600);
    Show(*viewer);
    List().scrollToTop();
    records.push_back({30000, {7}});
    viewer->vInsertOneData(records.back());
    EXPECT_EQ(Cell(600, 1), "7.00");
    EXPECT_EQ(List().currentIndex().row(), 600);
    EXPECT_TRUE(IsInView(600));
    viewer->vInsertOneData({30001, {8}});  // the owner has it not
    EXPECT_EQ(Cell(601, 1), "8.00");
    EXPECT_TRUE(viewer->SetDataValue(600, {30000, {7.5}}));
    EXPECT_EQ(records[600].values[0], 7.5);
    EXPECT_EQ(Cell(600, 1), "7.50");
    EXPECT_FALSE(viewer->SetDataValue(601, {30000, {1}}));
    // The owner drops one for it: every row shows another record, the marked one too.
    Refill();
    Fill();
    viewer->MarkTime(records[9].time);
    List().scrollToTop();
    List().repaint();
    records.erase(records.begin());
    records.push_back({30001, {8}});
    viewer->vInsertOneData(records.back());
    EXPECT_EQ(Cell(0, 1) + Cell(600, 1), "1.008.00");
    EXPECT_EQ(fmt::format("{} {}", Rows(), List().currentIndex().row()), "601 600");
    EXPECT_TRUE(List().model()->index(8, 0).data(Qt::BackgroundRole).isValid());
    // While the list fills, the row comes with the fill, is selected then, and widens its column.
    Refill();
    Tick();
    viewer->vInsertOneData({30002, {1e15}});
    EXPECT_EQ(Rows(), 300);
    Fill();
    EXPECT_EQ(Cell(601, 1), "1000000000000000.00");
    EXPECT_EQ(List().currentIndex().row(), 601);
    EXPECT_GE(List().columnWidth(1), List().fontMetrics().horizontalAdvance("1000000000000000.00"));
}

TEST_F(TechDataViewer, BothWidthModes) {
    headers[1].name = "a heading that is wider than its column's values";
    OpenFull(5);
    Show(*viewer);
    const int heading =
        List().fontMetrics().horizontalAdvance(QString::fromStdString(headers[1].name));
    EXPECT_GE(List().columnWidth(1), heading);
    PressControl(Qt::Key_2);
    EXPECT_EQ(viewer->GetColumnWidthMode(), 1);
    EXPECT_LT(List().columnWidth(1), heading);
    Refill();
    Fill();
    EXPECT_LT(List().columnWidth(1), heading);
    PressControl(Qt::Key_1);  // fills again
    EXPECT_EQ(Rows(), 0);
    Fill();
    EXPECT_GE(List().columnWidth(1), heading);
}

// ---- The window ----

TEST_F(TechDataViewer, ClosingAndErasingArePostedAndLeaveTheRestToTheOwner) {
    for (const auto& [title, closed] : {std::pair("View of T", "0 0 0;"), {"T View", "0 1 0;"}}) {
        quotes.language["IDC_TECHVIEW-STRING_TECHDATA_VIEW_DATA"] = "View";
        Open(1000, title);
        quotes.language["IDC_TECHVIEW-STRING_TECHDATA_VIEW_DATA"] = "T";
        Show(*viewer);
        PressControl(Qt::Key_1);  // fills again, in another language
        Click(*viewer, ui::kIdCancel);
        EXPECT_EQ(Posted(), closed);
        Press(*viewer, Qt::Key_Escape);
        viewer->close();
        EXPECT_EQ(Posted(), CString(closed) + closed);
        EXPECT_TRUE(viewer->isVisible());
    }
    Tick();
    PressControl(Qt::Key_Delete);
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(Period(), 0);
    EXPECT_EQ(records.size(), 1000U);
    EXPECT_EQ(Posted(), "1 0 0;");
    viewer->OnEraseAll();
    viewer.reset();
    EXPECT_EQ(Posted(), "1 0 0;");  // the owner lives on
    MXTechDataDlg orphan(nullptr, nullptr, 1, headers, records, 0, kClose, kErase, 0, "", 0, 0,
                         nullptr);
    orphan.reject();
    orphan.OnEraseAll();
    EXPECT_EQ(Posted(), "");
}

TEST_F(TechDataViewer, TheContextMenuComesForTheMouseOnly) {
    OpenFull(3);
    Show(*viewer);
    auto& menu = Find<QMenu>(*viewer, "");
    const auto ask = [&](QContextMenuEvent::Reason reason, const QPoint& at) {
        QContextMenuEvent event(reason, {5, 5}, at);
        QApplication::sendEvent(List().viewport(), &event);
        return menu.isVisible();
    };
    EXPECT_FALSE(ask(QContextMenuEvent::Keyboard, {50, 50}));
    EXPECT_FALSE(ask(QContextMenuEvent::Other, {-1, -1}));
    ASSERT_TRUE(ask(QContextMenuEvent::Mouse, {50, 50}));
    EXPECT_EQ(menu.actions().at(0)->text(), "IDS_CHANGESYM-TECHDATADLG_DELALL");
    EXPECT_EQ(menu.actions().at(1)->text(), "IDS_CHANGESYM-TECHDATADLG_SET_COLUMN_BY_DATA");
    QTest::mouseClick(&menu, Qt::LeftButton, {},
                      menu.actionGeometry(menu.actions().at(0)).center());
    EXPECT_EQ(Posted(), "1 0 0;");
}

TEST_F(TechDataViewer, ShowsTitlesOfAnyLengthAndTheLanguageOfTheMoment) {
    const CString title = CString(5000, '&') + "\r\n\t" + CString(5000, 'x');
    Open(2, title.c_str());
    headers[1].name = "Vol";
    records[1].values[0] = 2.5;
    viewer->reInitializeList(title.c_str(), kDailyData, 0, 0);
    Fill();
    Show(*viewer);
    EXPECT_LT(viewer->width(), 2000);
    EXPECT_EQ(Find<QLabel>(*viewer, "titleLabel").text().size(), 10'001);
    EXPECT_EQ(Cell(1, 1), "2.50");
    Translate(*viewer, {{"IDC_TECHVIEW-STRING_TECHDATA_DEAL_VOL", "Vol"},
                        {"IDS_DIALOG-TECHDATA_SAVE2CSV", "Save it"},
                        {"IDS_CHANGESYM-TECHDATADLG_DELALL", "Erase it"}});
    EXPECT_EQ(Cell(1, 1), "2");
    EXPECT_EQ(Item<QPushButton>(*viewer, MXTechDataDlg::kIdSaveCsv).text(), "Save it");
    EXPECT_EQ(Find<QMenu>(*viewer, "").actions().at(0)->text(), "Erase it");
}

TEST_F(TechDataViewer, RowsAreTiedToTheChart) {
    OpenFull(600);
    Show(*viewer);
    std::vector<double> activated;
    QObject::connect(viewer.get(), &MXTechDataDlg::timeActivated,
                     [&](double time) { activated.push_back(time); });
    viewer->MarkTime(records[2].time);
    EXPECT_TRUE(IsInView(2));
    const auto isMarked = [&](int row) {
        return List().model()->index(row, 0).data(Qt::BackgroundRole).isValid();
    };
    EXPECT_TRUE(isMarked(2));
    EXPECT_FALSE(isMarked(1));
    const QPoint second = List().visualRect(List().model()->index(2, 1)).center();
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, second);
    QTest::keyClick(&List(), Qt::Key_Down);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_TRUE(activated.empty()) << "it is posted";
    QApplication::processEvents();
    EXPECT_EQ(activated, (std::vector{records[2].time, records[3].time}));
    viewer->MarkTime(records[2].time + 0.5);
    EXPECT_FALSE(isMarked(2));
    viewer->MarkTime(1e9);
    viewer->MarkTime(-5);
    QObject::connect(viewer.get(), &MXTechDataDlg::timeActivated, [&] { viewer.reset(); });
    QTest::keyClick(&List(), Qt::Key_Return);
    QTest::keyClick(&List(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(viewer, nullptr);
    EXPECT_EQ(activated.size(), 3U);
}

TEST_F(TechDataViewer, GoesToADateAlsoOfARowThatIsStillToCome) {
    DialogDriver driver;
    Show(Open(1000));
    Tick();
    std::vector<double> activated;
    QObject::connect(viewer.get(), &MXTechDataDlg::timeActivated,
                     [&](double time) { activated.push_back(time); });
    const auto dateOf = [](int row) { return QDate(2024, 3, 5).addDays(row); };
    const auto choose = [&](QWidget& dialog, int row) {
        QApplication::clipboard()->setText(dateOf(row).toString("yyyy-M-d"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    };
    const auto press = [&] {
        Show(*viewer);
        PressControl(Qt::Key_G);
        QApplication::processEvents();
    };
    const auto goTo = [&](int shown, int row) {
        driver.Expect([=](QWidget& dialog) {
            EXPECT_EQ(Find<QDateEdit>(dialog, "dateEdit").date(), dateOf(shown));
            choose(dialog, row);
        });
        press();
    };
    goTo(999, 100);
    EXPECT_EQ(List().currentIndex().row(), 100);
    goTo(100, 500);
    EXPECT_EQ(List().currentIndex().row(), 100);
    EXPECT_EQ(activated, (std::vector{records[100].time, records[500].time}));
    Tick();
    EXPECT_EQ(List().currentIndex().row(), 500);
    EXPECT_TRUE(List().selectionModel()->isRowSelected(500));
    Fill();
    EXPECT_TRUE(IsInView(500)) << "though the end of the fill shows the last row";
    driver.Expect([&](QWidget& dialog) {
        for (const int outside : {-1, 1000}) {
            EXPECT_EQ(Told([&] { choose(dialog, outside); }),
                      "IDS_TADIALOGS-TECHDATA_GOTO_OUTSIDE 2024/03/05 2026/11/29");
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    press();
    EXPECT_EQ(activated.size(), 2U);
    // Rows that come again begin without a date to go to; without rows there is none.
    Refill();
    goTo(999, 500);
    Refill();
    Fill();
    EXPECT_TRUE(IsInView(999));
    EXPECT_NE(List().currentIndex().row(), 500);
    viewer->OnEraseAll();
    EXPECT_EQ(Told(press), "IDS_TADIALOGS-TECHDATA_GOTO_NONE");
    // The owner takes the row away, or the window, also while the user reads.
    OpenFull(9);
    driver.Expect([&](QWidget& dialog) {
        choose(dialog, 7);
        records.resize(2);
    });
    viewer->OnGoToDate();
    EXPECT_NE(List().currentIndex().row(), 7);
    driver.Expect([&](QWidget&) { viewer.reset(); });
    viewer->OnGoToDate();
    OpenFull(1);
    prompts.ExpectMessage();
    prompts.Meanwhile([&] { viewer.reset(); });
    driver.Expect([&](QWidget& dialog) { choose(dialog, -1); });
    viewer->OnGoToDate();
    EXPECT_EQ(viewer, nullptr);
}

// ---- Copy and save ----

TEST_F(TechDataViewer, CopiesTheWholeTable) {
    OpenFull(2);
    EXPECT_EQ(Copy(), "IDS_DIALOG-TECHDATA_COPY2CLIPBOARD_SUCCESS");
    EXPECT_EQ(Clipboard(), "T\r\nA\tB\t\r\n2024/03/05\t0.00\t\r\n2024/03/06\t1.00\t\r\n");
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::None);
    EXPECT_EQ(prompts.Last().title, "Terminal");
    headers[1].name = text::FromUtf8("成交量");
    Copy();
    EXPECT_TRUE(Clipboard().startsWith("T\r\nA\t成交量\t\r\n"));
}

TEST_F(TechDataViewer, ToldWhenAnotherProgramHasTheClipboard) {
    OpenFull(2);
    QClipboard& clipboard = *QApplication::clipboard();
    bool isFirst = true;
    const auto connection = QObject::connect(&clipboard, &QClipboard::dataChanged, [&] {
        if (std::exchange(isFirst, false)) {
            clipboard.setText("theirs");
        }
    });
    EXPECT_EQ(Copy(), "IDS_TADIALOGS-TECHDATA_CLIPBOARD_HELD");
    QObject::disconnect(connection);
}

TEST_F(TechDataViewer, CopiesSelectedRows) {
    OpenFull(5);
    Show(*viewer);
    const auto select = [&](int row, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers,
                          List().visualRect(List().model()->index(row, 1)).center());
    };
    QApplication::clipboard()->setText("before");
    List().clearSelection();
    PressControl(Qt::Key_C);
    EXPECT_EQ(Clipboard(), "before");
    select(3, {});
    select(4, Qt::ShiftModifier);
    select(0, Qt::ControlModifier);
    const QString rows = "2024/03/05\t0.00\r\n2024/03/08\t3.00\r\n2024/03/09\t4.00\r\n";
    PressControl(Qt::Key_C);
    EXPECT_EQ(Clipboard(), rows);
    PressControl(Qt::Key_C, Qt::ShiftModifier);
    EXPECT_EQ(Clipboard(), "A\tB\r\n" + rows);
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    PressControl(Qt::Key_C);
    EXPECT_EQ(Clipboard().count('\n'), 5);
}

TEST_F(TechDataViewer, SavesTheWholeTableAndReplacesUnasked) {
    OpenFull(2);
    const QString path = Path("資料😀.csv");
    EXPECT_EQ(SaveAs(path), path + "\r\nIDS_DIALOG-TECHDATA_SAVE2CSV_SUCCESS");
    EXPECT_EQ(Read(path), kGoodCsv);
    const ui::SaveFileOptions& asked = prompts.All().at(0).saving;
    EXPECT_EQ(asked.name, "SYM_1.csv");
    EXPECT_EQ(asked.filter, "*.CSV");
    EXPECT_EQ(asked.suffix, "CSV");
    EXPECT_FALSE(asked.asksReplace);
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::None);
    Write(path, "old");
    SaveAs(path);  // no question this time
    EXPECT_EQ(Read(path), kGoodCsv);
    // Without a symbol the title is the name, as far as files may have it.
    const CString longTitle(300, 'x');
    for (const auto& [symbol, title, name] : {std::tuple("<S>|1", "T", "_S__1.csv"),
                                              {"", " A/B: \x02*\"?\\ ", "A_B_ _____.csv"},
                                              {"", longTitle.c_str(), "x80.csv"}}) {
        viewer->reInitializeList(title, kDailyData, 0, 0, 2, symbol);
        prompts.ExpectCancel(ScriptedPrompts::Kind::SaveFile);
        viewer->OnCopy2csv();
        EXPECT_EQ(prompts.Last().saving.name.replace(QString(80, 'x'), "x80"), name);
    }
}

TEST_F(TechDataViewer, AFileThatCannotBeWrittenIsTold) {
    OpenFull(2);
    EXPECT_TRUE(SaveAs(Path("gone/x.csv")).startsWith("IDS_TADIALOGS-FILE_UNWRITABLE"));
    EXPECT_TRUE(SaveAs("/dev/full/x").startsWith("IDS_TADIALOGS-FILE_UNWRITABLE"));
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Warning);
}

TEST_F(TechDataViewer, ACancelLeavesFileAndClipboardAsTheyWere) {
    OpenFull(2);
    const QString path = Path("x.csv");
    Write(path, "old");
    AtProgress(CancelWork);
    prompts.ExpectSaveFile(path);
    Click(*viewer, MXTechDataDlg::kIdSaveCsv);
    EXPECT_EQ(Read(path), "old");
    EXPECT_EQ(QDir(Path("")).entryList(QDir::Files).size(), 1);  // nothing half written beside it
    QApplication::clipboard()->setText("before");
    AtProgress(CancelWork);
    Click(*viewer, MXTechDataDlg::kIdCopy);
    EXPECT_EQ(Clipboard(), "before");
    AtProgress([](QProgressDialog&) {});  // goes on
    SaveAs(path);
    EXPECT_EQ(Read(path), kGoodCsv);
}

TEST_F(TechDataViewer, OtherRowsOrAGoneWindowEndTheWork) {
    const QString path = Path("x.csv");
    Write(path, "old");
    QApplication::clipboard()->setText("before");
    const auto goAway = [this](QProgressDialog&) { viewer.reset(); };
    const auto refill = [this](QProgressDialog&) { Refill(); };
    const QString changed = "IDS_TADIALOGS-TECHDATA_CHANGED";
    OpenFull(2);
    AtProgress(refill);
    EXPECT_EQ(SaveAs(path), changed);
    Fill();
    prompts.ExpectSaveFile(path);
    prompts.Meanwhile([this] { Refill(); });
    EXPECT_EQ(Told([this] { Click(*viewer, MXTechDataDlg::kIdSaveCsv); }), changed);
    Fill();
    AtProgress([this](QProgressDialog&) { viewer->OnEraseAll(); });
    EXPECT_EQ(Copy(), changed);
    OpenFull(2);
    AtProgress(goAway);
    viewer->OnCopy2clipboard();
    OpenFull(2);
    AtProgress(goAway);
    prompts.ExpectSaveFile(path);
    viewer->OnCopy2csv();
    OpenFull(2);  // the window goes while the user reads that the rows are others now
    AtProgress(refill);
    prompts.ExpectSaveFile(path);
    prompts.ExpectMessage();
    prompts.Meanwhile([this] { viewer.reset(); });
    viewer->OnCopy2csv();
    EXPECT_EQ(Clipboard() + Read(path).c_str(), "beforeold");
}

// ---- Export profiles ----

class TechDataProfiles : public TechDataViewer {
protected:
    /// Opens the dialog, works in it, and presses OK (or Escape); what is saved goes to out.csv.
    void Export(const std::function<void(QDialog&)>& work, bool isSaved = true) {
        driver.Expect([=](QWidget& dialog) {
            work(static_cast<QDialog&>(dialog));
            if (dialog.isVisible()) {
                Click(Find<QPushButton>(dialog, isSaved ? "okButton" : "cancelButton"));
            }
        });
        if (isSaved) {
            prompts.ExpectSaveFile(Path("out.csv"));
            if (!QFile::exists(Path("out.csv"))) {
                prompts.ExpectYesNo(true);
            }
            prompts.ExpectMessage();
        }
        Click(*viewer, MXTechDataDlg::kIdExport);
    }
    std::string Out() { return Read(Path("out.csv")); }
    static void Choose(QDialog& dialog, const char* combo, const QString& text) {
        auto& box = Find<QComboBox>(dialog, combo);
        const int index = box.findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        box.setFocus();
        while (box.currentIndex() < index) {
            QTest::keyClick(&box, Qt::Key_Down);
        }
        while (box.currentIndex() > index) {
            QTest::keyClick(&box, Qt::Key_Up);
        }
    }

    DialogDriver driver;

    static QString Preview(QDialog& dialog) {
        return Find<QPlainTextEdit>(dialog, "previewEdit").toPlainText();
    }
    static QString Note(QDialog& dialog) { return Find<QLabel>(dialog, "noteLabel").text(); }
    static void Keep(QDialog& dialog, const char* name) {
        Type(Find<QLineEdit>(dialog, "nameEdit"), name);
        Click(Find<QPushButton>(dialog, "keepButton"));
    }
};

TEST_F(TechDataProfiles, TheFixedFormIsTheFirst) {
    OpenFull(8);
    Show(*viewer);
    Export([](QDialog& dialog) {
        EXPECT_EQ(Preview(dialog), "T\nA,B,\n2024/03/05,0.00,\n2024/03/06,1.00,\n2024/03/07,2.00,");
        for (const char* name : {"codePageCombo", "decimalsCombo", "selectedCheckBox",
                                 "columnsList", "deleteButton"}) {
            EXPECT_FALSE(Find<QWidget>(dialog, name).isEnabled()) << name;
        }
    });
    EXPECT_EQ(Out().substr(0, 9), "T\r\nA,B,\r\n");
    Export([](QDialog&) {}, false);
}

TEST_F(TechDataProfiles, FormColumnsRowsAndDecimalsAreChosenAndKept) {
    headers = MakeHeaders({"A", "B", "=C"});
    OpenFull(0);
    records = MakeRecords(8, 2);
    viewer->reInitializeList("T", 0, 0, 0);
    Fill();
    Show(*viewer);
    List().selectRow(6);
    const QString shown = "A,IDS_TADIALOGS-TECHDATA_TIME,'=C\n2024/03/11,00:00,6.000\n";
    Export([&](QDialog& dialog) {
        Choose(dialog, "formCombo", "IDS_TADIALOGS-TECHDATA_FORM_SPREADSHEET");
        EXPECT_FALSE(Find<QWidget>(dialog, "codePageCombo").isEnabled());
        Choose(dialog, "decimalsCombo", "3");
        Find<QWidget>(dialog, "selectedCheckBox").setFocus();
        QTest::keyClick(&Find<QWidget>(dialog, "selectedCheckBox"), Qt::Key_Space);
        auto& columns = Find<QListWidget>(dialog, "columnsList");
        columns.setFocus();
        columns.setCurrentRow(1);
        QTest::keyClick(&columns, Qt::Key_Space);
        EXPECT_EQ(Preview(dialog), shown);
        Keep(dialog, " mine ");
        EXPECT_EQ(Find<QComboBox>(dialog, "profileCombo").currentText(), "mine");
        EXPECT_EQ(Preview(dialog), shown);
        viewer->vInsertOneData({19999, {9, 9}});  // selects its row
    });
    const std::string written =
        "\xEF\xBB\xBF"
        "A,IDS_TADIALOGS-TECHDATA_TIME,'=C\r\n2024/03/11,00:00,6.000\r\n";
    EXPECT_EQ(Out(), written);
    ExportProfile mine{"mine", ExportForm::Spreadsheet, {"A", "=C"}, true, 3, 0};
    EXPECT_EQ(profiles.profiles, std::vector{mine});
    // Another day, another table.
    headers = MakeHeaders({"A", "=C"});
    records = MakeRecords(2, 1);
    Refill();
    Fill();
    Export([&](QDialog& dialog) {
        Choose(dialog, "profileCombo", "mine");
        EXPECT_EQ(Preview(dialog), "A,'=C\n2024/03/05,0.000\n2024/03/06,1.000\n");
        auto& columns = Find<QListWidget>(dialog, "columnsList");
        columns.setFocus();
        for (const int row : {0, 1}) {
            columns.setCurrentRow(row);
            QTest::keyClick(&columns, Qt::Key_Space);
        }
        EXPECT_EQ(Preview(dialog), "") << "nothing is left to save";
        EXPECT_FALSE(Find<QWidget>(dialog, "okButton").isEnabled());
        QTest::keyClick(&columns, Qt::Key_Space);
    });
    EXPECT_EQ(Out(), "\xEF\xBB\xBF'=C\r\n0.000\r\n1.000\r\n");
}

TEST_F(TechDataProfiles, AreReplacedDeletedAndNamed) {
    const ExportProfile a{"a", ExportForm::Analysis, {}, false, -1, 0};
    const ExportProfile b{"b", ExportForm::CodePage, {"B"}, false, -1, 936};
    profiles.profiles = {a, b};
    OpenFull(1);
    Show(*viewer);
    Export(
        [&](QDialog& dialog) {
            EXPECT_EQ(Told([&] { Keep(dialog, "  "); }), "IDS_TADIALOGS-TECHDATA_NAME_EMPTY");
            Choose(dialog, "profileCombo", "b");
            EXPECT_EQ(Preview(dialog), "B\n0.00\n");
            prompts.ExpectYesNo(false);
            Keep(dialog, "a");
            EXPECT_EQ(profiles.profiles, (std::vector{a, b}));
            prompts.ExpectYesNo(true);
            Keep(dialog, "a");
            ExportProfile replaced = b;
            replaced.name = "a";
            EXPECT_EQ(profiles.profiles, (std::vector{replaced, b}));
            profiles.broken = true;
            EXPECT_EQ(Told([&] { Click(Find<QPushButton>(dialog, "deleteButton")); }),
                      "IDS_TADIALOGS-TECHDATA_PROFILES_UNWRITABLE");
            profiles.broken = false;
            Click(Find<QPushButton>(dialog, "deleteButton"));
            EXPECT_EQ(profiles.profiles, std::vector{b});
            EXPECT_EQ(Find<QComboBox>(dialog, "profileCombo").count(), 2);
            EXPECT_FALSE(Find<QWidget>(dialog, "deleteButton").isEnabled());
        },
        false);
    profiles.broken = true;
    const auto keepOver = [](QDialog& dialog) {
        Keep(dialog, "over those that are there");
        EXPECT_FALSE(Find<QWidget>(dialog, "deleteButton").isEnabled());
    };
    EXPECT_EQ(Told([&] { Export(keepOver, false); }), "IDS_TADIALOGS-TECHDATA_PROFILES_UNREADABLE");
    EXPECT_EQ(profiles.profiles, std::vector{b});
}

TEST_F(TechDataProfiles, AskBeforeCharactersOrRowsAreLost) {
    headers[1].name = text::FromUtf8("量");
    OpenFull(1);
    Show(*viewer);
    const auto choose = [&](QDialog& dialog) {
        Choose(dialog, "formCombo", "IDS_TADIALOGS-TECHDATA_FORM_CODE_PAGE");
        EXPECT_EQ(Note(dialog), "");
        Choose(dialog, "codePageCombo", "1252");
        EXPECT_EQ(Preview(dialog), "A,?\n2024/03/05,0.00\n");
        EXPECT_EQ(Note(dialog), "IDS_TADIALOGS-TECHDATA_LOST 量");
    };
    Export(
        [&](QDialog& dialog) {
            choose(dialog);
            prompts.ExpectYesNo(false);
            QTest::keyClick(&dialog, Qt::Key_Return);
            EXPECT_TRUE(dialog.isVisible());
        },
        false);
    prompts.ExpectYesNo(true);
    Export(choose);
    EXPECT_EQ(Out(), "A,?\r\n2024/03/05,0.00\r\n");
    // One line of headings and as many rows as fill the rest; then one more.
    viewer->hide();
    records.assign(kSpreadsheetLines - 1, {19787, {1}});
    Refill();
    List().viewport()->resize(700, QWIDGETSIZE_MAX);
    Fill();
    for (const char* note : {"", "IDS_TADIALOGS-TECHDATA_TOO_LONG 1048577 1048576"}) {
        Export(
            [&](QDialog& dialog) {
                Choose(dialog, "formCombo", "IDS_TADIALOGS-TECHDATA_FORM_SPREADSHEET");
                EXPECT_EQ(Note(dialog), note);
            },
            false);
        viewer->vInsertOneData({19788, {1}});
    }
}

TEST_F(TechDataProfiles, TheOwnerTakesTheWindowAwayMeanwhile) {
    OpenFull(1);
    Show(*viewer);
    driver.Expect([&](QWidget&) { viewer.reset(); });
    viewer->OnExport();
    EXPECT_EQ(viewer, nullptr);
    // While he reads why a name is refused, and why there are no profiles.
    for (const bool isBroken : {false, true}) {
        OpenFull(1);
        profiles.broken = isBroken;
        prompts.ExpectMessage();
        prompts.Meanwhile([&] { viewer.reset(); });
        if (!isBroken) {
            driver.Expect([&](QWidget& dialog) { Keep(static_cast<QDialog&>(dialog), " "); });
        }
        viewer->OnExport();
        EXPECT_EQ(viewer, nullptr);
    }
}

TEST_F(TechDataProfiles, RowsThatComeAgainMeanwhileAreNotWritten) {
    OpenFull(2);
    Show(*viewer);
    Write(Path("out.csv"), "old");
    Export([&](QDialog&) { Refill(); });
    EXPECT_EQ(prompts.Last().text, "IDS_TADIALOGS-TECHDATA_CHANGED");
    prompts.ExpectSaveFile(Path("out.csv"));
    // Which the button cannot while they come.
    EXPECT_EQ(Told([this] { viewer->OnCopy2csv(); }), "IDS_TADIALOGS-TECHDATA_CHANGED");
    EXPECT_EQ(Out(), "old");
}

}  // namespace
}  // namespace ta::test
