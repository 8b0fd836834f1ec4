// What every dialog stands on: the dialog base, the drag list, files, and the real file dialog.

#include "platform/ui/DialogBase.h"
#include "platform/ui/DragListBox.h"
#include "platform/ui/FileAccess.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/ScriptedPrompts.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>

#include <unistd.h>

namespace ta::test {
namespace {

class UiTest : public testing::Test {
protected:
    UiTest() {
        quotes.language["IDS_TADIALOGS-FILE_UNREADABLE"] = "%1 unreadable: %2";
        quotes.language["IDS_TADIALOGS-FILE_UNWRITABLE"] = "%1 unwritable: %2";
        quotes.language["IDS_TADIALOGS-FILE_TOO_LARGE"] = "larger than %1";
        BKQuoteInterface::SetBKInterface(&quotes);
    }
    ~UiTest() override { BKQuoteInterface::SetBKInterface(nullptr); }

    MemoryQuotes quotes;
};

// ---- DialogBase ----

class SmallDialog : public ui::DialogBase {
public:
    SmallDialog() {
        auto* layout = new QVBoxLayout(this);
        for (QWidget* child : std::initializer_list<QWidget*>{&edit, &ok, &cancel}) {
            layout->addWidget(child);
        }
        SetButtons(ok, cancel);
        Handle(&edit, &QLineEdit::textChanged, [this] { onText(); });
    }

    bool closesInInit = false;
    std::function<void()> onText = [] {};
    std::function<void()> onOk;
    QLineEdit edit;
    QPushButton ok;
    QPushButton cancel;

protected:
    bool OnInitDialog() override {
        if (closesInInit) {
            PostClose();
        }
        return true;
    }
    void OnOK() override {
        if (onOk) {
            onOk();
        }
        DialogBase::OnOK();
    }
};

TEST_F(UiTest, HowTheModalLoopEnds) {
    const auto run = [](const std::function<void(SmallDialog&)>& user) {
        SmallDialog dialog;
        QTimer::singleShot(0, &dialog, [&] { user(dialog); });
        return dialog.DoModal();
    };
    EXPECT_EQ(run([](auto& dialog) { QTest::keyClick(&dialog.edit, Qt::Key_Enter); }), 1);
    EXPECT_EQ(run([](auto& dialog) { QTest::mouseClick(&dialog.ok, Qt::LeftButton); }), 1);
    EXPECT_EQ(run([](auto& dialog) { QTest::keyClick(&dialog.edit, Qt::Key_Escape); }), 2);
    EXPECT_EQ(run([](auto& dialog) { QTest::mouseClick(&dialog.cancel, Qt::LeftButton); }), 2);
    EXPECT_EQ(run([](auto& dialog) { dialog.close(); }), 2);
    SmallDialog closing;
    closing.closesInInit = true;
    EXPECT_EQ(closing.DoModal(), 2);
}

TEST_F(UiTest, NoExceptionLeavesADialog) {
    ScriptedPrompts prompts;
    SmallDialog dialog;
    dialog.show();
    dialog.onText = [] { throw std::bad_alloc(); };
    dialog.onOk = [] { throw std::runtime_error("unexpected"); };
    prompts.ExpectMessage();
    QTest::keyClick(&dialog.edit, Qt::Key_A);
    EXPECT_EQ(prompts.Last().text, "IDS_TECHVIEW-STRING_MEMORY_ERR");
    prompts.ExpectMessage();
    QTest::mouseClick(&dialog.ok, Qt::LeftButton);
    EXPECT_TRUE(dialog.isVisible()) << "after an error the dialog stays";
}

// ---- DragListBox ----

class DragListTest : public testing::Test {
protected:
    DragListTest() {
        list.resize(120, 100);
        for (int i = 0; i < 20; ++i) {
            auto* item = new QListWidgetItem(QString::number(i), &list);
            item->setData(Qt::UserRole, i);
        }
        list.show();
    }

