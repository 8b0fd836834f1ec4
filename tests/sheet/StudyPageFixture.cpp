#include "tests/sheet/StudyPageFixture.h"

#include "platform/SyncInfo.h"
#include "terminal/studies/TerminalChartModule.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QTest>

namespace ta::test {

StudyPageFixture::StudyPageFixture() {
    // The process-wide repository may use it until the end.
    static auto& module = *new terminal::TerminalChartModule;
    UseModule(module);
    memory.names = Names{"Trend", "Swing"};
    memory.uniNums = {{0, 5}, {1, 3}};
    memory.showCounts = {{0, 3}, {1, 2}};
    Store(0,
          {{kCandles, kAverages, kUnknown}, {kVolume}, {kStochastic, kExponential}, {}, {kMacd}});
    Store(1, {{kCandles}, {kBands, kAverages}});
    Load();
}

void StudyPageFixture::UseModule(ChartModule& module) {
    Services services = CSyncInfo::GetSettingCFG().GetServices();
    services.chartModule = &module;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

void StudyPageFixture::Store(unsigned group, const StudyLists& lists) {
    for (std::size_t pane = 0; pane < lists.size(); ++pane) {
        memory.studyLists[{group, "StudyTypeLogKey0" + std::to_string(pane + 1)}] = lists[pane];
    }
}

TaDrawInfo& StudyPageFixture::DrawInfo(const CString& group) {
    return dynamic_cast<TaDrawInfo&>(*Repository().GetDrawInfo(group));
}

// ---- The sheet ----

void StudyPageFixture::Open(int pane, int study, const CString& group, int showCount,
                            unsigned firstPage) {
    m_sheet = std::make_unique<CTaSettingSheet>("caption", nullptr, firstPage, group, showCount,
                                                pane, study);
    Show(*m_sheet);
}

void StudyPageFixture::ShowGroup(const CString& group) {
    Sheet().SetActiveGroup(group);
    Page().OnSetActive();
}

Changes StudyPageFixture::Changed() {
    Changes changes;
    Sheet().GetChangeGroupList(changes);
    return changes;
}

void StudyPageFixture::AwaitPrompts() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return prompts.Waiting() == 0; }));
}

// ---- The tree ----

void StudyPageFixture::PressInTree(int key, Qt::KeyboardModifiers modifiers) {
    Tree().setFocus();
    Press(Sheet(), key, modifiers);
}

void StudyPageFixture::Drag(int pane, int study, int toPane, int toStudy, bool lower,
                            const std::function<void(QPoint)>& end) {
    QWidget& view = *Tree().viewport();
    QTreeWidgetItem* node = Tree().topLevelItem(toPane);
    const QRect target = Tree().visualItemRect(toStudy < 0 ? node : node->child(toStudy));
    const QPoint from = Tree().visualItemRect(Tree().topLevelItem(pane)->child(study)).center();
    const QPoint to(target.center().x(), lower ? target.bottom() - 1 : target.top() + 1);
    QTest::mousePress(&view, Qt::LeftButton, {}, from);
    for (const QPoint& position : {(from + to) / 2, to}) {
        QMouseEvent move(QEvent::MouseMove, position, view.mapToGlobal(position), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(&view, &move);
    }
    end(to);
}

void StudyPageFixture::Drop(int pane, int study, int toPane, int toStudy, bool lower) {
    Drag(pane, study, toPane, toStudy, lower,
         [this](QPoint at) { QTest::mouseRelease(Tree().viewport(), Qt::LeftButton, {}, at); });
}

void StudyPageFixture::Add(const QString& search) {
    OnDialog([search](ui::DialogBase& dialog) {
        TypeText(Find<QLineEdit>(dialog, "searchEdit"), search);
        Press(dialog, Qt::Key_Return);
    });
    PressInTree(Qt::Key_Insert);
    Sheet().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Sheet()));
}

// ---- The editor ----

void StudyPageFixture::Enter(const QString& name, const QString& text) {
    QAbstractSpinBox& field = Value(name);
    View().ensureWidgetVisible(&field);
    Click(field);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

QStringList StudyPageFixture::Faults() {
    static const QRegularExpression reason("_FAULT_|_RULE_");
    QStringList faults;
    for (const QLabel* label : View().findChildren<QLabel*>()) {
        if (label->isVisible() && label->text().contains(reason)) {
            faults.append(label->text());
        }
    }
    return faults;
}

}  // namespace ta::test
