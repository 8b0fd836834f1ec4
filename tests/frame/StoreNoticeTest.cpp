#include "terminal/lang/Language.h"
#include "terminal/store/OpenResult.h"
#include "tests/frame/FrameFixture.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

namespace ta::test {
namespace {

using terminal::Command;

/// What the terminal tells of its store and data at the start and at a save.
class StoreNotice : public FrameTest {
protected:
    void SetUp() override {}

    /// Starts and waits for `notices` messages.
    void StartWith(std::size_t notices) {
        for (std::size_t i = 0; i < notices; ++i) {
            m_prompts.ExpectMessage();
        }
        Start();
        ASSERT_TRUE(Await([this] { return m_prompts.Waiting() == 0; }));
    }
};

TEST_F(StoreNotice, TellsWhereADamagedStoreWent) {
    const QString path = WriteFile("settings.db", QString(5000, 'x'));
    StartWith(1);
    const QString text = m_prompts.Last().text;
    EXPECT_EQ(GroupsInRepository().size(), 1);
    // The damaged bytes are still there, under a name that the message gives.
    bool kept = false;
    for (const QString& name : QDir(m_folder.path()).entryList(QDir::Files)) {
        QFile file(FilePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        kept = kept || (file.readAll() == QByteArray(5000, 'x') && text.contains(name));
    }
    EXPECT_TRUE(kept) << text.toStdString();
}

TEST_F(StoreNotice, TellsOfMarketDataThatCannotBeRead) {
    m_options.dataFolder = FilePath("nowhere");
    StartWith(1);
    EXPECT_TRUE(m_prompts.Last().text.contains("nowhere"));
    EXPECT_EQ(Tabs().count(), 1);
    EXPECT_EQ(Chart().BarCount(), 0);
}

TEST_F(StoreNotice, TellsOfFailingSavesOnceForEachActionAndAsksBeforeExit) {
    Start();
    AddGroup("趨勢");
    End();
    sqlite3* file = nullptr;  // a newer program's from here on
    ASSERT_EQ(sqlite3_open(StorePath().toUtf8().constData(), &file), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(file, "PRAGMA user_version=99", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(file);
    StartWith(1);
    EXPECT_EQ(GroupsInRepository().size(), 2);
    const std::size_t before = m_prompts.All().size();
    // Two saves before the user can read a message are told in one.
    AddGroup("第三");
    Choose(Command::SaveSettings);
    m_prompts.ExpectMessage();
    ASSERT_TRUE(Await([this] { return m_prompts.Waiting() == 0; }));
    EXPECT_EQ(m_prompts.Last().icon, ui::PromptIcon::Warning);
    EXPECT_EQ(m_prompts.All().size(), before + 1);
    EXPECT_TRUE(GroupsInRepository().contains("第三"));
    // A later one is told again.
    Choose(Command::SaveSettings);
    m_prompts.ExpectMessage();
    ASSERT_TRUE(Await([this] { return m_prompts.Waiting() == 0; }));
    // The window stays when the user does not want to lose the changes.
    m_prompts.ExpectYesNo(false);
    EXPECT_FALSE(Window().close());
    EXPECT_TRUE(Window().isVisible());
    m_prompts.ExpectYesNo(true);
    EXPECT_TRUE(Window().close());
}

TEST_F(StoreNotice, EachFailureOfASaveHasItsOwnText) {
    using terminal::PackError;
    Start();
    const std::pair<PackError::Reason, const char*> texts[] = {
        {PackError::DiskFull, "磁碟空間不足"}, {PackError::CannotWrite, "權限"},
        {PackError::NewerVersion, "較新版本"}, {PackError::InUse, "其他程式"},
        {PackError::NotOpen, "未能開啟"},      {PackError::Replaced, "已損壞"},
        {PackError::Other, "（why）"},
    };
    for (const auto& [reason, words] : texts) {
        const QString text = terminal::PackErrorMessage({reason, "/a/b.db", "/a/old.db", "why"});
        EXPECT_TRUE(text.contains(words) && text.contains(QDir::toNativeSeparators("/a/b.db")) &&
                    text.contains(QDir::toNativeSeparators("/a/old.db")))
            << text.toStdString();
        const bool saysWhy = reason == PackError::NotOpen || reason == PackError::Other;
        EXPECT_EQ(text.contains("why"), saysWhy) << text.toStdString();
    }
}

}  // namespace
}  // namespace ta::test
