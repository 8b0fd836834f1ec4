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
#include <QPushButton>
#include <QTest>

namespace ta::test {
namespace {

using ui::PromptIcon;

constexpr int kLabel = 20090;
constexpr int kEdit = 20091;
constexpr int kCombo = 16276;

class GroupNameTest : public SheetFixture {
protected:
    GroupNameTest() {
        memory.names = Names{"Trend", text::FromUtf8("許功蓋"), "Volume"};
        Load();
    }

    void Open(int mode, const CString& name = {}) {
        dialog.SetMode(mode);
        dialog.SetName(name);
        Show(dialog);
    }
    QLineEdit& Edit() { return *qobject_cast<QLineEdit*>(dialog.GetDlgItem(kEdit)); }
    QComboBox& Combo() { return *qobject_cast<QComboBox*>(dialog.GetDlgItem(kCombo)); }
    QString TextOf(int id) {
        const auto* button = qobject_cast<QPushButton*>(dialog.GetDlgItem(id));
        const auto* label = qobject_cast<QLabel*>(dialog.GetDlgItem(id));
        return button != nullptr ? button->text() : label->text();
    }
    void Enter(const QString& text) {
        Press(dialog, Qt::Key_A, Qt::ControlModifier);
        Press(dialog, Qt::Key_Delete);
        if (!text.isEmpty()) {
            TypeText(Edit(), text);
        }
        Press(dialog, Qt::Key_Return);
    }
    bool IsAccepted() { return !dialog.isVisible() && dialog.result() == QDialog::Accepted; }
    QString Fault() { return Find<QLabel>(dialog, "faultLabel").text(); }
    /// The message of a refused name; the dialog stays open.
    QString Refusal(const QString& text) {
        prompts.ExpectMessage();
        Enter(text);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(prompts.Last().icon, PromptIcon::Warning);
        EXPECT_EQ(prompts.Last().title, "Terminal");
        return prompts.Last().text;
    }

