// The dialogs of the price cursor and of a line's style and width.

#include "dialogs/MXSetCursorLine.h"
#include "dialogs/MXSetPenStyleWidthDlg.h"
#include "platform/ui/PenSamples.h"
#include "tests/support/DialogFixture.h"

#include <QRadioButton>
#include <QTest>

namespace ta::test {
namespace {

/// Which radios of a row of ids are checked ("x"), and which of the others are disabled ("-").
QString Radios(const ui::DialogBase& dialog, std::initializer_list<int> ids) {
    QString states;
    for (const int id : ids) {
        const auto* radio = qobject_cast<QRadioButton*>(dialog.GetDlgItem(id));
        const bool checked = radio != nullptr && radio->isChecked();
        states += checked ? 'x' : radio != nullptr && radio->isEnabled() ? '.' : '-';
    }
    return states;
}

using LineDialogsTest = DialogFixture;

// ---- Price cursor ----

QString State(const MXSetCursorLine& dialog) {
    return Radios(dialog, {16195, 16037}) + ' ' + Radios(dialog, {16256, 16257}) + ' ' +
           Radios(dialog, {16036, 16185, 16187, 16189, 16191, 16194});
}

TEST_F(LineDialogsTest, TheCursorDialogShowsTheFields) {
    const struct {
        unsigned lock, display, move;
        const char* radios;
    } cases[] = {
        {0, 0, 0, "x. x. x....."}, {1, 1, 1, ".x .x .x...."},       {2, 2, 0, ".x x. ..x..."},
        {3, 0, 9, "x. .x ...x.."}, {4, 0, 0, "x. x. ....x."},       {5, 0, 0, "x. x. .....x"},
        {6, 0, 0, "x. x. x....."}, {~0U, ~0U, ~0U, ".x .x x....."},
    };
    for (const auto& each : cases) {
        MXSetCursorLine dialog(each.lock, each.display, each.move);
        Show(dialog);
        EXPECT_EQ(State(dialog), each.radios) << each.lock;
        Press(dialog, Qt::Key_Return);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(dialog.m_uLockStyle, each.lock) << "as it was passed";
        EXPECT_EQ(dialog.m_uDisplayStyle, each.display);
        EXPECT_EQ(dialog.m_uMoveStyle, each.move);
    }
}

TEST_F(LineDialogsTest, EachCursorRadioStoresItsValueAtOnce) {
    MXSetCursorLine dialog(5, 0, 1);
    Show(dialog);
    unsigned value = 0;
    for (const int id : {16036, 16185, 16187, 16189, 16191, 16194}) {
        Click(dialog, id);
        EXPECT_EQ(dialog.m_uLockStyle, value++);
    }
    Click(dialog, 16037);
    EXPECT_EQ(dialog.m_uDisplayStyle, 1U);
    Click(dialog, 16195);
    EXPECT_EQ(dialog.m_uDisplayStyle, 0U);
    Click(dialog, 16256);
    EXPECT_EQ(dialog.m_uMoveStyle, 0U);
    Press(dialog, Qt::Key_Down);
    EXPECT_EQ(dialog.m_uMoveStyle, 1U) << "with the keys";
    EXPECT_EQ(State(dialog), "x. .x .....x");
    Click(dialog, 16238);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST_F(LineDialogsTest, AClickOnTheRadioOfAnUnknownCursorValueStoresIt) {
    MXSetCursorLine dialog(6, 7, 9);
    Show(dialog);
    for (const int id : {16036, 16037, 16257}) {
        EXPECT_TRUE(Item<QAbstractButton>(dialog, id).isChecked());
        Click(dialog, id);
    }
    EXPECT_EQ(dialog.m_uLockStyle, 0U);
    EXPECT_EQ(dialog.m_uDisplayStyle, 1U);
    EXPECT_EQ(dialog.m_uMoveStyle, 1U);
}

// ---- Pen ----

QString State(const MXSetPenStyleWidthDlg& dialog) {
    return Radios(dialog, {16218, 16219, 16220, 16221, 16222}) + ' ' +
           Radios(dialog, {16231, 16232, 16233, 16234, 16235});
}

constexpr const char* kCursorTag = "IDS_TECHWND-CANVAS_COMMON_CURSORHEAD_OPEN";

TEST_F(LineDialogsTest, ThePenDialogOpensAndGivesBack) {
    const struct {
        int style, width;
        const char* tag;
        const char* radios;
        int okStyle, okWidth;
    } cases[] = {
        {0, 1, "", "x.... x....", 0, 1},         {4, 1, "", "....x x....", 4, 1},
        {2, 3, "", "x---- ..x..", 0, 3},         {7, 0, "", "x.... x....", 0, 1},
        {-1, 6, "", "x.... x....", 0, 1},        {3, 1, kCursorTag, "---x- x.---", 3, 1},
        {3, 2, kCursorTag, "---x- .x---", 3, 2}, {9, 5, kCursorTag, "x---- ..--x", 0, 5},
    };
    for (const auto& each : cases) {
        MXSetPenStyleWidthDlg dialog(each.style, each.width, each.tag);
        Show(dialog);
        EXPECT_EQ(State(dialog), each.radios) << each.style << ' ' << each.width;
        Click(dialog, ui::kIdOk);
        EXPECT_EQ(dialog.m_nStyle, each.okStyle);
        EXPECT_EQ(dialog.m_nWidth, each.okWidth);
    }
}

TEST_F(LineDialogsTest, OnlyThinLinesHaveStyles) {
    MXSetPenStyleWidthDlg dialog(2, 3, "");
    Show(dialog);
    EXPECT_EQ(Item<QAbstractButton>(dialog, 16219).accessibleName(),
              "IDS_TADIALOGS-SHEET_STYLE_DASH");
    EXPECT_EQ(Item<QAbstractButton>(dialog, 16235).accessibleName(),
              "IDS_DIALOG-SET-PENSTYLEWIDTH_WIDTH 5");
    Click(dialog, 16231);
    EXPECT_EQ(State(dialog), "x.... x....") << "the style stays solid";
    Click(Find<ui::PenSample>(dialog, "style3Sample"));
    EXPECT_EQ(State(dialog), "...x. x....");
    Press(dialog, Qt::Key_Up);
    EXPECT_EQ(State(dialog), "..x.. x....");
    Click(Find<ui::PenSample>(dialog, "width5Sample"));
    EXPECT_EQ(State(dialog), "x---- ....x");
    Click(Find<ui::PenSample>(dialog, "style3Sample"));
    EXPECT_EQ(State(dialog), "x---- ....x") << "its radio is disabled";
    Press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.m_nStyle, 2) << "only OK sets the fields";
    EXPECT_EQ(dialog.m_nWidth, 3);
}

TEST_F(LineDialogsTest, ACursorLineKeepsItsStyle) {
    MXSetPenStyleWidthDlg dialog(3, 1, kCursorTag);
    Show(dialog);
    Press(dialog, Qt::Key_Down);
    EXPECT_EQ(State(dialog), "---x- .x---") << "the keys begin at the width";
    Click(dialog, 16232);
    Click(dialog, 16233);
    Click(dialog, 16218);
    EXPECT_EQ(State(dialog), "---x- .x---");
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.m_nStyle, 3);
    EXPECT_EQ(dialog.m_nWidth, 2);
}

}  // namespace
}  // namespace ta::test
