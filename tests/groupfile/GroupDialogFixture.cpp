#include "tests/groupfile/GroupDialogFixture.h"

#include "platform/SyncInfo.h"
#include "tests/support/MemoryServices.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

namespace ta::test {
namespace {

/// What the process-wide repository uses until the end of the process.
struct Doubles {
    MemoryConfigStore memory;
    RecordingConfigStore store{memory};
    MemoryChartModule chartModule;
    MemoryEntitlement entitlement;
    MemoryQuotes quotes;
};

Doubles& Shared() {
    static Doubles& doubles = *new Doubles;
    return doubles;
}

// The texts that carry arguments.
constexpr std::pair<const char*, const char*> kTexts[] = {
    {"IDS_TADIALOGS-FILE_UNREADABLE", "%1 unreadable: %2"},
    {"IDS_TADIALOGS-FILE_UNWRITABLE", "%1 unwritable: %2"},
    {"IDS_TADIALOGS-FILE_TOO_LARGE", "larger than %1"},
    {"IDS_TADIALOGS-FILE_ASK_CREATE", "create %1?"},
    {"IDS_TADIALOGS-GROUPFILE_NOT_CARRIED", "not carried: %1"},
    {"IDS_TADIALOGS-FILE_WILDCARD", "no file: %1"},
    {"IDS_TADIALOGS-GROUPFILE_TOO_MANY_NAMES", "%1 listed, %2 read"},
    {"IDS_TADIALOGS-GROUPFILE_IMPORTED", "added %1, overwritten %2"},
    {"IDS_TADIALOGS-GROUPFILE_NOTHING_IMPORTED", "nothing imported"},
    {"IDS_TADIALOGS-GROUPFILE_FULL", "full at %1"},
    {"IDS_TADIALOGS-GROUPFILE_NOT_MERGED_AGAIN", "stays at %1"},
    {"IDS_TADIALOGS-GROUPFILE_LEFT_OUT", "%1 left out of %2"},
    {"IDS_TADIALOGS-GROUPFILE_LIST_SEPARATOR", ";"},
    {"IDS_TADIALOGS-GROUPFILE_SHOW_COUNT", "shows %1"},
    {"IDS_TADIALOGS-GROUPFILE_PANE", "pane %1: %2"},
    {"IDS_TADIALOGS-GROUPFILE_HIDDEN_PANE", "hidden %1: %2"},
    {"IDS_TADIALOGS-GROUPFILE_NO_STUDY", "none"},
    {"IDS_TADIALOGS-GROUPFILE_UNKNOWN_STUDY", "study %1"},
    {"IDS_TADIALOGS-GROUPFILE_NEW", "new"},
    {"IDS_TADIALOGS-GROUPFILE_SAME", "same"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT", "other %1"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_COUNT", "count %1>%2"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_PANE", "pane %1"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_PARAMS", "params"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_SHAPES", "shapes"},
    {"IDS_TADIALOGS-GROUPFILE_DIFFERENT_LAYOUT", "layout"},
};

}  // namespace

GroupDialogFixture::GroupDialogFixture()
    : memory(Shared().memory), store(Shared().store), quotes(Shared().quotes) {
    memory = MemoryConfigStore();
    store.Reset();
    store.TakeLines();
    quotes.language.clear();
    for (const auto& [key, text] : kTexts) {
        quotes.language[key] = text;
    }
    Services services;
    services.configStore = &store;
    services.chartModule = &Shared().chartModule;
    services.entitlement = &Shared().entitlement;
    services.messageBoxTitle = "Terminal";
    CSyncInfo::GetSettingCFG().SetServices(services);
    BKQuoteInterface::SetBKInterface(&quotes);
}

GroupDialogFixture::~GroupDialogFixture() {
    BKQuoteInterface::SetBKInterface(nullptr);
}

CTaSettingHandle& GroupDialogFixture::Load() {
    memory.reloadFlag = true;
    Repository().ReloadTASetting();
    return Repository();
}

StudyLists GroupDialogFixture::Studies(const CString& name) {
    StudyLists lists;
    Repository().GetStudyListByGroupName(name, lists);
    for (auto& pane : lists) {
        std::erase(pane, kNoStudy);
    }
    while (!lists.empty() && lists.back().empty()) {
        lists.pop_back();
    }
    return lists;
}

Names GroupDialogFixture::Params(const CString& name) {
    Names params;
    Repository().GetStudyParamSettingByGroupName(name, params);
    return params;
}

void GroupDialogFixture::Write(const QString& path, const std::string& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())),
              static_cast<qint64>(bytes.size()));
}

std::string GroupDialogFixture::Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
}

void GroupDialogFixture::Show(ta::ui::DialogBase& dialog) {
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
}

void GroupDialogFixture::ExpectTexts(const QWidget& dialog,
                                     const std::vector<std::pair<QString, QString>>& texts) {
    for (const auto& [place, key] : texts) {
        const QString name = place.section('.', 0, 0);
        const QWidget* control =
            dialog.objectName() == name ? &dialog : dialog.findChild<QWidget*>(name);
        ASSERT_NE(control, nullptr) << place.toStdString();
        const QByteArray property = place.section('.', 1).toLatin1();
        EXPECT_EQ(control->property(property).toString(), "IDS_" + key);
    }
}

void GroupDialogFixture::Click(QWidget& control) {
    QTest::mouseClick(&control, Qt::LeftButton, {}, {12, control.height() / 2});
}

void GroupDialogFixture::Press(ta::ui::DialogBase& dialog, int key,
                               Qt::KeyboardModifiers modifiers) {
    QWidget* const focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &dialog, static_cast<Qt::Key>(key), modifiers);
}

}  // namespace ta::test
