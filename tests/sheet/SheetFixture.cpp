#include "tests/sheet/SheetFixture.h"

#include "platform/SyncInfo.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QMouseEvent>
#include <QTest>

#include <algorithm>

namespace ta::test {
namespace {

// The texts that carry arguments.
constexpr std::pair<const char*, const char*> kTexts[] = {
    {"IDS_OPTIONAL-SHEET_MSG_ITEM_EXIST", "<%s> exists"},
    {"IDS_TADIALOGS-SHEET_PANE", "pane %1"},
    {"IDS_TADIALOGS-SHEET_HIDDEN_PANE", "hidden %1"},
    {"IDS_TERMINAL-SHEET_UNKNOWN_STUDY", "study %1"},
};

void UseStore(SMXCfgIO2& store) {
    Services services = CSyncInfo::GetSettingCFG().GetServices();
    services.configStore = &store;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

void MoveMouse(QWidget& view, QPoint position) {
    QMouseEvent move(QEvent::MouseMove, position, view.mapToGlobal(position), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&view, &move);
}

}  // namespace

SheetFixture::SheetFixture() {
    for (const auto& [key, text] : kTexts) {
        quotes.language[key] = text;
    }
    UseStore(store);
}

SheetFixture::~SheetFixture() {
    UseStore(memory);
}

std::vector<std::string> SheetFixture::TakeWrites() {
    std::vector<std::string> lines = store.TakeLines();
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("Get") || line.starts_with("Load");
    });
    return lines;
}

void SheetFixture::OnDialog(DialogAction action) {
    m_driver.Expect([action = std::move(action)](QWidget& dialog) {
        action(dynamic_cast<ui::DialogBase&>(dialog));
    });
}

// ---- The user's hands ----

void SheetFixture::TypeText(QWidget& edit, const QString& text) {
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(&edit, &commit);
}

QStringList SheetFixture::Texts(const QListWidget& list) {
    QStringList texts;
    for (int row = 0; row < list.count(); ++row) {
        texts.append(list.item(row)->text());
    }
    return texts;
}

QStringList SheetFixture::Panes(const QTreeWidget& tree) {
    QStringList panes;
    for (int pane = 0; pane < tree.topLevelItemCount(); ++pane) {
        const QTreeWidgetItem& node = *tree.topLevelItem(pane);
        QStringList studies;
        for (int i = 0; i < node.childCount(); ++i) {
            studies.append(node.child(i)->text(0));
        }
        panes.append(node.text(0) + ": " + studies.join(", "));
    }
    return panes;
}

void SheetFixture::ClickStudy(QTreeWidget& tree, int pane, int study) {
    QTreeWidgetItem* node = tree.topLevelItem(pane);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      tree.visualItemRect(study < 0 ? node : node->child(study)).center());
}

void SheetFixture::ClickRow(QListWidget& list, int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(row)).center());
}

void SheetFixture::DragRow(QListWidget& list, int from, int to) {
    QWidget& view = *list.viewport();
    const auto centre = [&list](int row) { return list.visualItemRect(list.item(row)).center(); };
    const QPoint target = centre(to);
    QTest::mousePress(&view, Qt::LeftButton, {}, centre(from));
    MoveMouse(view, (centre(from) + target) / 2);
    MoveMouse(view, target);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, target);
}

}  // namespace ta::test
