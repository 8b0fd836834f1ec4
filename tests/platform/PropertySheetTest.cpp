#include "platform/ui/PropertyPage.h"
#include "platform/ui/PropertySheet.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace ta::test {
namespace {

using ui::PropertyPage;
using ui::PropertySheet;

/// A page with an edit box that writes down what it is told, under its name.
class LoggingPage : public PropertyPage {
public:
    LoggingPage(const QString& name, QStringList& log) : m_name(name), m_log(log) {
        setWindowTitle(name);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&edit);
    }

    QLineEdit edit;
    bool maySave = true;
    bool mayLeave = true;
    bool staysOpen = false;

    void OnSetActive() override { Log("active"); }
    bool OnKillActive() override {
        Log("left");
        return mayLeave;
    }
    bool CanSave() override {
        Log(maySave ? "can save" : "cannot save");
        edit.setFocus();
        return maySave;
    }

protected:
    bool OnInitDialog() override {
        Log("init");
        return true;
    }
    void OnCancel() override {
        Log("cancel");
        if (staysOpen) {
            GetSheet()->StayOpen(*this);
        }
    }

private:
    void Log(const char* what) { m_log.append(m_name + ' ' + what); }

    QString m_name;
    QStringList& m_log;
};

class PropertySheetTest : public testing::Test {
protected:
    PropertySheetTest() {
        sheet.AddPage(first);
        sheet.AddPage(second);
    }
    ~PropertySheetTest() override {
        sheet.RemovePage(first);
        sheet.RemovePage(second);
    }

    void Show() {
        sheet.open();
        QApplication::setActiveWindow(&sheet);
    }
    QStringList TakeLog() { return std::exchange(log, {}); }
    QPushButton& Button(int id) { return static_cast<QPushButton&>(*sheet.GetDlgItem(id)); }

    QStringList log;
    LoggingPage first{"A", log};
    LoggingPage second{"B", log};
    PropertySheet sheet{"Sheet", nullptr, 0};
};

TEST_F(PropertySheetTest, FillsAPageWhenItFirstComesToTheFront) {
    Show();
    EXPECT_EQ(TakeLog(), QStringList({"A init", "A active"}));
    QTest::keyClick(&first.edit, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(TakeLog(), QStringList({"A left", "B init", "B active"}));
    QTest::keyClick(&Button(ui::kIdCancel), Qt::Key_Backtab,
                    Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(TakeLog(), QStringList({"B left", "A active"}));
    first.mayLeave = false;
    EXPECT_FALSE(sheet.SetActivePage(second));
    EXPECT_EQ(sheet.GetActiveIndex(), 0);
    EXPECT_EQ(TakeLog(), QStringList({"A left"}));
    EXPECT_FALSE(sheet.SetActivePage(7));
}

TEST_F(PropertySheetTest, BeginsWithThePageThatIsAskedFor) {
    PropertySheet other("Other", nullptr, 5);
    sheet.RemovePage(first);
    sheet.RemovePage(second);
    other.AddPage(first);
    other.AddPage(second);
    other.open();
    EXPECT_EQ(TakeLog(), QStringList({"B init", "B active"}));
    // The one in front goes; the other one comes to the front and is told.
    other.RemovePage(second);
    EXPECT_EQ(TakeLog(), QStringList({"A init", "A active"}));
    EXPECT_EQ(second.GetSheet(), nullptr);
    other.RemovePage(first);
    EXPECT_EQ(other.GetActivePage(), nullptr);
}

TEST_F(PropertySheetTest, StaysOpenForAPageThatWantsTo) {
    Show();
    second.maySave = false;
    first.staysOpen = true;
    sheet.SetActivePage(second);
    TakeLog();
    QTest::keyClick(&second.edit, Qt::Key_Escape);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_EQ(sheet.GetActivePage(), &first);
    EXPECT_EQ(TakeLog(), QStringList({"A cancel", "B left", "A active"}));
    first.staysOpen = false;
    QTest::keyClick(&first.edit, Qt::Key_Escape);
    EXPECT_EQ(TakeLog(), QStringList({"A cancel", "B cancel"}));
    EXPECT_FALSE(sheet.isVisible());
    EXPECT_EQ(sheet.result(), QDialog::Rejected);
    // Neither does OK close over a page that cannot be saved, which comes to the front.
    Show();
    first.edit.setFocus();
    QTest::keyClick(&first.edit, Qt::Key_Return);
    EXPECT_TRUE(sheet.isVisible());
    EXPECT_EQ(sheet.GetActivePage(), &second);
    EXPECT_EQ(QApplication::focusWidget(), &second.edit);
}

}  // namespace
}  // namespace ta::test
