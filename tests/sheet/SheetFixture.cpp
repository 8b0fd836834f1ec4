#include "tests/sheet/SheetFixture.h"

#include "platform/SyncInfo.h"
#include "platform/Text.h"
#include "terminal/studies/TerminalChartModule.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

namespace ta::test {
namespace {

// The texts that carry arguments.
constexpr std::pair<const char*, const char*> kTexts[] = {
    {"IDS_OPTIONAL-SHEET_MSG_ITEM_EXIST", "<%s> exists"},
    {"IDS_TADIALOGS-SHEET_PANE", "pane %1"},
    {"IDS_TADIALOGS-SHEET_HIDDEN_PANE", "hidden %1"},
    {"IDS_TADIALOGS-SHEET_CHANGE", "%1: %2 to %3"},
    {"IDS_TADIALOGS-SHEET_SHAPE_CHANGE", "%1 %2"},
};

}  // namespace

SheetFixture::SheetFixture() {
    for (const auto& [key, text] : kTexts) {
        quotes.language[key] = text;
    }
    // The process-wide repository may use it until the end.
    static auto& module = *new terminal::TerminalChartModule;
    UseModule(module);
    StoreAtFirst();
    Load();
}

SheetFixture::~SheetFixture() {
    m_sheet.reset();
}

void SheetFixture::StoreAtFirst() {
    memory = MemoryConfigStore();
    memory.names = Names{"Trend", "Swing", text::FromUtf8("許功蓋")};
    memory.uniNums = {{0, 5}, {1, 3}, {2, 8}};
    memory.showCounts = {{0, 3}, {1, 2}, {2, 1}};
    Store(0,
          {{kCandles, kAverages, kUnknown}, {kVolume}, {kStochastic, kExponential}, {}, {kMacd}});
    Store(1, {{kCandles}, {kBands, kAverages}});
    Store(2, {{kMacd}});
}

void SheetFixture::UseModule(ChartModule& module) {
    Services services = CSyncInfo::GetSettingCFG().GetServices();
    services.chartModule = &module;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

void SheetFixture::Store(unsigned group, const StudyLists& lists) {
    std::erase_if(memory.studyLists,
                  [group](const auto& each) { return each.first.first == group; });
    for (std::size_t pane = 0; pane < lists.size(); ++pane) {
        memory.studyLists[{group, "StudyTypeLogKey0" + std::to_string(pane + 1)}] = lists[pane];
    }
}

TaDrawInfo& SheetFixture::DrawInfo(const CString& group) {
    return dynamic_cast<TaDrawInfo&>(*Repository().GetDrawInfo(group));
}

Lines SheetFixture::TakeWrites() {
    Lines lines = store.TakeLines();
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("Get") || line.starts_with("Load");
    });
    return lines;
}

// ---- The sheet ----

void SheetFixture::Open(unsigned page, int pane, int study, const CString& group, int showCount) {
    m_sheet =
        std::make_unique<CTaSettingSheet>("caption", nullptr, page, group, showCount, pane, study);
    Show(*m_sheet);
    TakeWrites();
}

void SheetFixture::OpenWith(const StudyLists& lists, int pane, int study) {
    Store(0, lists);
    Load();
    Open(kStudies, pane, study);
}

void SheetFixture::Turn(unsigned page) {
    ASSERT_TRUE(Sheet().SetActivePage(static_cast<int>(page)));
    QCoreApplication::processEvents();
}

void SheetFixture::Activate() {
    Sheet().activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &Sheet(); }));
}

void SheetFixture::PressKey(int key, Qt::KeyboardModifiers modifiers) {
    Activate();
    Press(Sheet(), key, modifiers);
}

void SheetFixture::End(int button) {
    Activate();
    Click(*Sheet().GetDlgItem(button));
}

void SheetFixture::TabTo(QWidget& control) {
    constexpr int kMostStops = 60;
    for (int i = 0; i < kMostStops && !control.hasFocus(); ++i) {
        PressKey(Qt::Key_Tab);
    }
    EXPECT_TRUE(control.hasFocus()) << "cannot be reached";
}

Changes SheetFixture::Changed() {
    Changes changes;
    EXPECT_EQ(Sheet().GetChangeGroupList(changes), 0);
    return changes;
}

void SheetFixture::AwaitPrompts() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return prompts.Waiting() == 0; }));
}

void SheetFixture::ReloadAndGoOn() {
    prompts.ExpectChoice(0);
    Load();
    AwaitPrompts();
}

