// The group name dialog: what it shows in each of its modes, which names it takes, and what becomes
// of characters that cannot be stored.

#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "sheet/TAGroupEditDlg.h"
#include "tests/sheet/SheetFixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>

#include <functional>
#include <memory>

namespace ta::test {
namespace {

constexpr int kEdit = 20091;
constexpr int kCombo = 16276;

class GroupNameTest : public SheetFixture {
protected:
    GroupNameTest() {
        memory.names = Names{"Trend", text::FromUtf8("許功蓋"), "Volume"};
        Load();
    }

    /// In place of the one of before.
    void Open(int mode, const CString& name = {}) {
        dialog = std::make_unique<CTAGroupEditDlg>();
        dialog->SetMode(mode);
        dialog->SetName(name);
        Show(*dialog);
    }
    QLineEdit& Edit() { return *qobject_cast<QLineEdit*>(dialog->GetDlgItem(kEdit)); }
    QComboBox& Combo() { return *qobject_cast<QComboBox*>(dialog->GetDlgItem(kCombo)); }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) { Press(*dialog, key, modifiers); }
    void Enter(const QString& text) {
        Key(Qt::Key_A, Qt::ControlModifier);
        Key(Qt::Key_Delete);
        if (!text.isEmpty()) {
            TypeText(Edit(), text);
        }
        Key(Qt::Key_Return);
    }
    void ExpectAccepted(const CString& name) {
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Accepted);
        EXPECT_EQ(dialog->GetName(), name);
    }
    void ExpectFault(const QString& text) {
        EXPECT_EQ(Find<QLabel>(*dialog, "faultLabel").text(), text);
        EXPECT_EQ(Edit().accessibleDescription(), text);
    }
    /// The message of a refused name; the dialog stays open.
    QString Refusal(const std::function<void()>& enter) {
        const QString text = ToldBy(enter);
        EXPECT_TRUE(dialog->isVisible());
        return text;
    }

    std::unique_ptr<CTAGroupEditDlg> dialog;
};

TEST_F(GroupNameTest, WhatEachModeShows) {
    const struct {
        int mode;
        QString title, text;
        bool edit, combo;
    } cases[] = {
        {CTAGroupEditDlg::kAdd, "IDS_OPTIONAL-SHEET_GROUP_DIALOG_ADD_TITLE", "x", true, false},
        {CTAGroupEditDlg::kModify, "IDS_OPTIONAL-SHEET_GROUP_DIALOG_MODIFY_TITLE", "x", true,
         false},
        {CTAGroupEditDlg::kReplace, "IDS_TECHVIEW-STRING_GROUPSETTING_GROUP_CHK_REPLACE2", "",
         false, true},
        {-1, "群組編輯", "", true, false},  // the form's own title
    };
    for (const auto& each : cases) {
        Open(each.mode, "x");
        EXPECT_EQ(dialog->windowTitle(), each.title);
        EXPECT_EQ(Edit().text(), each.text);
        EXPECT_EQ(Edit().isVisible(), each.edit) << each.mode;
        EXPECT_EQ(Combo().isVisible(), each.combo) << each.mode;
        EXPECT_TRUE(each.text.isEmpty() || Edit().hasFocus());
    }
}

TEST_F(GroupNameTest, ModifyingStartsBehindTheNameWithNothingSelected) {
    // Longer than the box is wide.
    const QString name = QString("許功蓋").repeated(30);
    Open(CTAGroupEditDlg::kModify, ui::FromQString(name));
    EXPECT_EQ(Edit().cursorPosition(), 90);
    EXPECT_FALSE(Edit().hasSelectedText());
    EXPECT_TRUE(Edit().rect().intersects(
        Edit().inputMethodQuery(Qt::ImCursorRectangle).toRect().adjusted(0, 0, 1, 1)));
}

TEST_F(GroupNameTest, ReplacingPicksAnExistingGroup) {
    Open(CTAGroupEditDlg::kReplace, "not shown");
    EXPECT_TRUE(Combo().hasFocus());
    ASSERT_EQ(Combo().count(), 3);
    EXPECT_EQ(Combo().itemText(1), QString("許功蓋"));
    EXPECT_EQ(Combo().currentIndex(), 0);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    ExpectAccepted(text::FromUtf8("許功蓋"));
    Names none;
    Repository().SetGroupNameList(none);
    Open(CTAGroupEditDlg::kReplace);
    EXPECT_EQ(Combo().count(), 0);
    EXPECT_EQ(Refusal([this] { Key(Qt::Key_Return); }), "IDS_OPTIONAL-SHEET_MSG_MIN");
}

TEST_F(GroupNameTest, ANameHasOneToThirtyBytes) {
    const QString longest = QString("功").repeated(15);
    Open(CTAGroupEditDlg::kAdd);
    for (const QString& name :
         {QString(), QString(31, 'a'), QString("功").repeated(16), longest + 'a'}) {
        EXPECT_EQ(Refusal([&] { Enter(name); }),
                  name.isEmpty() ? "IDS_OPTIONAL-SHEET_MSG_MIN" : "IDS_OPTIONAL-SHEET_MSG_MAX");
    }
    EXPECT_EQ(dialog->GetName(), "");
    // The refused name is still there to be corrected.
    EXPECT_EQ(Edit().text(), longest + 'a');
    Key(Qt::Key_Backspace);
    Key(Qt::Key_Return);
    ExpectAccepted(ui::FromQString(longest));
    for (const QString& name : {QString(30, 'a'), QString("   "), QString(" x,\\[ ")}) {
        Open(CTAGroupEditDlg::kAdd);
        TypeText(Edit(), name);
        Click(*dialog->GetDlgItem(ui::kIdOk));
        ExpectAccepted(name.toStdString());  // neither trimmed nor changed
    }
}

TEST_F(GroupNameTest, WhatCannotBeStoredShowsAtOnceWithTheCaretBehindIt) {
    Open(CTAGroupEditDlg::kModify, "ab");
    Key(Qt::Key_Left);
    TypeText(Edit(), QString("😀"));
    EXPECT_EQ(Edit().text(), "a?b");
    ExpectFault("IDS_TADIALOGS-SHEET_NOT_IN_CODE_PAGE 😀");
    EXPECT_EQ(Edit().cursorPosition(), 2);
    // A zero-width joiner is no character that anybody sees.
    TypeText(Edit(), QString("功") + QChar(0x200D));
    ExpectFault("");  // gone with the next edit
    TypeText(Edit(), QString("한y"));
    ExpectFault("IDS_TADIALOGS-SHEET_NOT_IN_CODE_PAGE 한");
    EXPECT_EQ(Edit().text(), QString("a?功?yb"));
    EXPECT_EQ(Edit().cursorPosition(), 5);
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(Edit().text().contains(QString("한")));

    QGuiApplication::clipboard()->setText(QString("€🙂"));
    Key(Qt::Key_A, Qt::ControlModifier);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Edit().text(), QString("€?"));
    Key(Qt::Key_Return);
    ExpectAccepted(text::FromUtf8("€?"));
}

TEST_F(GroupNameTest, EscapeLeavesTheNameAsItWasAndThereIsNoCloseBox) {
    Open(CTAGroupEditDlg::kModify, "Trend");
    TypeText(Edit(), "x");
    EXPECT_FALSE(dialog->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(dialog->windowFlags().testFlag(Qt::WindowSystemMenuHint));
    EXPECT_FALSE(dialog->close());
    EXPECT_TRUE(dialog->isVisible());
    Key(Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(dialog->GetName(), "Trend");
}

}  // namespace
}  // namespace ta::test
