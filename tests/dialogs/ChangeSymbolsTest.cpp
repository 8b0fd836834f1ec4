// The compare-symbols dialog, driven by keys and clicks.

#include "dialogs/MXChangeSymbols.h"
#include "platform/SyncInfo.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/DialogFixture.h"
#include "tests/support/MemorySets.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <cmath>
#include <limits>
#include <new>

namespace ta::test {
namespace {

using Symbols = std::vector<MXChangeSymbols::Symbol>;

constexpr long kToday = 18428;  // 2020-06-15
constexpr double kBase = 18000;
constexpr const char* kLimit = "IDC_CHANGESYM-CHANGESYM_COMPARE_SYMBOL_LIMIT";
constexpr const char* kMinimum = "IDC_CHANGESYM-CHANGESYM_COMPARE_SYMBOL_MINIMUM";
constexpr const char* kFuture = "IDC_CHANGESYM-CHANGESYM_COMPARE_DATE_ERROR";

class ChangeSymbols : public DialogFixture {
protected:
    ChangeSymbols() {
        clock.now = kToday * 86400L + 4 * 3600;  // noon
        AddMarket(16, "Shares", {"9901", "9902", "9903"}, {"Alpha", "Beta", "Gamma"});
        AddMarket('m', "Futures", {}, {});
        AddMarket(3, "Two words", {"9901", "X1"}, {"other", "ex"});
        AddMarket(4, "Shares", {"Z"}, {"same market name"});
        quotes.commodities['m'] = {{"SXF"}, {"Index"}};
        quotes.symbols[{'m', "SXF"}] = {{"SXF1", "SXF2"}, {"near", "far"}};
        quotes.language = {{"IDS_DIALOG-SET-COMPARE-SYMBOLS_ADD", "&Add"},
                           {"IDS_DIALOG-SET-COMPARE-SYMBOLS_DELALL", "&X"},
                           {"IDS_DIALOG-SET-COMPARE-SYMBOLS_SETTING", "&Setting"},
                           {"IDS_TADIALOGS-COMPARE_SETS_KEEP", "&Keep"},
                           {"IDS_TADIALOGS-COMPARE_SETS_REMOVE", "Remove &D"},
                           {"IDS_TADIALOGS-HISTDATA_MONTHLY", "&Monthly"},
                           {"IDS_TADIALOGS-HISTDATA_READ", "&Read"}};
        UseSets(&sets);
    }
    ~ChangeSymbols() override { UseSets(nullptr); }

    static void UseSets(ComparisonSets* used) {
        Services services = CSyncInfo::GetSettingCFG().GetServices();
        services.comparisonSets = used;
        CSyncInfo::GetSettingCFG().SetServices(services);
    }
    void AddMarket(std::uint8_t id, const CString& name, const std::vector<CString>& ids,
                   const std::vector<CString>& names) {
        quotes.markets.emplace_back(id, name);
        quotes.dailyItems[{id, ""}] = {1};
        quotes.symbols[{id, ""}] = {ids, names};
        for (std::size_t i = 0; i < ids.size(); ++i) {
            quotes.itemData[{id, ids[i]}] = {
                {1018, {ids[i], 0}}, {1019, {names[i], 0}}, {2020, {names[i], 0}}};
        }
    }
    std::unique_ptr<MXChangeSymbols> Open(const Symbols& symbols, int limit = 5, unsigned mode = 2,
                                          double base = kBase) {
        auto dialog = std::make_unique<MXChangeSymbols>(
            symbols, limit, MXChangeSymbols::HisDataType{1, 5, 1, 100, 18000, 7}, mode, base);
        Show(*dialog);
        return dialog;
    }

