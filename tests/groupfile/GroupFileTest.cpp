// The group file: its exact bytes, what comes back from it, and the merge rule.

#include "groupfile/GroupContents.h"
#include "groupfile/GroupFile.h"
#include "groupfile/GroupMerge.h"
#include "platform/DrawInfo.h"
#include "platform/Text.h"
#include "tests/support/TestAccess.h"

#include <gtest/gtest.h>

namespace ta::test {
namespace {

using namespace groupfile;

class GroupFileTest : public SettingsFixture {
protected:
    ProfileReader Export(const Names& names) {
        return ProfileReader(ExportGroups(Repository(), names));
    }
};

TEST_F(GroupFileTest, TheBytesOfAKnownRepository) {
    const CString name = text::FromUtf8("許功蓋");  // three second halves of 0x5C
    memory.names = {{name, "B", "Empty"}};
    memory.params[0] = {"0=1", "4=5,10", ""};
    memory.shapes[0] = {"s"};
    memory.showCounts = {{0, 3}, {1, 1}};
    memory.wndShowKeys = {{0, 13}, {1, -4}};
    memory.studyLists[{0, "StudyTypeLogKey01"}] = {0, 4, 7};
    memory.studyLists[{0, "StudyTypeLogKey10"}] = {2000000000};
    CTaSettingHandle& repository = Repository();
    repository.SetStudyListByGroupName("B", {{16}});
    EXPECT_EQ(ExportGroups(repository, {name, "B", "gone"}),
              "[Common]\r\n"
              "FileVersion=TAS Ver3.0\r\n"
              "GroupList=" +
                  name +
                  ",B,gone\r\n"
                  "[" +
                  name +
                  "]\r\n"
                  "StudyType01=0$4$7\r\nStudyType02=\r\nStudyType03=\r\nStudyType04=\r\n"
                  "StudyType05=\r\nStudyType06=\r\nStudyType07=\r\nStudyType08=\r\n"
                  "StudyType09=\r\nStudyType10=2000000000\r\n"
                  "ParamSetting=0=1$4=5,10$\r\n"
                  "ShapeSetting=s\r\n"
                  "StudyShowCount=3\r\nTechWndShowKey=13\r\n"
                  "[B]\r\n"
                  "StudyType01=16\r\nStudyType02=\r\nStudyType03=\r\nStudyType04=\r\n"
                  "StudyType05=\r\nStudyType06=\r\nStudyType07=\r\nStudyType08=\r\n"
                  "StudyType09=\r\nStudyType10=\r\n"
                  "ParamSetting=\r\n"
                  "ShapeSetting=\r\n"
                  "StudyShowCount=1\r\nTechWndShowKey=-4\r\n"
                  "[gone]\r\n"
                  "StudyShowCount=1\r\nTechWndShowKey=1\r\n");
}

TEST_F(GroupFileTest, TheVersionMustBeExact) {
    for (const char* right :
         {"[Common]\nFileVersion=TAS Ver3.0", "[COMMON]\rfileversion= TAS Ver3.0 ",
          "[common]\r\nFileVersion=\"TAS Ver3.0\"\r\n"}) {
        EXPECT_TRUE(CheckImportFile(ProfileReader(right))) << right;
    }
    for (const char* wrong : {"", "FileVersion=TAS Ver3.0", "[Common]\nFileVersion=TAS ver3.0",
                              "[Common]\nFileVersion=TAS Ver3.01", "[A]\nFileVersion=TAS Ver3.0"}) {
        EXPECT_FALSE(CheckImportFile(ProfileReader(wrong))) << wrong;
    }
}

TEST_F(GroupFileTest, Splitting) {
    const auto split = [](const char* text, const char* separator) {
        Names parts;
        const std::size_t count = SplitString(text, separator, parts);
        EXPECT_EQ(count, parts.size());
        return parts;
    };
    EXPECT_EQ(split("", ","), Names{""});
    EXPECT_EQ(split("a", ","), Names{"a"});
    EXPECT_EQ(split("a,,b,", ","), (Names{"a", "", "b", ""}));
    EXPECT_EQ(split("a--b-c", "--"), (Names{"a", "b-c"}));
    Names parts;
    EXPECT_EQ(SplitString("a,b,,c", ",", parts, 2), 4u) << "all are counted";
    EXPECT_EQ(parts, (Names{"a", "b"}));
    EXPECT_EQ(GetGroupNameListFromFile(ProfileReader("[Common]\nGroupList=a,,b"), parts), 3u);
    EXPECT_EQ(parts, (Names{"a", "", "b"}));
    EXPECT_EQ(GetGroupNameListFromFile(ProfileReader("[Common]\nGroupList="), parts), 0u);
    EXPECT_TRUE(parts.empty());
}

TEST_F(GroupFileTest, ValuesOfEveryLengthAroundTheStepsOfTheReader) {
    for (const std::size_t length : {0, 259, 260, 261, 520, 1 << 20}) {
        const CString value(length, 'x');
        const ProfileReader file("[s]\nk=" + value);
        EXPECT_EQ(GetPrivateProfileStringEx("s", "k", {}, file), value) << length;
    }
    EXPECT_EQ(GetPrivateProfileStringEx("s", "k", "none  ", ProfileReader("")), "none");
}

TEST_F(GroupFileTest, MissingAndMalformedValuesTakeTheirDefaults) {
    const ProfileReader file(
        "[A]\nStudyShowCount=3\nStudyType01=4$x$$7a\nStudyType03=\nStudyType05=9\nStudyType10="
        "8\nStudyType11=1\n"
        "[B]\nTechWndShowKey=6\nStudyShowCount=many\n[C]\nTechWndShowKey=-1\n");
    CTaSettingHandle& repository = Repository();
    for (const char* name : {"A", "B", "C", "Absent"}) {
        ImportGroupSetting(repository, name, file);
        EXPECT_EQ(repository.FindGroup(name), 1);
    }
    const GroupContents a = ContentsInRepository(repository, "A");
    EXPECT_EQ(a.showCount, 3);
    EXPECT_EQ(a.wndShowKey, 3) << "the count stands in for the key";
    EXPECT_EQ(a.params, Names{""});
    ASSERT_EQ(a.studyLists.size(), 10u);
    EXPECT_EQ(a.studyLists[0], (std::vector<StudyType>{4, 0, 0, 7, -1, -1, -1, -1}));
    EXPECT_EQ(a.studyLists[1].front(), 0) << "a shown pane without a value holds study 0";
    EXPECT_EQ(a.studyLists[2].front(), 0);
    EXPECT_EQ(a.studyLists[3].front(), kNoStudy) << "a pane that is not shown stays empty";
    EXPECT_EQ(a.studyLists[4].front(), 9);
    EXPECT_EQ(a.studyLists[9].front(), 8);
    const GroupContents b = ContentsInRepository(repository, "B");
    EXPECT_EQ(b.showCount, 0);
    EXPECT_EQ(b.wndShowKey, 6);
    EXPECT_EQ(ContentsInRepository(repository, "C").wndShowKey, 1);
    EXPECT_EQ(ContentsInRepository(repository, "Absent").showCount, 1);
}

TEST_F(GroupFileTest, ImportReplacesWithModeOne) {
    memory.names = {{"A"}};
    CTaSettingHandle& repository = Repository();
    ImportGroupSetting(repository, "A", ProfileReader("[a]\nParamSetting=x$y\nShapeSetting=z\n"));
    const auto* drawInfo = dynamic_cast<MemoryDrawInfo*>(repository.GetDrawInfo("A"));
    ASSERT_NE(drawInfo, nullptr);
    EXPECT_EQ(drawInfo->params, (Names{"x", "y"}));
    EXPECT_EQ(drawInfo->shapes, Names{"z"});
    EXPECT_EQ(drawInfo->paramModes.back(), kDrawInfoReplace);
    EXPECT_EQ(drawInfo->shapeModes.back(), kDrawInfoReplace);
    // Another party's commit does not take the group away half-loaded.
    store.RunBefore("SaveTAStudyShowCount", 2, [this] { memory.reloadFlag = true; });
    ImportGroupSetting(repository, "X", ProfileReader("[X]\nTechWndShowKey=9\n"));
    EXPECT_NE(repository.GetUniNumByGroupName("X"), -1);
    EXPECT_EQ(memory.wndShowKeys[1], 9);
    EXPECT_TRUE(memory.reloadFlag);
}

TEST_F(GroupFileTest, GroupsThatTheFormatCannotCarryAreNamed) {
    const CString chinese = text::FromUtf8("功［］﹛");
    memory.names = {{" first", "plain", "a,b", "x]y", "Case", "CASE", "'quoted'", "empty pane",
                     "dollar", "shape", chinese, "Common", ";semi", "last ", "line\nend"}};
    memory.params[8] = {"one$two"};
    memory.shapes[9] = {"one$two"};
    memory.showCounts[7] = 2;
    memory.wndShowKeys[5] = 9;  // CASE is written over Case
    CTaSettingHandle& repository = Repository();
    repository.SetStudyListByGroupName("empty pane", {{4}});
    repository.SetStudyListByGroupName("plain", StudyLists(10, {4, 5}));
    const Names names = *memory.names;
    EXPECT_EQ(GroupsNotCarried(repository, names, Export(names)),
              (Names{" first", "a,b", "x]y", "Case", "empty pane", "dollar", "shape", "last ",
                     "line\nend"}));
    // Alone, a group named by one of the two spellings is carried.
    EXPECT_TRUE(GroupsNotCarried(repository, {"Case"}, Export({"Case"})).empty());
}

TEST(GroupMergeTest, ExistingGroupsKeepTheirPlacesAndNewOnesFollow) {
    GroupMerge merge;
    merge.InsertAllGroup({"A", "B", "C"}, {"X", "b", "C", "A", "X"}, 5, true, 3);
    EXPECT_EQ(merge.GetMergeList(), (Names{"A", "B", "C", "X", "b"}));
    EXPECT_EQ(merge.RowText("A"), "* A");
    EXPECT_EQ(merge.RowText("B"), "B");
    EXPECT_EQ(merge.RowText("b"), "* b");
    EXPECT_EQ(merge.LeftOutCount(), 0u);
    merge.InsertAllGroup({"A", "B", "C"}, {"X", "b", "C", "Y", "Z"}, 5, false, 4);
    EXPECT_EQ(merge.GetMergeList(), (Names{"A", "B", "C", "X", "b"}));
    EXPECT_FALSE(merge.IsLoadSettingFromFile("C"));
    EXPECT_EQ(merge.LeftOutCount(), 2u);
}

TEST(GroupMergeTest, AListWithoutRoomIsLeftAlone) {
    for (const int most : {2, 1, 0, -1}) {
        GroupMerge merge;
        merge.SetMergeList({"B", "A"});
        EXPECT_FALSE(merge.InsertAllGroup({"A", "B"}, {"A", "X"}, most, true, 2)) << most;
        EXPECT_EQ(merge.GetMergeList(), (Names{"B", "A"}));
        EXPECT_FALSE(merge.IsLoadSettingFromFile("A"));
        EXPECT_EQ(merge.LeftOutCount(), 1u);
    }
    GroupMerge merge;
    EXPECT_FALSE(merge.InsertAllGroup({}, {"X"}, -1, true, 0));
    EXPECT_TRUE(merge.GetMergeList().empty());
}

}  // namespace
}  // namespace ta::test
