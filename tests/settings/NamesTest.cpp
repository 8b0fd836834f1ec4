// Study names, period labels and the views of layouts.

#include "platform/Text.h"
#include "tests/support/TestAccess.h"

#include <gtest/gtest.h>

namespace ta::test {
namespace {

class NamesTest : public SettingsFixture {
protected:
    void AddStudy(StudyType type, StudyCategory category, const char* name) {
        chartModule.studyInfos.emplace_back(type, category, name);
    }
};

TEST_F(NamesTest, StudyNamesInLegends) {
    AddStudy(31, StudyCategory::Oscillator, "能量潮");
    AddStudy(32, StudyCategory::Oscillator, "RSI");
    AddStudy(33, StudyCategory::TrendAndVolatility, "*star");
    AddStudy(34, StudyCategory::TrendAndVolatility, "-minus");
    CTaSettingHandle& repository = Repository();
    const CString obv = text::FromUtf8("能量潮");
    EXPECT_EQ(repository.StudyTypeToStudyName(31), obv);
    EXPECT_EQ(repository.StudyTypeToStudyName(99), "");
    const std::vector<std::pair<CString, StudyType>> names{
        {obv, 31},
        {"rsi", 0},
        {"RSI-14", 32},
        {"*(RSI-6,12)", 32},
        {"*MA5(RSI -6)-x", 32},
        {" \tRSI \r\n", 32},
        {"*( " + obv + " -5)", 31},
        {"*star", 33},
        {"*star-5", 33},
        {"-minus", 34},
        {"RSI(14)", 0},
        {"*(RSI)", 0},
        {"", 0},
    };
    for (const auto& [name, type] : names) {
        EXPECT_EQ(repository.StudyNameToStudyType(name), type) << text::ToUtf8(name);
    }
}

TEST_F(NamesTest, TheLowestCategoryAnswersFirst) {
    AddStudy(40, StudyCategory::TrendAndVolatility, "late");
    AddStudy(40, StudyCategory::Volume, "early");
    AddStudy(41, StudyCategory::Oscillator, "same");
    AddStudy(42, StudyCategory::Price, "same");
    EXPECT_EQ(Repository().StudyTypeToStudyName(40), "early");
    EXPECT_EQ(Repository().StudyNameToStudyType("same"), 42);
    std::vector<StudyInfo*> studies;
    Repository().vGetStudyInfoVec(studies, 2);
    ASSERT_FALSE(studies.empty());
    EXPECT_EQ(studies.back()->GetStudyType(), 40);
    Repository().vGetStudyInfoVec(studies, 5);
    EXPECT_TRUE(studies.empty());
}

TEST_F(NamesTest, PeriodLabels) {
    for (const auto& [key, label] : std::map<CString, const char*>{{"DAILY", "日"},
                                                                   {"WEEKLY", "週"},
                                                                   {"MONTHLY", "%s月"},
                                                                   {"MINUTE", "分"},
                                                                   {"SECOND", "%d秒"}}) {
        quotes.language["IDS_DIALOG-SETHISTDATA_SHORT_" + key] = text::FromUtf8(label);
    }
    const std::vector<std::pair<int, const char*>> labels{
        {-1, ""}, {0, "日"}, {1, "週"}, {2, "%s月"}, {3, "15分"}, {4, "15%d秒"}, {5, ""}, {7, ""}};
    for (const auto& [code, label] : labels) {
        EXPECT_EQ(Repository().PackTADataTypeString(code, 15), text::FromUtf8(label)) << code;
    }
}

TEST_F(NamesTest, ViewsOfALayoutAreAppended) {
    memory.viewGroups[3] = {{"One###9###x", 1}, {"Two##", -2}};
    CTaSettingHandle& repository = Repository();
    store.TakeLines();
    std::vector<ST_TA_ViewGroupInfo> views{{"there", 0}};
    EXPECT_TRUE(repository.GetTAViewGroupSetting(3, views));
    EXPECT_FALSE(repository.GetTAViewGroupSetting(4, views));
    EXPECT_EQ(store.TakeLines(),
              (Lines{"GetTASettingReloadType()", "PackFile()", "GetTAViewGroupSetting(3)",
                     "GetTASettingReloadType()", "PackFile()", "GetTAViewGroupSetting(4)"}));
    ASSERT_EQ(views.size(), 3u);
    EXPECT_EQ(views[0].name, "there");
    EXPECT_EQ(views[1].name, "One");
    EXPECT_EQ(views[2].name, "Two##");
    EXPECT_EQ(views[2].value, -2);
    services.configStore = nullptr;
    HangIn();
    EXPECT_FALSE(repository.GetTAViewGroupSetting(3, views));
}

}  // namespace
}  // namespace ta::test