    static QTreeView& Tree(const MXChangeSymbols& dialog) {
        return Find<QTreeView>(dialog, "symbolTree");
    }
    static QListWidget& List(const MXChangeSymbols& dialog) {
        return Find<QListWidget>(dialog, "chosenList");
    }
    /// The visible rows of the tree, "*" before the selected ones.
    static std::string Rows(const MXChangeSymbols& dialog) {
        const QTreeView& tree = Tree(dialog);
        std::string rows;
        for (QModelIndex index = tree.model()->index(0, 0); index.isValid();
             index = tree.indexBelow(index)) {
            rows += (rows.empty() ? "" : "|") +
                    std::string(tree.selectionModel()->isSelected(index) ? "*" : "") +
                    index.data().toString().toStdString();
        }
        return rows;
    }
    static QModelIndex Row(const MXChangeSymbols& dialog, const QString& text) {
        const QAbstractItemModel& model = *Tree(dialog).model();
        const auto found = model.match(model.index(0, 0), Qt::DisplayRole, text, 1,
                                       Qt::MatchExactly | Qt::MatchRecursive);
        EXPECT_FALSE(found.empty()) << text.toStdString();
        return found.value(0);
    }
    static void Select(const MXChangeSymbols& dialog, const QStringList& texts) {
        Tree(dialog).clearSelection();
        for (const QString& text : texts) {
            Tree(dialog).selectionModel()->select(Row(dialog, text), QItemSelectionModel::Select);
        }
    }
    /// The chosen list, "*" before the selected row, checked against the sequence of symbols.
    static std::string Chosen(const MXChangeSymbols& dialog) {
        const QListWidget& list = List(dialog);
        std::string rows;
        EXPECT_EQ(static_cast<std::size_t>(list.count()), dialog.GetSymbols().size());
        for (int row = 0; row < list.count(); ++row) {
            const auto& symbol = dialog.GetSymbols()[static_cast<std::size_t>(row)];
            EXPECT_EQ(list.item(row)->text().toStdString(),
                      dialog.getSetSymbolString(symbol.market, symbol.code));
            rows += (row == 0 ? "" : "|") + std::string(list.item(row)->isSelected() ? "*" : "") +
                    std::to_string(symbol.market) + ":" + symbol.code;
        }
        return rows;
    }
    static void Button(MXChangeSymbols& dialog, const char* button) {
        Click(Find<QWidget>(dialog, button));
    }
    static void DoubleClick(QListWidget& list, int row) {
        const QPoint where = list.visualItemRect(list.item(row)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, where);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, where);
    }
    static bool IsEnabled(const MXChangeSymbols& dialog, const char* button) {
        return Find<QWidget>(dialog, button).isEnabled();
    }
    /// Presses OK; whether the dialog closed.
    static bool Ok(MXChangeSymbols& dialog) {
        Click(Find<QWidget>(dialog, "okButton"));
        return !dialog.isVisible();
    }

    /// What OK tells, and stays.
    QString Refused(MXChangeSymbols& dialog) {
        return Told([&] { EXPECT_FALSE(Ok(dialog)); });
    }

