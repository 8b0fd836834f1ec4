#pragma once

#include "tests/groupfile/GroupDialogFixture.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RecordingConfigStore.h"

#include <QListWidget>
#include <QTreeWidget>

#include <functional>
#include <string>
#include <vector>

namespace ta::test {

/// The fixture of the group dialogs, with a record of the calls to the store and with answers for
/// the modal dialogs that pages open.
class SheetFixture : public GroupDialogFixture {
protected:
    using DialogAction = std::function<void(ui::DialogBase&)>;

    SheetFixture();
    ~SheetFixture() override;

    /// The user in front of the next modal dialog; see DialogDriver.
    void OnDialog(DialogAction action);

    /// The calls to the store since the last time, without those that only ask.
    std::vector<std::string> TakeWrites();

    /// What an input method does: the text at the place of the selection or caret.
    static void TypeText(QWidget& edit, const QString& text);
    static QStringList Texts(const QListWidget& list);
    /// "pane 1: K線圖, 移動平均線" for each pane.
    static QStringList Panes(const QTreeWidget& tree);
    /// A study of a pane, or, with -1, the pane itself.
    static void ClickStudy(QTreeWidget& tree, int pane, int study);
    static void ClickRow(QListWidget& list, int row);
    static void DragRow(QListWidget& list, int from, int to);

    RecordingConfigStore store{memory};

private:
    DialogDriver m_driver;
};

}  // namespace ta::test
