#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"

#include <QDir>
#include <QFile>
#include <QStatusBar>

namespace ta::test {
namespace {

void Write(const QString& path, const QString& text) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(text.toUtf8());
}

/// Rows of rising and falling bars; `stamp` gives the date column of row i.
QString Prices(int rows, const std::function<QString(int)>& stamp) {
    QString text = "Date,Open,High,Low,Close,Volume\n";
    for (int i = 0; i < rows; ++i) {
        const int open = 100 + (i * 7) % 23;
        const int close = 100 + (i * 11) % 23;
        text += QString("%1,%2,%3,%4,%5,%6\n")
                    .arg(stamp(i))
                    .arg(open)
                    .arg(std::max(open, close) + 1)
                    .arg(std::min(open, close) - 1)
                    .arg(close)
                    .arg(1000 + i);
    }
    return text;
}

QString Day(int i) {
    return QDate(2019, 1, 1).addDays(i).toString(Qt::ISODate);
}

QString Minute(int i) {
    return QDateTime(QDate(2019, 1, 2), QTime(9, 0)).addSecs(60 * i).toString("yyyy-MM-dd HH:mm");
}

QString Month(int i) {
    return QDate(2010, 1, 31).addMonths(i).toString(Qt::ISODate);
}

void WriteSmallCatalogue(const QString& folder) {
    const QDir root(folder);
    ASSERT_TRUE(root.mkpath("prices/2") && root.mkpath("prices/16"));
    Write(root.filePath("markets.csv"),
          "id,chinese,english\n2,美國市場,US market\n16,模擬證券,Simulated shares\n");
    Write(root.filePath("commodities.csv"), "market,id,chinese,english\n");
    Write(root.filePath("contracts.csv"), "market,commodity,month,weekly\n");
    Write(root.filePath("symbols.csv"),
          "market,id,chinese,english,commodity,month,step,prices\n"
          "2,SPX,S&P 500 指數,S&P 500 index,,,0.01,daily\n"
          "2,AMZN,亞馬遜,Amazon,,,0.01,monthly\n"
          "16,9901,模擬電子,Simulated Electronics,,,0.5,daily+minute\n");
    Write(root.filePath("prices/2/SPX.daily.csv"), Prices(300, Day));
    Write(root.filePath("prices/2/AMZN.monthly.csv"), Prices(60, Month));
    Write(root.filePath("prices/16/9901.daily.csv"), Prices(90, Day));
    Write(root.filePath("prices/16/9901.minute.csv"), Prices(240, Minute));
}

}  // namespace

FrameTest::FrameTest() {
    WriteSmallCatalogue(m_folder.filePath("data"));
    m_options.configFile = StorePath();
    m_options.dataFolder = m_folder.filePath("data");
    m_options.userFolder = m_folder.filePath("own");
}

void FrameTest::Start() {
    m_session = std::make_unique<terminal::Session>(m_options);
    m_window = std::make_unique<terminal::MainWindow>(*m_session);
    m_window->show();
    m_window->activateWindow();
    ASSERT_TRUE(Await([this] { return m_window->isActiveWindow(); }));
}

void FrameTest::End() {
    if (m_window != nullptr) {
        m_window->close();
    }
    m_window.reset();
    m_session.reset();
}

QString FrameTest::Status() const {
    return m_window->statusBar()->currentMessage();
}

QStringList FrameTest::GroupsInBox() const {
    const QComboBox& box = ToolBar().Group();
    QStringList names;
    for (int i = 0; i < box.count(); ++i) {
        names.append(box.itemText(i));
    }
    return names;
}

QStringList FrameTest::GroupsInRepository() {
    QStringList names;
    for (const CString& group : GroupNames()) {
        names.append(ui::ToQString(group));
    }
    return names;
}

void FrameTest::AddGroup(const QString& name) {
    ASSERT_EQ(Repository().AddGroupSetting(ui::FromQString(name)), 1);
    Repository().SaveAllGroupSetting();
    Window().PollStore();
    ChooseGroup(name);
}

bool FrameTest::Await(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 5000);
}

QString FrameTest::WriteFile(const QString& name, const QString& text) const {
    const QString path = FilePath(name);
    Write(path, text);
    return path;
}

}  // namespace ta::test
