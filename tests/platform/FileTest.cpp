// Files as dialogs read and write them, and the real file dialog.

#include "platform/ui/FileAccess.h"
#include "tests/support/DialogFixture.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <functional>

#include <unistd.h>

namespace ta::test {
namespace {

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

class FileTest : public DialogFixture {
protected:
    FileTest() {
        quotes.language["IDS_TADIALOGS-FILE_UNREADABLE"] = "%1 unreadable: %2";
        quotes.language["IDS_TADIALOGS-FILE_UNWRITABLE"] = "%1 unwritable: %2";
        quotes.language["IDS_TADIALOGS-FILE_TOO_LARGE"] = "larger than %1";
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
QString AskSave(const QString& start, std::initializer_list<std::function<void(QDialog&)>> users,
                bool asksReplace = true) {
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
    const QString path = ui::CurrentPrompts().SaveFile(
        nullptr,
        {.title = "title", .name = start, .filter = "*.TASG *.txt", .asksReplace = asksReplace});
    EXPECT_EQ(next, waiting.size()) << "not every dialog came";
    return path;
}

TEST_F(FileTest, TheSaveDialogAppendsTheSuffixAndAsksBeforeReplacing) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    ui::SetPrompts(nullptr);
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
    EXPECT_EQ(AskSave(start, {type("groups")}, false), folder.filePath("groups.TASG"));
}

}  // namespace
}  // namespace ta::test
