// Study names, period labels and layout names.

#include "platform/Text.h"
#include "tests/support/TestAccess.h"

#include <gtest/gtest.h>

namespace ta::test {
namespace {

class NamesTest : public SettingsFixture {
protected:
    void AddStudy(StudyType type, StudyCategory category, const char* name) {
        memoryChartModule.studyInfos.emplace_back(type, category, name);
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
        {"RSI", 32},
        {"RSI-14", 32},
        {"*(RSI-6,12)", 32},
        {"*MA5(RSI -6)-x", 32},
        {"*( " + obv + " -5)", 31},
        {"*star-5", 33},
        {"-minus", 34},
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
}

TEST_F(NamesTest, PeriodLabels) {
    quotes.language["IDS_DIALOG-SETHISTDATA_SHORT_MONTHLY"] = text::FromUtf8("%s月");
    quotes.language["IDS_DIALOG-SETHISTDATA_SHORT_SECOND"] = text::FromUtf8("%d秒");
    const std::vector<std::pair<int, const char*>> labels{
        {-1, ""}, {2, "%s月"}, {4, "15%d秒"}, {5, ""}};
    for (const auto& [code, label] : labels) {
        EXPECT_EQ(Repository().PackTADataTypeString(code, 15), text::FromUtf8(label)) << code;
    }
}

TEST_F(NamesTest, ViewsOfALayoutAreAppended) {
    const CString name = text::FromUtf8("功能");
    memory.viewGroups[3] = {{name + "###9", 1}, {"Two##1", -2}, {"a###b###c", 3}};
    CTaSettingHandle& repository = Repository();
    std::vector<ST_TA_ViewGroupInfo> views{{"there", 0}};
    EXPECT_TRUE(repository.GetTAViewGroupSetting(3, views));
    EXPECT_FALSE(repository.GetTAViewGroupSetting(4, views));
    ASSERT_EQ(views.size(), 4u);
    EXPECT_EQ(views[0].name, "there");
    EXPECT_EQ(views[1].name, name);
    EXPECT_EQ(views[2].name, "Two##1");
    EXPECT_EQ(views[2].value, -2);
    EXPECT_EQ(views[3].name, "a");
}

}  // namespace
}  // namespace ta::test