    CTAGroupEditDlg dialog;
};

TEST_F(GroupNameTest, AddingStartsWithAnEmptyBox) {
    Open(CTAGroupEditDlg::kAdd);
    EXPECT_EQ(dialog.windowTitle(), "IDS_OPTIONAL-SHEET_GROUP_DIALOG_ADD_TITLE");
    EXPECT_EQ(TextOf(kLabel), "IDS_OPTIONAL-SHEET_GROUP_DIALOG_ADD_STATIC");
    EXPECT_EQ(TextOf(ui::kIdOk), "IDS_SETTING-SHEET_OK");
    EXPECT_EQ(TextOf(ui::kIdCancel), "IDS_SETTING-SHEET_CANCEL");
    EXPECT_TRUE(Edit().isVisible() && Edit().hasFocus());
    EXPECT_FALSE(Combo().isVisible());
    EXPECT_EQ(Edit().text(), "");
}

TEST_F(GroupNameTest, ModifyingStartsBehindTheNameWithNothingSelected) {
    // Longer than the box is wide.
    const QString name = QString("許功蓋").repeated(30);
    Open(CTAGroupEditDlg::kModify, ui::FromQString(name));
    EXPECT_EQ(dialog.windowTitle(), "IDS_OPTIONAL-SHEET_GROUP_DIALOG_MODIFY_TITLE");
    EXPECT_EQ(Edit().text(), name);
    EXPECT_EQ(Edit().cursorPosition(), 90);
    EXPECT_FALSE(Edit().hasSelectedText());
    EXPECT_TRUE(Edit().rect().intersects(
        Edit().inputMethodQuery(Qt::ImCursorRectangle).toRect().adjusted(0, 0, 1, 1)));
}

TEST_F(GroupNameTest, ReplacingPicksAnExistingGroup) {
    Open(CTAGroupEditDlg::kReplace, "not shown");
    EXPECT_EQ(dialog.windowTitle(), "IDS_TECHVIEW-STRING_GROUPSETTING_GROUP_CHK_REPLACE2");
    EXPECT_FALSE(Edit().isVisible());
    EXPECT_TRUE(Combo().isVisible() && Combo().hasFocus());
    ASSERT_EQ(Combo().count(), 3);
    EXPECT_EQ(Combo().itemText(1), QString("許功蓋"));
    EXPECT_EQ(Combo().currentIndex(), 0);
    Press(dialog, Qt::Key_Down);
    Press(dialog, Qt::Key_Return);
    EXPECT_TRUE(IsAccepted());
    EXPECT_EQ(dialog.GetName(), text::FromUtf8("許功蓋"));
}

TEST_F(GroupNameTest, ReplacingWithoutGroupsHasNothingToPick) {
    Names none;
    Repository().SetGroupNameList(none);
    Open(CTAGroupEditDlg::kReplace);
    EXPECT_EQ(Combo().count(), 0);
    prompts.ExpectMessage();
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(prompts.Last().text, "IDS_OPTIONAL-SHEET_MSG_MIN");
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(GroupNameTest, AnyOtherModeKeepsTheFormsTitle) {
    for (const int mode : {-1, 3}) {
        CTAGroupEditDlg other;
        other.SetMode(mode);
        other.SetName("x");
        Show(other);
        EXPECT_EQ(other.windowTitle(), QString("群組編輯"));
        EXPECT_EQ(Find<QLineEdit>(other, "nameEdit").text(), "");
        EXPECT_NE(Find<QLineEdit>(other, "nameEdit").isVisible(),
                  Find<QComboBox>(other, "groupCombo").isVisible());
    }
}

TEST_F(GroupNameTest, ANameHasOneToThirtyBytes) {
    Open(CTAGroupEditDlg::kAdd);
    EXPECT_EQ(Refusal(""), "IDS_OPTIONAL-SHEET_MSG_MIN");
    EXPECT_EQ(Refusal(QString(31, 'a')), "IDS_OPTIONAL-SHEET_MSG_MAX");
    EXPECT_EQ(Refusal(QString("功").repeated(16)), "IDS_OPTIONAL-SHEET_MSG_MAX");
    EXPECT_EQ(Refusal(QString("功").repeated(15) + 'a'), "IDS_OPTIONAL-SHEET_MSG_MAX");
    EXPECT_EQ(dialog.GetName(), "");
    // The refused name is still there to be corrected.
    EXPECT_EQ(Edit().text(), QString("功").repeated(15) + 'a');
    Press(dialog, Qt::Key_Backspace);
    Press(dialog, Qt::Key_Return);
    EXPECT_TRUE(IsAccepted());
    EXPECT_EQ(dialog.GetName(), text::FromUtf8(std::string("功功功功功功功功功功功功功功功")));
    EXPECT_EQ(dialog.GetName().size(), 30U);
}

TEST_F(GroupNameTest, ThirtySingleBytesAndBlanksAreNames) {
    for (const QString& name : {QString(30, 'a'), QString("   "), QString(" x,\\[ ")}) {
        CTAGroupEditDlg other;
        Show(other);
        TypeText(Find<QLineEdit>(other, "nameEdit"), name);
        Click(*other.GetDlgItem(ui::kIdOk));
        EXPECT_EQ(other.result(), QDialog::Accepted);
        EXPECT_EQ(other.GetName(), name.toStdString()) << "neither trimmed nor changed";
    }
}

TEST_F(GroupNameTest, WhatCannotBeStoredShowsAtOnceWithTheCaretBehindIt) {
    Open(CTAGroupEditDlg::kModify, "ab");
    Press(dialog, Qt::Key_Left);
    TypeText(Edit(), QString("😀"));
    EXPECT_EQ(Edit().text(), "a?b");
    EXPECT_EQ(Fault(), "IDS_TADIALOGS-SHEET_NOT_IN_CODE_PAGE 😀");
    EXPECT_EQ(Edit().cursorPosition(), 2);
    // A zero-width joiner is no character that anybody sees.
    TypeText(Edit(), QString("功") + QChar(0x200D));
    EXPECT_EQ(Fault(), "") << "gone with the next edit";
    TypeText(Edit(), QString("한y"));
    EXPECT_EQ(Fault(), "IDS_TADIALOGS-SHEET_NOT_IN_CODE_PAGE 한");
    EXPECT_EQ(Edit().text(), QString("a?功?yb"));
    EXPECT_EQ(Edit().cursorPosition(), 5);
    Press(dialog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(Edit().text().contains(QString("한")));

    QGuiApplication::clipboard()->setText(QString("€🙂"));
    Press(dialog, Qt::Key_A, Qt::ControlModifier);
    Press(dialog, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Edit().text(), QString("€?"));
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.GetName(), text::FromUtf8("€?"));
}

TEST_F(GroupNameTest, CancelAndEscapeLeaveTheNameAsItWas) {
    Open(CTAGroupEditDlg::kModify, "Trend");
    TypeText(Edit(), "x");
    Click(*dialog.GetDlgItem(ui::kIdCancel));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(dialog.GetName(), "Trend");

    CTAGroupEditDlg other;
    other.SetName("Volume");
    Show(other);
    TypeText(Find<QLineEdit>(other, "nameEdit"), "x");
    Press(other, Qt::Key_Escape);
    EXPECT_EQ(other.result(), QDialog::Rejected);
    EXPECT_EQ(other.GetName(), "Volume");
}

TEST_F(GroupNameTest, ThereIsNoCloseBox) {
    Open(CTAGroupEditDlg::kAdd);
    EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowSystemMenuHint));
    EXPECT_FALSE(dialog.close());
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(GroupNameTest, RunAsAModalDialog) {
    dialog.SetName("Old");
    OnDialog([this](ui::DialogBase& shown) {
        EXPECT_EQ(&shown, &dialog);
        Enter("New");
    });
    EXPECT_EQ(dialog.DoModal(), ui::kIdOk);
    EXPECT_EQ(dialog.GetName(), "New");
}

}  // namespace
}  // namespace ta::test