void SheetFixture::OnDialog(DialogAction action) {
    m_driver.Expect([action = std::move(action)](QWidget& dialog) {
        action(dynamic_cast<ui::DialogBase&>(dialog));
    });
}

// ---- The group page ----

void SheetFixture::EnterName(const QString& preset, const QString& name) {
    OnDialog([preset, name](ui::DialogBase& dialog) {
        auto& edit = Find<QLineEdit>(dialog, "nameEdit");
        EXPECT_EQ(edit.text(), preset);
        Press(dialog, Qt::Key_A, Qt::ControlModifier);
        TypeText(edit, name);
        Press(dialog, Qt::Key_Return);
    });
}

void SheetFixture::AddGroup(const QString& name) {
    EnterName("", name);
    ClickButton("addButton");
}

void SheetFixture::RenameGroup(const QString& name) {
    EnterName(SelectedGroup(), name);
    ClickButton("modifyButton");
}

void SheetFixture::ExpectGroupFile(const CString& name) {
    Write(Path("in.TASG"), "[Common]\r\nFileVersion=TAS Ver3.0\r\nGroupList=" + name + "\r\n[" +
                               name + "]\r\nStudyType01=23\r\nStudyShowCount=1\r\n");
    prompts.ExpectFile(Path("in.TASG"));
}

void SheetFixture::ImportGroup(const CString& name) {
    ExpectGroupFile(name);
    OnDialog([](ui::DialogBase& dialog) { Press(dialog, Qt::Key_Return); });
    prompts.ExpectMessage();
    ClickButton("importButton");
}

// ---- The tree ----

QStringList SheetFixture::Panes() {
    QStringList panes;
    for (int pane = 0; pane < Tree().topLevelItemCount(); ++pane) {
        const QTreeWidgetItem& node = *Tree().topLevelItem(pane);
        QStringList studies;
        for (int i = 0; i < node.childCount(); ++i) {
            studies.append(node.child(i)->text(0));
        }
        panes.append(node.text(0) + ": " + studies.join(", "));
    }
    return panes;
}

void SheetFixture::ClickStudy(int pane, int study) {
    QTreeWidgetItem* node = Tree().topLevelItem(pane);
    QTreeWidgetItem* item = study < 0 ? node : node->child(study);
    Tree().scrollToItem(item);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualItemRect(item).center());
}

void SheetFixture::PressInTree(int key, Qt::KeyboardModifiers modifiers) {
    Tree().setFocus();
    PressKey(key, modifiers);
}

void SheetFixture::Drop(int pane, int study, int toPane, int toStudy, bool lower,
                        const std::function<void()>& atEnd) {
    QTreeWidgetItem* node = Tree().topLevelItem(toPane);
    const QRect target = Tree().visualItemRect(toStudy < 0 ? node : node->child(toStudy));
    const QPoint from = Tree().visualItemRect(Tree().topLevelItem(pane)->child(study)).center();
    const QPoint to(target.center().x(), lower ? target.bottom() - 1 : target.top() + 1);
    DragMouse(*Tree().viewport(), from, to, atEnd);
}

// ---- The study page ----

void SheetFixture::AddStudy(const QString& search) {
    OnDialog([search](ui::DialogBase& dialog) {
        TypeText(Find<QLineEdit>(dialog, "searchEdit"), search);
        Press(dialog, Qt::Key_Return);
    });
    PressInTree(Qt::Key_Insert);
    Activate();
}

void SheetFixture::Enter(const QString& name, const QString& text) {
    QAbstractSpinBox& field = Value(name);
    View().ensureWidgetVisible(&field);
    Click(field);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

QStringList SheetFixture::Faults() {
    static const QRegularExpression reason("_FAULT_|_RULE_");
    QStringList faults;
    for (const QLabel* label : View().findChildren<QLabel*>()) {
        if (label->isVisible() && label->text().contains(reason)) {
            faults.append(label->text());
        }
    }
    return faults;
}

// ---- The user's hands ----

void SheetFixture::TypeText(QWidget& edit, const QString& text) {
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(&edit, &commit);
}

void SheetFixture::ClickRow(QListWidget& list, int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(row)).center());
}

void SheetFixture::DragRow(QListWidget& list, int from, int to) {
    const auto centre = [&list](int row) { return list.visualItemRect(list.item(row)).center(); };
    DragMouse(*list.viewport(), centre(from), centre(to));
}

}  // namespace ta::test