    MemorySets sets;
};

const Symbols kTwo{{16, "9901"}, {'m', "SXF1"}};

TEST_F(ChangeSymbols, TheModelKeepsTheRulesOfModels) {
    const auto dialog = Open(kTwo);
    const QAbstractItemModel& model = *Tree(*dialog).model();
    const QAbstractItemModelTester tester(Tree(*dialog).model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    dialog->vFillLeftTreeCtrl();
    const QModelIndex leaf = Row(*dialog, "SXF2 far");
    EXPECT_TRUE(leaf.flags().testFlag(Qt::ItemNeverHasChildren));
    EXPECT_FALSE(leaf.parent().flags().testFlag(Qt::ItemNeverHasChildren));
    EXPECT_EQ(leaf.parent().parent().data().toString(), "Futures");
    EXPECT_FALSE(model.index(9, 0).isValid() || model.index(0, 1).isValid());
}

TEST_F(ChangeSymbols, Opens) {
    const auto dialog = Open({{16, "9901"}, {16, "9901"}, {9, "GONE"}}, 2);
    EXPECT_EQ(Rows(*dialog), "Shares|Futures|Two words|Shares");
    EXPECT_EQ(Chosen(*dialog), "16:9901|16:9901|9:GONE");
    EXPECT_EQ(List(*dialog).item(0)->text(), "[Shares]9901 Alpha");
    EXPECT_EQ(List(*dialog).item(2)->text(), "GONE ???");
    EXPECT_EQ(Find<QLabel>(*dialog, "descriptionLabel").text(),
              "IDC_CHANGESYM-CHANGESYM_DATATYPEIDC_CHANGESYM-CHANGESYM_DATATYPE_WEEKLY"
              "IDC_CHANGESYM-CHANGESYM_REC_START_DATE2019/4/14");
    EXPECT_TRUE(IsEnabled(*dialog, "addButton")) << "though the limit is passed already";
    EXPECT_TRUE(Find<QLineEdit>(*dialog, "searchEdit").hasFocus());
    EXPECT_TRUE(Tree(*dialog).uniformRowHeights());
    EXPECT_EQ(dialog->marketNameToId("[Two words"), 3);
    EXPECT_EQ(dialog->cszMarketIDToName('m'), "[Futures]");
    CString symbol;
    CString name;
    EXPECT_TRUE(MXChangeSymbols::bGetSymbolItem(symbol, name, 3, "X1"));
    EXPECT_EQ(symbol + name, "X1ex");
}

TEST_F(ChangeSymbols, AnEmptyBackEnd) {
    quotes = MemoryQuotes();
    const auto dialog = Open({});
    EXPECT_EQ(Rows(*dialog), "");
    QTest::keyClicks(&Find<QLineEdit>(*dialog, "searchEdit"), "9");
    Press(*dialog, Qt::Key_F3);
    Button(*dialog, "addButton");
    Button(*dialog, "deleteButton");
    Button(*dialog, "deleteAllButton");
    EXPECT_EQ(Refused(*dialog), kMinimum);
}

TEST_F(ChangeSymbols, Adding) {
    const auto dialog = Open({{16, "9901"}}, 4);
    Select(*dialog, {"Shares"});
    Button(*dialog, "addButton");
    Select(*dialog, {"Futures", "SXF Index"});
    Button(*dialog, "addButton");
    EXPECT_EQ(Chosen(*dialog), "16:9901") << "markets and commodities are no symbols";
    EXPECT_FALSE(IsEnabled(*dialog, "moveUpButton"));
    Select(*dialog, {"9902 Beta", "9901 Alpha", "SXF1 near"});
    PressAlt(*dialog, Qt::Key_A);
    EXPECT_EQ(Chosen(*dialog), "16:9901|16:9902|109:SXF1") << "in the tree's order, none twice";
    EXPECT_TRUE(IsEnabled(*dialog, "moveUpButton") && IsEnabled(*dialog, "moveDownButton"));
    Tree(*dialog).expandAll();
    const QRect row = Tree(*dialog).visualRect(Row(*dialog, "X1 ex"));
    QTest::mouseClick(Tree(*dialog).viewport(), Qt::LeftButton, {}, row.center());
    QTest::mouseDClick(Tree(*dialog).viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(Chosen(*dialog), "16:9901|16:9902|109:SXF1|3:X1");
    EXPECT_FALSE(IsEnabled(*dialog, "addButton")) << "the limit";
    EXPECT_EQ(Told([&] {
                  QTest::mouseDClick(Tree(*dialog).viewport(), Qt::LeftButton, {}, row.center());
              }),
              kLimit);
    EXPECT_EQ(prompts.Last().title, "Terminal");
    EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Warning);
    EXPECT_EQ(dialog->GetSymbols().size(), 4U);
}

TEST_F(ChangeSymbols, TheLimit) {
    const auto dialog = Open({}, 2);
    Select(*dialog, {"9901 Alpha", "9902 Beta", "9903 Gamma", "X1 ex"});
    EXPECT_EQ(Told([&] { Button(*dialog, "addButton"); }), kLimit) << "once";
    EXPECT_EQ(Chosen(*dialog), "16:9901|16:9902");
    EXPECT_FALSE(IsEnabled(*dialog, "addButton"));
    List(*dialog).setCurrentRow(1);
    Button(*dialog, "deleteButton");
    EXPECT_TRUE(IsEnabled(*dialog, "addButton"));
}

TEST_F(ChangeSymbols, RemovingTakesTheRowsOwnEntry) {
    const auto dialog = Open({{16, "9901"}, {3, "9901"}, {16, "9901"}, {3, "X1"}});
    auto& list = List(*dialog);
    Button(*dialog, "deleteButton");
    Find<QWidget>(*dialog, "deleteAllButton").setFocus();
    Press(*dialog, Qt::Key_Tab);
    EXPECT_EQ(list.currentRow(), 0) << "Tab leads to a row and selects none";
    Press(*dialog, Qt::Key_Delete);
    Button(*dialog, "moveDownButton");
    EXPECT_EQ(Chosen(*dialog), "16:9901|3:9901|16:9901|3:X1") << "nothing is selected";
    list.setCurrentRow(2);
    list.setFocus();
    Press(*dialog, Qt::Key_Delete);
    EXPECT_EQ(Chosen(*dialog), "16:9901|3:9901|*3:X1");
    Button(*dialog, "deleteButton");
    EXPECT_EQ(Chosen(*dialog), "16:9901|*3:9901") << "the last one: the selection moves up";
    DoubleClick(list, 0);
    EXPECT_EQ(Chosen(*dialog), "*3:9901");
    EXPECT_FALSE(IsEnabled(*dialog, "moveUpButton"));
    PressAlt(*dialog, Qt::Key_X);
    EXPECT_EQ(Chosen(*dialog), "");
}

TEST_F(ChangeSymbols, Moving) {
    const auto dialog = Open({{16, "9901"}, {16, "9902"}, {16, "9903"}});
    auto& list = List(*dialog);
    const auto after = [&](const char* button, int row) {
        list.setCurrentRow(row);
        Button(*dialog, button);
        return Chosen(*dialog);
    };
    EXPECT_EQ(after("moveUpButton", 2), "16:9901|*16:9903|16:9902");
    EXPECT_EQ(after("moveDownButton", 0), "16:9903|*16:9901|16:9902");
    list.setFocus();
    Press(*dialog, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Chosen(*dialog), "16:9903|16:9902|*16:9901");
    const auto centre = [&](int row) { return list.visualItemRect(list.item(row)).center(); };
    DragMouse(*list.viewport(), centre(0), centre(2));
    EXPECT_EQ(Chosen(*dialog), "16:9902|16:9901|*16:9903");
    EXPECT_TRUE(Ok(*dialog));
    EXPECT_EQ(dialog->GetSymbols(), (Symbols{{16, "9902"}, {16, "9901"}, {16, "9903"}}));
}

TEST_F(ChangeSymbols, QuickSearch) {
    const auto dialog = Open(kTwo);
    auto& edit = Find<QLineEdit>(*dialog, "searchEdit");
    const std::string closed = "Shares|Futures|Two words|Shares";
    for (const auto& [typed, rows] : std::vector<std::pair<const char*, std::string>>{
             {"9902 b", "Shares|9901 Alpha|*9902 Beta|9903 Gamma|Futures|Two words|Shares"},
             {"q", closed},
             {"sxf2", "Shares|Futures|SXF Index|SXF1 near|*SXF2 far|Two words|Shares"}}) {
        Type(edit, typed);
        EXPECT_EQ(Rows(*dialog), rows) << typed;
    }
    Type(edit, "9");
    EXPECT_NE(Rows(*dialog), closed);
    Press(*dialog, Qt::Key_Backspace);
    EXPECT_EQ(Rows(*dialog), closed) << "an empty text";
    // What the box has found is selected and can be added; the arrows move on from it.
    Type(edit, "9902");
    Press(*dialog, Qt::Key_Down);
    EXPECT_TRUE(edit.hasFocus());
    PressAlt(*dialog, Qt::Key_A);
    EXPECT_EQ(Chosen(*dialog), "16:9901|109:SXF1|16:9903");
    edit.selectAll();
    edit.setFocus();
    QApplication::clipboard()->setText("sxf2");
    Press(*dialog, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Rows(*dialog),
              "Shares|9901 Alpha|9902 Beta|9903 Gamma|Futures|SXF Index|SXF1 near|"
              "*SXF2 far|Two words|Shares");
}

TEST_F(ChangeSymbols, TheRowBeforeTheMatchIsTheFirstOneInView) {
    std::vector<CString> ids;
    for (int i = 1000; i < 1900; ++i) {
        ids.push_back("L" + std::to_string(i));
    }
    AddMarket(7, "Long", ids, ids);
    const auto dialog = Open(kTwo);
    for (const auto& [typed, top] : std::vector<std::pair<const char*, const char*>>{
             {"L1500", "L1499 L1499"}, {"L1000", "Long"}}) {
        Type(Find<QLineEdit>(*dialog, "searchEdit"), typed);
        EXPECT_EQ(Tree(*dialog).indexAt({5, 2}).data().toString(), top);
    }
    Type(Find<QLineEdit>(*dialog, "searchEdit"), "none");
    EXPECT_EQ(Tree(*dialog).indexAt({5, 2}).data().toString(), "Shares");
}

TEST_F(ChangeSymbols, FindingAnywhere) {
    const auto dialog = Open(kTwo);
    auto& edit = Find<QLineEdit>(*dialog, "searchEdit");
    const auto found = [&](Qt::KeyboardModifiers modifiers = {}) {
        Press(*dialog, Qt::Key_F3, modifiers);
        return Tree(*dialog).currentIndex().data().toString().toStdString();
    };
    Type(edit, "a");
    EXPECT_EQ(found(), "9901 Alpha");
    EXPECT_EQ(found(), "9902 Beta");
    Tree(*dialog).setFocus();
    EXPECT_EQ(found(), "9903 Gamma") << "from the tree as well";
    EXPECT_EQ(found(Qt::ShiftModifier), "9902 Beta");
    EXPECT_EQ(Rows(*dialog).substr(0, 48), "Shares|9901 Alpha|*9902 Beta|9903 Gamma|Futures|");
    Type(edit, "nowhere");
    EXPECT_EQ(found(), "");
}

TEST_F(ChangeSymbols, PastedCodes) {
    const auto dialog = Open({}, 3);
    const auto paste = [&](const char* codes) {
        QApplication::clipboard()->setText(codes);
        return Told([&] { Press(*dialog, Qt::Key_V, Qt::ControlModifier); });
    };
    for (QWidget* where :
         {static_cast<QWidget*>(&List(*dialog)), static_cast<QWidget*>(&Tree(*dialog))}) {
        where->setFocus();
        EXPECT_EQ(paste("sxf2\t9902, 77\r\n9902;SXF"),
                  "IDS_TADIALOGS-COMPARE_CODES_NOT_FOUND 77, SXF");
        EXPECT_EQ(Chosen(*dialog), "109:SXF2|16:9902");
    }
    EXPECT_TRUE(
        paste("1 2 3 4 5 6 7 8 9 10 11 12 13 14")
            .endsWith("_NOT_FOUND IDS_TADIALOGS-COMPARE_CODES_MORE 1, 2, 3, 4, 5, 6, 7, 8, 9, "
                      "10, 11, 12 2"));
    EXPECT_EQ(paste("9901 9903 X1"), kLimit);
    EXPECT_EQ(Chosen(*dialog), "109:SXF2|16:9902|16:9901");
}

TEST_F(ChangeSymbols, RecentSymbols) {
    sets.recent = {{16, "9902"}, {9, "A&B"}};
    const auto dialog = Open(kTwo);
    QMenu& menu = *Find<QToolButton>(*dialog, "recentButton").menu();
    emit menu.aboutToShow();
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_EQ(menu.actions()[1]->text(), "A&&B ???");
    menu.actions()[0]->trigger();
    EXPECT_EQ(Chosen(*dialog), "16:9901|109:SXF1|16:9902");
    Select(*dialog, {"X1 ex"});
    Button(*dialog, "addButton");
    EXPECT_EQ(sets.recent, (Symbols{{3, "X1"}, {16, "9902"}, {9, "A&B"}}));
    sets.throwing = true;
    Select(*dialog, {"9903 Gamma"});
    prompts.ExpectMessage();
    Button(*dialog, "addButton");
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_EQ(Chosen(*dialog), "16:9901|109:SXF1|16:9902|3:X1|16:9903");
    EXPECT_FALSE(IsEnabled(*dialog, "addButton")) << "the limit";
}

TEST_F(ChangeSymbols, AThrowingBackEndIsNoneOfTheCallersBusiness) {
    const auto dialog = Open(kTwo);
    FailingQuotes failing(quotes);
    BKQuoteInterface::SetBKInterface(&failing);
    const auto shortOfMemory = [] { throw std::bad_alloc(); };
    for (const int call : {1, 2}) {
        failing.RunBefore("bGetItemDataByItemNo", call, shortOfMemory);
    }
    failing.RunBefore("bGetSymbolItemID", 1, shortOfMemory);
    CString text = "old";
    EXPECT_FALSE(MXChangeSymbols::bGetSymbolItem(text, text, 3, "X1"));
    EXPECT_EQ(text, "old");
    EXPECT_EQ(dialog->getSetSymbolString(3, "X1"), "");
    prompts.ExpectMessage();
    dialog->vFillLeftTreeCtrl();
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_EQ(Rows(*dialog), "Shares|Futures|Two words|Shares") << "the tree is as it was";
}

TEST_F(ChangeSymbols, RealMonthIds) {
    quotes.symbolIdIsRealMonth = true;
    quotes.symbolByTreeId["SXF1"] = "SXF202007";
    const auto dialog = Open({});
    Select(*dialog, {"SXF1 near", "SXF2 far"});
    Button(*dialog, "addButton");
    EXPECT_EQ(Chosen(*dialog), "109:SXF202007|109:SXF2");
}

TEST_F(ChangeSymbols, LongNames) {
    const CString id(126, 'i');
    AddMarket(7, "Long", {id + "\xA5\x5C", CString(100, 'M')}, {"x", "y"});
    const auto dialog = Open({{9, CString(200, 'M')}});
    EXPECT_GT(List(*dialog).horizontalScrollBar()->maximum(), 0) << "a row is reached to its end";
    Tree(*dialog).expandAll();
    const QModelIndex widest = Row(*dialog, QString(100, 'M') + " y");
    EXPECT_GE(Tree(*dialog).visualRect(widest).width(),
              Tree(*dialog).fontMetrics().horizontalAdvance(widest.data().toString()));
    Button(*dialog, "deleteAllButton");
    Type(Find<QLineEdit>(*dialog, "searchEdit"), "iii");
    Button(*dialog, "addButton");
    EXPECT_EQ(Chosen(*dialog), "7:" + id) << "no half a character";
}

struct BaseDateCase {
    unsigned mode;
    double base;
    const char* shown;  ///< "date time" of what is visible
    double result;
};

TEST_F(ChangeSymbols, BaseDates) {
    for (const BaseDateCase& c :
         std::vector<BaseDateCase>{{1, kBase + 0.75, "2019-04-14 18:00:00", kBase},
                                   {2, kBase + 0.75, "2019-04-14", kBase},
                                   {0, kBase, "", kBase},
                                   {1, 0.0, "", kToday},
                                   {2, std::numeric_limits<double>::quiet_NaN(), "", kToday},
                                   {2, 0.5, "1970-01-02", 1},
                                   {2, kToday, "2020-06-15", kToday}}) {
        SCOPED_TRACE(c.base);
        const auto dialog = Open(kTwo, 5, c.mode, c.base);
        std::string shown;
        for (const auto& [name, format] :
             {std::pair{"baseDate", "yyyy-MM-dd"}, {"baseTime", "HH:mm:ss"}}) {
            auto& picker = Find<QDateTimeEdit>(*dialog, name);
            shown += picker.isVisible() ? (shown.empty() ? "" : " ") +
                                              picker.dateTime().toString(format).toStdString()
                                        : "";
        }
        EXPECT_EQ(shown, c.shown);
        EXPECT_EQ(Find<QLabel>(*dialog, "baseDateLabel").isVisible(), !shown.empty());
        EXPECT_TRUE(Ok(*dialog));
        EXPECT_EQ(dialog->GetBaseDate(), c.result);
    }
}

TEST_F(ChangeSymbols, ABaseDateInTheFuture) {
    for (const double base : {kToday + 1.0, 1e9}) {
        const auto dialog = Open(kTwo, 5, 2, base);
        auto& picker = Find<QDateTimeEdit>(*dialog, "baseDate");
        EXPECT_EQ(Refused(*dialog), kFuture);
        EXPECT_EQ(picker.date(), QDate(2020, 6, 15));
        EXPECT_TRUE(picker.hasFocus());
        EXPECT_TRUE(Ok(*dialog));
        EXPECT_EQ(dialog->GetBaseDate(), kToday);
    }
    const auto dialog = Open(kTwo);
    auto& picker = Find<QDateTimeEdit>(*dialog, "baseDate");
    EXPECT_EQ(picker.minimumDate(), QDate(1970, 1, 2));
    EXPECT_EQ(picker.maximumDate(), QDate(2069, 12, 31));
    picker.setFocus();
    picker.setSelectedSection(QDateTimeEdit::YearSection);
    QTest::keyClicks(&picker, "20200616");
    EXPECT_EQ(Told([&] { Press(*dialog, Qt::Key_Enter); }), kFuture)
        << "a typed date counts without leaving the field";
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(ChangeSymbols, TheNumberOfSymbolsAtOk) {
    for (const auto& [symbols, limit, fault] :
         std::vector<std::tuple<Symbols, int, const char*>>{{{}, 5, kMinimum},
                                                            {{{16, "9901"}}, 5, kMinimum},
                                                            {{{16, "9901"}}, 0, kLimit},
                                                            {kTwo, 2, nullptr}}) {
        const auto dialog = Open(symbols, limit);
        Find<QDateTimeEdit>(*dialog, "baseDate").setDate({2020, 1, 2});
        if (fault != nullptr) {
            EXPECT_EQ(Refused(*dialog), fault);
        } else {
            EXPECT_TRUE(Ok(*dialog));
        }
        EXPECT_EQ(dialog->GetBaseDate(), 18263) << "changed also where the number is refused";
    }
}

TEST_F(ChangeSymbols, DataSetting) {
    const auto dialog = Open(kTwo);
    DialogDriver user;
    for (const bool ok : {false, true}) {
        user.Expect([&](QWidget& history) {
            EXPECT_TRUE(Find<QRadioButton>(history, "weeklyRadio").isChecked());
            EXPECT_TRUE(Find<QRadioButton>(history, "dailyRadio").isEnabled());
            PressAlt(history, Qt::Key_M);
            PressAlt(history, Qt::Key_R);
            Press(history, ok ? Qt::Key_Enter : Qt::Key_Escape);
        });
        Show(*dialog);
        PressAlt(*dialog, Qt::Key_S);
        const std::string description =
            Find<QLabel>(*dialog, "descriptionLabel").text().toStdString();
        EXPECT_EQ(description.find("MONTLY") != std::string::npos, ok) << description;
        EXPECT_EQ(description.find("READLAST") != std::string::npos, ok) << description;
    }
    EXPECT_TRUE(Ok(*dialog));
    EXPECT_EQ(dialog->GetHisDataType(), (MXChangeSymbols::HisDataType{2, 5, 0, 100, 18000, 7}));
}

class CompareSets : public ChangeSymbols {
protected:
    /// Opens the kept sets from the dialog and lets `action` end them.
    void InSets(MXChangeSymbols& dialog, const DialogDriver::Action& action) {
        DialogDriver user;
        user.Expect(action);
        Click(Find<QWidget>(dialog, "setsButton"));
    }
    static void Keep(QWidget& window, const char* name) {
        Type(Find<QLineEdit>(window, "nameEdit"), name);
        PressAlt(window, Qt::Key_K);
    }
};

TEST_F(CompareSets, WithoutTheServiceThereIsNoButton) {
    UseSets(nullptr);
    EXPECT_FALSE(Find<QWidget>(*Open(kTwo), "setsButton").isVisible());
}

TEST_F(CompareSets, KeptAndBroughtBack) {
    const auto dialog = Open(kTwo);
    InSets(*dialog, [](QWidget& window) {
        Keep(window, " mine ");
        Press(window, Qt::Key_Escape);
    });
    const ComparisonSet mine{kTwo, {1, 5, 1, 100, 18000, 7}, kBase};
    ASSERT_TRUE(sets.sets.contains("mine"));
    EXPECT_EQ(sets.sets["mine"], mine);
    sets.sets["other"] = {{{3, "X1"}}, {3, 15, 0, 60, 1, 9}, 17000.5};
    InSets(*dialog, [](QWidget& window) {
        Type(Find<QLineEdit>(window, "nameEdit"), "other");
        Press(window, Qt::Key_Enter);
    });
    EXPECT_EQ(Chosen(*dialog), "3:X1");
    EXPECT_EQ(dialog->GetHisDataType(), (MXChangeSymbols::HisDataType{3, 15, 0, 60, 1, 7}))
        << "all but the caller's flag";
    EXPECT_EQ(Find<QDateTimeEdit>(*dialog, "baseDate").date(), QDate(2016, 7, 18));
    InSets(*dialog, [](QWidget& window) {
        auto& list = Find<QListWidget>(window, "setList");
        DoubleClick(list, 0);
    });
    EXPECT_EQ(Chosen(*dialog), "16:9901|109:SXF1");
}

TEST_F(CompareSets, TheBaseDateComesBackWithTheSet) {
    sets.sets = {{"day", {kTwo, {}, 17000}}, {"none", {kTwo, {}, 0}}};
    const auto dialog = Open(kTwo, 5, 2, 0.0);
    const auto& picker = Find<QDateTimeEdit>(*dialog, "baseDate");
    EXPECT_FALSE(dialog->HasBaseDate());
    for (const char* name : {"day", "none", "day"}) {
        const bool has = name == CString("day");
        InSets(*dialog, [name](QWidget& window) {
            Type(Find<QLineEdit>(window, "nameEdit"), name);
            Press(window, Qt::Key_Enter);
        });
        EXPECT_EQ(picker.isVisible(), has);
        EXPECT_EQ(dialog->HasBaseDate(), has);
        EXPECT_EQ(picker.date(), has ? QDate(2016, 7, 18) : QDate(2020, 6, 15));
        InSets(*dialog, [&](QWidget& window) {
            Keep(window, "kept");
            Press(window, Qt::Key_Escape);
        });
        EXPECT_EQ(sets.sets["kept"].baseDate, has ? 17000 : 0);
        sets.sets.erase("kept");
    }
    EXPECT_TRUE(Ok(*dialog));
    EXPECT_EQ(dialog->GetBaseDate(), 17000);
}

TEST_F(CompareSets, NamesAndQuestions) {
    sets.sets["old"] = {};
    const auto dialog = Open(kTwo);
    InSets(*dialog, [this](QWidget& window) {
        const auto& remove = Find<QPushButton>(window, "removeButton");
        EXPECT_FALSE(remove.isEnabled());
        EXPECT_EQ(Told([&] { Keep(window, "  "); }), "IDS_TADIALOGS-COMPARE_SETS_NAMELESS");
        prompts.ExpectYesNo(false);
        Keep(window, "old");
        EXPECT_EQ(prompts.Last().text, "IDS_TADIALOGS-COMPARE_SETS_ASK_REPLACE old");
        EXPECT_EQ(sets.sets["old"], ComparisonSet());
        prompts.ExpectYesNo(true);
        Keep(window, "old");
        EXPECT_EQ(sets.sets["old"].symbols, kTwo);
        Type(Find<QLineEdit>(window, "nameEdit"), "new");
        EXPECT_FALSE(remove.isEnabled());
        Press(window, Qt::Key_Enter);
        EXPECT_TRUE(sets.sets.contains("new")) << "Enter on a new name keeps it";
        EXPECT_TRUE(window.isVisible());
        prompts.ExpectYesNo(false);
        PressAlt(window, Qt::Key_D);
        prompts.ExpectYesNo(true);
        PressAlt(window, Qt::Key_D);
        EXPECT_EQ(prompts.Last().text, "IDS_TADIALOGS-COMPARE_SETS_ASK_REMOVE new");
        prompts.ExpectMessage();
        Press(window, Qt::Key_Enter);
        EXPECT_EQ(prompts.Last().text, "IDS_TADIALOGS-COMPARE_SETS_NAMELESS");
        EXPECT_EQ(sets.Names(), std::vector<CString>{"old"}) << "what is removed stays so";
        Press(window, Qt::Key_Escape);
    });
}

TEST_F(CompareSets, FailuresAreTold) {
    sets.sets["old"] = {};
    sets.broken = true;
    const auto dialog = Open(kTwo);
    InSets(*dialog, [this](QWidget& window) {
        const QString prefix = "IDS_TADIALOGS-COMPARE_SETS_NOT_";
        EXPECT_EQ(Told([&] { Keep(window, "new"); }), prefix + "KEPT new");
        Type(Find<QLineEdit>(window, "nameEdit"), "old");
        EXPECT_EQ(Told([&] { Press(window, Qt::Key_Enter); }), prefix + "READ old");
        prompts.ExpectYesNo(true);
        EXPECT_EQ(Told([&] { PressAlt(window, Qt::Key_D); }), prefix + "REMOVED old");
        EXPECT_TRUE(window.isVisible());
        Press(window, Qt::Key_Escape);
    });
    EXPECT_EQ(Chosen(*dialog), "16:9901|109:SXF1");
}

TEST_F(ChangeSymbols, TextsFollowTheLanguage) {
    const auto dialog = Open(kTwo);
    quotes.markets[0].second = "Stocks";
    quotes.itemData[{16, "9901"}][1019] = quotes.itemData[{16, "9901"}][2020] = {"Uno", 0};
    Translate(*dialog, {{"IDS_DIALOG-SET-COMPARE-SYMBOLS_ADD", "Put in"},
                        {"IDC_CHANGESYM-CHANGESYM_DATATYPE", "Kind "}});
    EXPECT_EQ(Find<QPushButton>(*dialog, "addButton").text(), "Put in");
    EXPECT_EQ(Rows(*dialog), "Stocks|Futures|Two words|Shares");
    EXPECT_EQ(List(*dialog).item(0)->text(), "[Stocks]9901 Uno");
    EXPECT_TRUE(Find<QLabel>(*dialog, "descriptionLabel").text().startsWith("Kind "));
}

TEST_F(ChangeSymbols, EveryButtonHasAKeyOfItsOwnOrIsReachedByTab) {
    const auto dialog = Open(kTwo, 5, 1);
    std::set<QWidget*> reached;
    for (int i = 0; i < 30; ++i) {
        reached.insert(QApplication::focusWidget());
        Press(*dialog, Qt::Key_Tab);
    }
    for (const char* name :
         {"searchEdit", "recentButton", "symbolTree", "addButton", "deleteButton",
          "deleteAllButton", "chosenList", "moveUpButton", "moveDownButton", "settingButton",
          "baseDate", "baseTime", "setsButton", "okButton", "cancelButton"}) {
        EXPECT_TRUE(reached.contains(&Find<QWidget>(*dialog, name))) << name;
    }
}

}  // namespace
}  // namespace ta::test