    QPoint Centre(int row) { return list.visualItemRect(list.item(row)).center(); }
    void Press(QPoint position) {
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, position);
    }
    void Move(QPoint position) {
        QMouseEvent move(QEvent::MouseMove, position, list.viewport()->mapToGlobal(position),
                         Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(list.viewport(), &move);
    }
    void Release(QPoint position) {
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, position);
    }
    int RowOf(int number) {
        for (int row = 0; row < list.count(); ++row) {
            if (list.item(row)->data(Qt::UserRole).toInt() == number) {
                return row;
            }
        }
        return -1;
    }

    ui::DragListBox list;
    QSignalSpy ended{&list, &ui::DragListBox::dragEnded};
};

TEST_F(DragListTest, ARowMovesWithItsDataAndOneSignalTellsOfIt) {
    Press(Centre(2));
    Move(Centre(2) + QPoint(0, 3));
    EXPECT_EQ(RowOf(2), 2) << "less than the distance that starts a drag";
    Move(Centre(0));
    EXPECT_EQ(RowOf(2), 0);
    EXPECT_EQ(ended.count(), 0);
    Release(Centre(0));
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(list.item(0)->text(), "2");
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_EQ(list.count(), 20);
    // There and back is no change; neither is a click.
    Press(Centre(0));
    Move(Centre(3));
    Move(Centre(0));
    Release(Centre(0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(1));
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(DragListTest, OverTheEdgesARowGoesOnAndTheListScrolls) {
    Press(Centre(0));
    for (int i = 0; i < 30; ++i) {
        Move({10, list.viewport()->height() + 5});
    }
    EXPECT_EQ(RowOf(0), 19);
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualItemRect(list.item(19))));
    for (int i = 0; i < 30; ++i) {
        Move({10, -5});
    }
    EXPECT_EQ(RowOf(0), 0);
    Release({10, -5});
    EXPECT_EQ(ended.count(), 0) << "it is where it was";
}

TEST_F(DragListTest, SwitchedOffItIsAPlainList) {
    Press(Centre(0));
    Move(Centre(2));
    list.SetDragEnabled(false);
    EXPECT_EQ(RowOf(0), 0) << "a drag under way is undone";
    Release(Centre(2));
    Press(Centre(1));
    Move(Centre(3));
    Release(Centre(3));
    EXPECT_EQ(RowOf(1), 1);
    EXPECT_EQ(ended.count(), 0);
}

// ---- Files ----

/// While one lives, the process has an ordinary user's rights, also when root runs it.
class OrdinaryUser {
public:
    OrdinaryUser() : m_isRoot(geteuid() == 0) {
        if (m_isRoot) {
            EXPECT_EQ(setresuid(kNobody, kNobody, 0), 0);
        }
    }
    ~OrdinaryUser() {
        if (m_isRoot) {
            EXPECT_EQ(setresuid(0, 0, 0), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool m_isRoot;
};

class FileTest : public UiTest {
protected:
    FileTest() {
        // An ordinary user may go into it, too.
        QFile(folder.path()).setPermissions(QFile::Permissions::fromInt(0x7055));
    }
    QString Read(const QString& file, std::size_t limit = ui::kMaxFileSize) {
        bytes = "before";
        return ui::ReadWholeFile(file, bytes, limit);
    }

    QTemporaryDir folder;
    const QString path = folder.filePath("file");
    std::string bytes;
};

TEST_F(FileTest, WhatIsWrittenIsRead) {
    const std::string large(300'000, 'x');
    for (const std::string& content : {std::string(), std::string("a\0\r\n\xFF", 5), large}) {
        EXPECT_EQ(ui::WriteWholeFile(path, content), "");
        EXPECT_EQ(Read(path), "");
        EXPECT_EQ(bytes, content);
    }
    EXPECT_EQ(Read(path, large.size()), "");
    EXPECT_EQ(Read(path, large.size() - 1), path + " unreadable: larger than 0");
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("file"));
}

TEST_F(FileTest, ALinkStaysALink) {
    EXPECT_EQ(ui::WriteWholeFile(path, "1"), "");
    const QString link = folder.filePath("link");
    ASSERT_TRUE(QFile::link(path, link));
    EXPECT_EQ(ui::WriteWholeFile(link, "2"), "");
    EXPECT_EQ(Read(path), "");
    EXPECT_EQ(bytes, "2");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

TEST_F(FileTest, FailuresHaveReasons) {
    EXPECT_EQ(Read(path), path + " unreadable: IDS_TADIALOGS-FILE_NOT_FOUND");
    EXPECT_EQ(Read(folder.path()), folder.path() + " unreadable: IDS_TADIALOGS-FILE_NOT_A_FILE");
    EXPECT_EQ(ui::WriteWholeFile(folder.path(), "1"),
              folder.path() + " unwritable: IDS_TADIALOGS-FILE_NOT_A_FILE");
    const QString gone = folder.filePath("gone/file");
    EXPECT_EQ(ui::WriteWholeFile(gone, "1"), gone + " unwritable: IDS_TADIALOGS-FILE_PATH_GONE");
    EXPECT_NE(ui::WriteWholeFile("", "1"), "");
    EXPECT_NE(Read(""), "");
}

TEST_F(FileTest, WithoutTheRight) {
    const QString secret = folder.filePath("secret");
    ASSERT_EQ(ui::WriteWholeFile(secret, "1"), "");
    ASSERT_TRUE(QFile::setPermissions(secret, {}));
    {
        const OrdinaryUser user;
        EXPECT_EQ(Read(secret), secret + " unreadable: IDS_TADIALOGS-FILE_NO_RIGHT");
        EXPECT_EQ(ui::WriteWholeFile("/new", "1"),
                  QString("/new unwritable: IDS_TADIALOGS-FILE_NO_RIGHT"));
        EXPECT_NE(ui::WriteWholeFile(secret, "2"), "");
    }
    QFile::setPermissions(secret, QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(Read(secret), "");
    EXPECT_EQ(bytes, "1");
}

// ---- The real file dialog ----

/// Asks for a file to write while `user` works on the dialogs that come, one after the other.
QString AskSave(const QString& start, std::initializer_list<std::function<void(QDialog&)>> users) {
    std::vector<std::function<void(QDialog&)>> waiting(users);
    std::size_t next = 0;
    QDialog* last = nullptr;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog != last && next < waiting.size()) {
            last = dialog;
            // Not from this timer, which stands still while the next dialog is up.
            QTimer::singleShot(0, dialog, [dialog, user = waiting[next++]] { user(*dialog); });
        }
    });
    timer.start(1);
    const QString path = ui::CurrentPrompts().SaveFile(nullptr, "title", start, "*.TASG");
    EXPECT_EQ(next, waiting.size()) << "not every dialog came";
    return path;
}

TEST_F(FileTest, TheSaveDialogAppendsTheSuffixAndAsksBeforeReplacing) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const auto type = [this](const char* name) {
        return [this, name](QDialog& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(edit, nullptr);
            edit->setText(folder.filePath(name));  // typed, it would bring up a list of files
            QTest::keyClick(edit, Qt::Key_Enter);
        };
    };
    const auto answer = [](QMessageBox::StandardButton button) {
        return [button](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr);
            box->button(button)->click();
        };
    };
    const auto escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    const QString start = folder.filePath("*.TASG");
    EXPECT_EQ(AskSave(start, {type("groups")}), folder.filePath("groups.TASG"));
    ASSERT_EQ(ui::WriteWholeFile(folder.filePath("groups.TASG"), "1"), "");
    EXPECT_EQ(AskSave(start, {type("groups"), answer(QMessageBox::Yes)}),
              folder.filePath("groups.TASG"));
    EXPECT_TRUE(AskSave(start, {type("groups"), answer(QMessageBox::No), escape}).isNull());
}

}  // namespace
}  // namespace ta::test
