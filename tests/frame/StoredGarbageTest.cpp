// A whole terminal on a store full of values that no terminal writes: loaded, drawn, saved back,
// and the same again.

#include "tests/frame/FrameFixture.h"

#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLineStore.h"
#include "tests/support/DialogDriver.h"

#include <fmt/format.h>

#include <limits>
#include <map>
#include <numeric>

namespace ta::test {
namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kStudyTypes = 80;  // more than there are

/// Two that are equal, none at all, second bytes that look like \ ] | and letters, half a
/// character, line ends, and one that is very long.
std::vector<CString> Names() {
    return {
        "Twice",    "Twice",     "",         "\xA5\x5C\xA1\x5D\xA5\x7C", "abc", "ABC", "\xA4\x41",
        "\xA4\x61", "half \xA5", "a\nb\t&c", CString(3000, 'x')};
}

/// For every study, strings that are none of its values.
std::vector<CString> Strings(const CString& values) {
    std::vector<CString> strings{"", "=", "garbage", "\xA5\x5C=\xFF", "99999999999=1", "-1=5"};
    for (int type = 0; type < kStudyTypes; ++type) {
        strings.push_back(fmt::format("{}={}", type, values));
    }
    return strings;
}

std::vector<std::int32_t> StudiesFrom(int first, int count) {
    std::vector<std::int32_t> studies(static_cast<std::size_t>(count));
    std::iota(studies.begin(), studies.end(), first);
    return studies;
}

void StoreLists(SMXCfgIO2& store, unsigned group) {
    for (int pane = 1; pane <= kPaneCount; ++pane) {
        const std::vector<std::int32_t> lists[] = {
            StudiesFrom(8 * (pane - 1), 8),
            {},
            StudiesFrom(pane - 3, 9),
            std::vector<std::int32_t>(100'000, pane % 2 == 0 ? 16 : kMost - pane)};
        store.SaveTAGroupStudyList(group, fmt::format("StudyTypeLogKey{:02d}", pane),
                                   lists[group % 4]);
    }
}

void StoreGroups(SMXCfgIO2& store) {
    const int numbers[] = {3, 3, -7, kLeast, 0, 2'000'000'000, 3, kMost};
    const CString values[] = {"",
                              ",,,,",
                              "-5,0,1e400,nan",
                              "2000000000,2000000000,2000000000",
                              "GGGGGG:1:0:1,FF0000:99:99:9,:::,000000:-1:-1:-1",
                              CString(10'000, '9'),
                              "\xA5\x5C\xA1\x5D,\xFF\xFE:\x80"};
    const std::vector<CString> names = Names();
    store.SaveTAGroupNameList(names);
    for (unsigned group = 0; group < names.size(); ++group) {
        const int number = numbers[group % std::size(numbers)];
        const auto option = static_cast<std::uint32_t>(number);
        store.SaveTAGroupUniNum(group, number);
        store.SaveTAStudyShowCount(group, number);
        store.SaveTATechWndShowKey(group, number);
        store.SaveTASettingScalePos(group, option);
        store.SaveTASettingCursorLineLockMode(group, option);
        store.SaveTASettingCursorMoveStyle(group, option);
        store.SaveTAStudyParamSetting(group, Strings(values[group % std::size(values)]));
        store.SaveTAStudyShapeSetting(group, Strings(values[(group + 2) % std::size(values)]));
        StoreLists(store, group);
    }
}

const TrendLinesByType& StoredLines() {
    static const TrendLinesByType lines{
        {"", {"2004/2a7fff/1/0/0/17900,100/17950,110"}},
        {"02/SPX/0000/0/price",
         {"", "/", "2004", "2004/////", "2004/garbage/1/0/0/1,2/3,4", "99999999999/a/b/c/1/",
          "2021/2a7fff/1/0/0/1e7,1e15/-1e7,-1e15", "2004/2a7fff/5/4/1/0,0/0,0",
          "2009/2a7fff/1/0/0/17900,1e15/17901,-1e15",
          "2006/2a7fff/1/0/0/17900,100/17950,110/1,1e300",
          "2005/000000/1/0/0/17900,100/17900,110/17900,120", "2007/x/y/z/1/\xA5\x5C|]",
          CString(100'000, '/'), "2002/ffffff/1/0/0/17950,110", "2002/ffffff/1/0/0/17950,110"}},
        {"02/SPX/0099/-5/price", {"2004/2a7fff/1/0/0/17900,100/17950,110"}},
        {"\xA5\x5C/|/]", {"2002/ffffff/1/0/0/17950,110"}}};
    return lines;
}

void StoreTrendLines(SMXCfgIO2& store) {
    store.SaveTATrendLine(kTechViewClass, "02/SPX", StoredLines());
    store.SaveTATrendLineSymbolUpdTime(kTechViewClass, 2, "SPX", "yesterday\n");
    store.SaveTATrendLine(kTechViewClass, "no key", StoredLines());
    store.SaveTATrendLine("", "zz/", StoredLines());
    store.SaveTATrendLine("A-B\xA5\x5C", "02/SPX", StoredLines());
}

class StoredGarbage : public FrameTest {
protected:
    void SetUp() override {
        {
            terminal::SqliteStore store;
            ASSERT_EQ(store.Open(StorePath()).state, terminal::OpenResult::Created);
            StoreGroups(store);
            StoreTrendLines(store);
        }
        Start();
    }

    void TearDown() override {
        Repository().ReleaseTrendLine("-");  // of every class; a reload drops the charts' alone
        End();
    }

    /// Shows each group in turn. What its legends say, by name.
    std::map<CString, QStringList> DrawEveryGroup() {
        std::map<CString, QStringList> legends;
        for (const CString& name : GroupNames()) {
            Chart().SetGroup(name);
            EXPECT_EQ(Chart().GroupName(), name);
            Chart().ShowAll();
            const QImage picture = Chart().grab().toImage();
            EXPECT_EQ(picture.size(), Chart().size());
            EXPECT_GE(Chart().PaneCount(), 1) << name;
            EXPECT_LE(Chart().PaneCount(), kPaneCount) << name;
            legends[name] = Chart().LegendTexts();
        }
        return legends;
    }
    static TrendLinesByType LinesOf(const CString& key) {
        TrendLinesByType lines;
        Repository().GetAllTrendLineData(key, lines);
        return lines;
    }
};

TEST_F(StoredGarbage, IsDrawnSavedBackAndDrawnAgain) {
    const std::vector<CString> names = GroupNames();
    EXPECT_EQ(names, Names());
    const auto legends = DrawEveryGroup();
    EXPECT_EQ(legends.size(), names.size() - 1) << "One name is there twice.";
    Repository().SaveAllGroupSetting();
    End();
    Start();
    EXPECT_EQ(DrawEveryGroup(), legends);
    EXPECT_EQ(GroupNames(), names);

    for (const CString& name : names) {
        StudyLists lists;
        ASSERT_EQ(Repository().GetStudyListByGroupName(name, lists), 1);
        ASSERT_EQ(lists.size(), static_cast<std::size_t>(kPaneCount));
        for (const std::vector<StudyType>& pane : lists) {
            EXPECT_EQ(pane.size(), static_cast<std::size_t>(kSlotsPerPane));
        }
        EXPECT_GE(lists[0][0], 0) << name;
    }
    std::vector<CString> params;
    EXPECT_EQ(Repository().GetStudyParamSettingByGroupName("ABC", params), 1);
    EXPECT_EQ(params, Strings(CString(10'000, '9'))) << "Kept as it was.";
    EXPECT_EQ(Repository().GetStudyCountByGroupName("abc"), 0);
    EXPECT_EQ(Repository().GetStudyCountByGroupName("\xA4\x61"), kMost);
    Choose(terminal::Command::NewTab);
    EXPECT_EQ(Tabs().count(), 2);
}

TEST_F(StoredGarbage, LinesAreDrawnListedAndKept) {
    ASSERT_EQ(Chart().SymbolId(), "SPX");
    const int drawn = Chart().Drawings().LineCount();
    EXPECT_EQ(drawn, 6);
    Chart().ShowAll();
    Chart().grab();
    EXPECT_EQ(terminal::ListTrendLines().size(), 13u)
        << "One key is one; equal and empty lines go.";

    DialogDriver driver;
    driver.Expect([](QWidget& list) {
        list.grab();
        QTest::keyClick(&list, Qt::Key_Escape);
    });
    Choose(terminal::Command::ListLines);
    for (int i = 0; i < drawn; ++i) {
        Choose(terminal::Command::SelectLine);
        Chart().grab();
    }
    Repository().SaveAllGroupSetting();
    End();
    Start();
    EXPECT_EQ(Chart().Drawings().LineCount(), drawn);
    for (const CString& key :
         {kTechViewClass + CString("-02/SPX"), kTechViewClass + CString("-no key"),
          CString("A-B\xA5\x5C-02/SPX")}) {
        EXPECT_EQ(LinesOf(key), StoredLines()) << key;
    }
    Chart().grab();
}

}  // namespace
}  // namespace ta::test
