// The chooser of the studies whose parameters are exported.

#include "dialogs/MXExportTAParameter.h"
#include "platform/Text.h"
#include "platform/ui/CheckList.h"
#include "platform/ui/TextBridge.h"
#include "tests/support/DialogFixture.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTest>

namespace ta::test {
namespace {

using Rows = std::vector<std::vector<CString>>;
using Names = std::vector<CString>;

class ExportParameterTest : public DialogFixture {
protected:
    static ui::CheckList& List(const MXExportTAParameter& dialog) {
        return Find<ui::CheckList>(dialog, "studyList");
    }
    static QString SelectText(const MXExportTAParameter& dialog) {
        return Find<QPushButton>(dialog, "selectButton").text();
    }
    static void ClickBox(const MXExportTAParameter& dialog, int row) {
        ui::CheckList& list = List(dialog);
        const QRect cell = list.visualRect(list.model()->index(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell.center());
    }
    static Names Status(const MXExportTAParameter& dialog) {
        Names names{"left over"};
        dialog.vGetCheckBoxStatus(names);
        return names;
    }

    const CString m_macd = text::FromUtf8("許功蓋");  // second bytes of "\"
    const Rows m_rows{
        {text::FromUtf8("均線"), "MA"}, {m_macd, "MACD", "surplus"}, {text::FromUtf8("量")}, {}};
};

TEST_F(ExportParameterTest, RowsCheckedInAnyOrderComeInTheOrderOfTheList) {
    Rows rows = m_rows;
    MXExportTAParameter dialog(rows);
    rows.clear();  // the dialog has its own
    Show(dialog);
    const ui::CheckList& list = List(dialog);
    ASSERT_EQ(list.rowCount(), 4);
    EXPECT_EQ(list.item(1, 1)->text(), "許功蓋");
    EXPECT_EQ(list.item(1, 2)->text(), "MACD");
    EXPECT_EQ(list.columnWidth(0), 20);
    EXPECT_EQ(list.columnWidth(1), 130);
    EXPECT_EQ(list.columnWidth(2), 130);
    EXPECT_TRUE(list.showGrid());
    EXPECT_EQ(list.horizontalHeaderItem(1)->text(), "IDS_DIALOG-EXPORTTA_CHINESE_NAME");
    EXPECT_EQ(list.horizontalHeaderItem(2)->text(), "IDS_DIALOG-EXPORTTA_ENG_NAME");
    EXPECT_EQ(dialog.windowTitle(), "IDS_DIALOG-EXPORTTA_TITLE");
    EXPECT_TRUE(list.CheckedRows().empty());
    ClickBox(dialog, 3);
    ClickBox(dialog, 1);
    Press(dialog, Qt::Key_Up);
    Press(dialog, Qt::Key_Space);
    EXPECT_EQ(Status(dialog), Names()) << "nothing before OK";
    Press(dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(Status(dialog), (Names{text::FromUtf8("均線"), m_macd, ""}));
}

TEST_F(ExportParameterTest, SelectAllChecksEveryRowAndThenNone) {
    MXExportTAParameter dialog(m_rows);
    Show(dialog);
    auto& select = Find<QPushButton>(dialog, "selectButton");
    const QString all = "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL";
    const QString none = "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL";
    ClickBox(dialog, 2);
    EXPECT_EQ(select.text(), all);
    Click(select);
    EXPECT_EQ(List(dialog).CheckedRows().size(), 4U) << "some are checked: all";
    EXPECT_EQ(select.text(), none);
    ClickBox(dialog, 0);
    EXPECT_EQ(select.text(), all) << "the text says what the next click does";
    ClickBox(dialog, 0);
    EXPECT_EQ(select.text(), none);
    Click(select);
    EXPECT_TRUE(List(dialog).CheckedRows().empty());
    EXPECT_EQ(select.text(), all);
    Click(select);
    Press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(Status(dialog), Names()) << "Cancel collects nothing";
}

TEST_F(ExportParameterTest, LongNamesAreNotCutAndNoRowsAreAnEmptyList) {
    const CString longName(60, 'W');
    MXExportTAParameter wide({{longName, "W"}});
    Show(wide);
    EXPECT_GT(List(wide).columnWidth(1), 300);
    EXPECT_EQ(List(wide).columnWidth(2), 130);

    MXExportTAParameter empty(Rows{});
    Show(empty);
    EXPECT_EQ(List(empty).rowCount(), 0);
    EXPECT_FALSE(Find<QPushButton>(empty, "selectButton").isEnabled());
    Click(empty, ui::kIdOk);
    EXPECT_EQ(empty.result(), QDialog::Accepted);
    EXPECT_EQ(Status(empty), Names());
}

}  // namespace
}  // namespace ta::test
