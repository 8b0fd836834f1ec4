#include "terminal/studies/StudyCatalogue.h"
#include "terminal/studies/StudyDefinition.h"
#include "terminal/studies/TerminalDrawInfo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

using Strings = std::vector<CString>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Strings ParamsOf(const ChartBaseDrawInfo& info) {
    Strings strings{"left over"};
    info.vMapParam2VecCstring(strings);
    return strings;
}

Strings ShapesOf(const ChartBaseDrawInfo& info) {
    Strings strings{"left over"};
    info.vMapShapeParam2VecCstring(strings);
    return strings;
}

TerminalDrawInfo WithParams(const Strings& strings, int mode = kDrawInfoLoad) {
    TerminalDrawInfo info;
    info.vVecCstring2MapParam(strings, mode);
    return info;
}

TerminalDrawInfo WithShapes(const Strings& strings, int mode = kDrawInfoLoad) {
    TerminalDrawInfo info;
    info.vVecCstring2MapShapeParam(strings, mode);
    return info;
}

/// What other versions and other programs may have left in the store.
Strings ForeignStrings() {
    return {"999=1,2,3",
            "",
            "=",
            "=1,2",
            "22",
            "22;12,26,9",
            "x=1",
            "22x=1,2,3",
            "-1=5",
            "99999999999=1",
            "4.0=5",
            "\xA4\x41=\xA4\x61,\xA1\x5D",
            CString("a\0b=1", 5),
            "  ",
            "1000=FF0000:1:0:1$,,"};
}

// ---- Parameters ----

TEST(DrawInfoParams, GiveBackExactlyTheStringsThatCame) {
    Strings strings = ForeignStrings();
    strings.insert(strings.begin() + 3, {"22=12,26,9", "23= 9 ,3,3,extra,,7", "22=5,6,7", "4=",
                                         "16=0,-3", "5=abc,1e999", "8=2e-2,.05,0.5", "7=20,2.0"});
    EXPECT_EQ(ParamsOf(WithParams(strings)), strings);

    TerminalDrawInfo info = WithParams(strings);
    for (const StudyInfo* study : AllStudies()) {
        info.vecGetStudyParams(study->GetStudyType());
    }
    EXPECT_EQ(ParamsOf(info), strings) << "reading changed them";
    info.vVecCstring2MapParam({"4=1,2,3,4"}, kDrawInfoLoad);
    EXPECT_EQ(ParamsOf(info), (Strings{"4=1,2,3,4"})) << "old strings stayed";
}

struct ParamCase {
    CString given;
    std::vector<double> read;
    CString replaced = "";  ///< what replacing makes of it; empty: it stays
};

TEST(DrawInfoParams, AreReadAndReplacedWithDefaultsForWhatIsUnusable) {
    const std::vector<ParamCase> cases{
        {"22=12,26,9", {12, 26, 9}},
        {"22=05,30.0,7,new,,1", {5, 30, 7}},
        {"22=5.4,30,7", {5, 30, 7}},
        {"22=", {12, 26, 9}},
        {"22=abc,30,7", {12, 30, 7}, "22=12,30,7"},
        {" 22 =0,30,7", {12, 30, 7}, " 22 =12,30,7"},
        {"22=nan,inf,7", {12, 26, 7}, "22=12,26,7"},
        {"22=5,30,1e999", {5, 30, 9}, "22=5,30,9"},
        {"22=5,1001,7,new", {5, 26, 7}, "22=5,26,7,new"},
        {"22=40,30,7,x", {12, 26, 7}, "22=12,26,7,x"},
        {"22=30", {12, 26, 9}, "22=12"},  // breaks the rule with the default of the missing one
        {"22=40,5000,7", {12, 26, 7}, "22=12,26,7"},
        {"22=12.4,12.3,7", {12, 26, 7}, "22=12.4,26,7"},
        {"8=.05,5e-2,0.5", {0.05, 0.05, 0.5}},
        {"8=0.02,0.0154,0.2", {0.02, 0.015, 0.2}},
        {"8=0.02,9,0.2", {0.02, 0.02, 0.2}, "8=0.02,0.02,0.2"},
        {"9=30,40,20", {9, 26, 52}, "9=9,26,52"},
        {"0=1,2", {}},
    };
    for (const auto& [given, read, replaced] : cases) {
        SCOPED_TRACE(given);
        const StudyType type = StudyOfString(given);
        EXPECT_EQ(WithParams({given}).vecGetStudyParams(type), read);
        EXPECT_EQ(ParamsOf(WithParams({given}, kDrawInfoReplace)),
                  Strings{replaced.empty() ? given : replaced});
        EXPECT_EQ(ParamsOf(WithParams({given}, kDrawInfoLoad)), Strings{given});
    }
    EXPECT_EQ(WithParams({"23=5,5,5"}).vecGetStudyParams(22), (std::vector<double>{12, 26, 9}));
    EXPECT_EQ(WithParams({"22=5,30,7", "22=6,31,8"}).vecGetStudyParams(22),
              (std::vector<double>{5, 30, 7}))
        << "the first of two strings counts";
    EXPECT_TRUE(WithParams({"999=1,2"}).vecGetStudyParams(999).empty());
    EXPECT_TRUE(WithParams({"x=1,2"}).vecGetStudyParams(kNoStudy).empty());
    EXPECT_EQ(ParamsOf(WithParams(ForeignStrings(), kDrawInfoReplace)), ForeignStrings());
    EXPECT_EQ(ParamsOf(WithParams({"9=0,0,0", "22=0", "22=0,30"}, kDrawInfoReplace)),
              (Strings{"9=9,26,52", "22=12", "22=12,30"}))
        << "order and duplicates stay";
}

TEST(DrawInfoParams, SettingAStudyChangesItsStringAlone) {
    const Strings before{"999=a", "23=9,3,3", "22=12,26,9,new,,x", "garbage", "22=1,2,3"};
    TerminalDrawInfo info = WithParams(before);

    ASSERT_TRUE(info.bSetStudyParams(22, {5, 30, 7}));
    Strings expected = before;
    expected[2] = "22=5,30,7,new,,x";
    EXPECT_EQ(ParamsOf(info), expected);
    EXPECT_EQ(info.vecGetStudyParams(22), (std::vector<double>{5, 30, 7}));

    ASSERT_TRUE(info.bSetStudyParams(8, {0.015, 0.02, 1}));
    expected.push_back("8=0.015,0.02,1");
    EXPECT_EQ(ParamsOf(info), expected);

    ASSERT_TRUE(info.bSetStudyParams(7, {20, 1.956})) << "rounded to the digits that it keeps";
    expected.push_back("7=20,1.96");
    EXPECT_EQ(ParamsOf(info), expected);

    EXPECT_TRUE(info.bSetStudyParams(0, {})) << "nothing to set, nothing written";
    EXPECT_EQ(ParamsOf(info), expected);

    TerminalDrawInfo brokenString = WithParams({"22=zz", "4=,"});
    ASSERT_TRUE(brokenString.bSetStudyParams(22, {5, 30, 7}));
    ASSERT_TRUE(brokenString.bSetStudyParams(4, {1, 2, 3, 1000}));
    EXPECT_EQ(ParamsOf(brokenString), (Strings{"22=5,30,7", "4=1,2,3,1000"}));
}

TEST(DrawInfoParams, WhatCannotBeSetChangesNothing) {
    const Strings before{"22=5,30,7", "999=1,2"};
    TerminalDrawInfo info = WithParams(before);
    const auto refuses = [&](StudyType type, const std::vector<double>& values) {
        EXPECT_FALSE(info.bSetStudyParams(type, values))
            << type << " with " << testing::PrintToString(values);
    };
    for (const double bad : {0.0, 1001.0, 30.0, 29.6, kNaN, double{INFINITY}}) {
        refuses(22, {bad, 30, 7});
    }
    for (const std::size_t count : {0U, 2U, 4U}) {
        refuses(22, std::vector<double>(count, 5));
        refuses(999, std::vector<double>(count, 5));
    }
    refuses(22, {29.6, 30.4, 7});
    refuses(kNoStudy, {});
    refuses(0, {1});
    EXPECT_EQ(ParamsOf(info), before);
}

// ---- Shapes ----

TEST(DrawInfoShapes, AreReadFieldByField) {
    const std::vector<StudyShape> defaults = TerminalDrawInfo().vecGetStudyShapes(23);
    ASSERT_EQ(defaults.size(), 2U);
    const StudyShape red{0xFF0000, 1, 0, true};
    const StudyShape blue{0x0000FF, 5, 4, false};
    const std::vector<std::pair<CString, std::vector<StudyShape>>> cases{
        {"23=FF0000:1:0:1,0000FF:5:4:0", {red, blue}},
        {"23=ff0000:1:0:1,0000ff:5:4:0:more", {red, blue}},
        {"23=FF0000:1:0:1", {red, defaults[1]}},
        {"23=,0000FF:5:4:0", {defaults[0], blue}},
        {"23=", defaults},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(WithShapes({text}).vecGetStudyShapes(23), expected) << text;
        EXPECT_EQ(ShapesOf(WithShapes({text})), Strings{text});
    }
    for (const CString bad :
         {"FF0000:0:0:1", "FF0000:6:0:1", "FF0000:1:5:1", "FF0000:1:-1:1", "FF0000:1:0:2",
          "FF000:1:0:1", "GG0000:1:0:1", "1FF0000:1:0:1", "FF0000:1:0"}) {
        EXPECT_EQ(WithShapes({"23=" + bad + ",0000FF:5:4:0"}).vecGetStudyShapes(23),
                  (std::vector{defaults[0], blue}))
            << bad;
    }
    EXPECT_TRUE(WithShapes({"999=FF0000:1:0:1"}).vecGetStudyShapes(999).empty());
    EXPECT_EQ(ShapesOf(WithShapes(ForeignStrings())), ForeignStrings());
    EXPECT_EQ(ShapesOf(WithShapes(ForeignStrings(), kDrawInfoReplace)), ForeignStrings());
}

TEST(DrawInfoShapes, ReplacingRewritesBadShapesAndNothingElse) {
    const std::vector<StudyShape> defaults = TerminalDrawInfo().vecGetStudyShapes(23);
    const CString first = FormatShape(defaults[0]);
    const CString second = FormatShape(defaults[1]);
    const std::vector<std::pair<CString, CString>> cases{
        {"23=ff0000:1:0:1,0000FF:5:4:0:more,extra", "23=ff0000:1:0:1,0000FF:5:4:0:more,extra"},
        {"23=ff0000:1:0:1,0000FF:9:4:0:more,extra", "23=ff0000:1:0:1," + second + ":more,extra"},
        {"23=zz", "23=" + first},
        {"23=zz,yy,xx", "23=" + first + "," + second + ",xx"},
    };
    for (const auto& [given, expected] : cases) {
        EXPECT_EQ(ShapesOf(WithShapes({given}, kDrawInfoReplace)), Strings{expected});
    }
}

TEST(DrawInfoShapes, SettingAStudyChangesItsStringAlone) {
    const Strings before{"999=a", "23=FF0000:1:0:1:f5,zz,third", "23=,"};
    TerminalDrawInfo info = WithShapes(before);
    const std::vector<StudyShape> shapes{{0x00ABCD, 2, 1, false}, {0, 1, 0, true}};
    ASSERT_TRUE(info.bSetStudyShapes(23, shapes));
    Strings expected = before;
    expected[1] = "23=00ABCD:2:1:0:f5,000000:1:0:1,third";
    EXPECT_EQ(ShapesOf(info), expected);
    EXPECT_EQ(info.vecGetStudyShapes(23), shapes);
    EXPECT_TRUE(ParamsOf(info).empty()) << "parameters and shapes are apart";

    ASSERT_TRUE(info.bSetStudyShapes(0, {{0x123456, 5, 4, true}}));
    expected.push_back("0=123456:5:4:1");
    EXPECT_EQ(ShapesOf(info), expected);

    for (const StudyShape& bad :
         {StudyShape{0x1000000, 1, 0, true}, StudyShape{0, 0, 0, true}, StudyShape{0, 6, 0, true},
          StudyShape{0, 1, -1, true}, StudyShape{0, 1, 5, true}}) {
        EXPECT_FALSE(info.bSetStudyShapes(0, {bad}));
    }
    EXPECT_FALSE(info.bSetStudyShapes(0, {}));
    EXPECT_FALSE(info.bSetStudyShapes(23, {{0, 1, 0, true}}));
    EXPECT_FALSE(info.bSetStudyShapes(999, {}));
    EXPECT_EQ(ShapesOf(info), expected);
}

// ---- Defaults, deletion, lists, axes ----

TEST(DrawInfo, DefaultStringsAreThoseOfFreshSettings) {
    const Strings params = TerminalDrawInfo::DefaultParamStrings();
    const Strings shapes = TerminalDrawInfo::DefaultShapeStrings();
    EXPECT_EQ(shapes.size(), AllStudies().size());
    EXPECT_EQ(params.size() + 1, AllStudies().size()) << "the candlestick has no parameters";

    const TerminalDrawInfo fresh;
    TerminalDrawInfo loaded = WithParams(params, kDrawInfoReplace);
    loaded.vVecCstring2MapShapeParam(shapes, kDrawInfoReplace);
    EXPECT_EQ(ParamsOf(loaded), params);
    EXPECT_EQ(ShapesOf(loaded), shapes);
    for (const StudyInfo* study : AllStudies()) {
        const StudyType type = study->GetStudyType();
        EXPECT_EQ(loaded.vecGetStudyParams(type), fresh.vecGetStudyParams(type));
        EXPECT_EQ(loaded.vecGetStudyShapes(type), fresh.vecGetStudyShapes(type));
    }
}

TEST(DrawInfo, DeletingClearsOneKindOfSettings) {
    TerminalDrawInfo info = WithParams({"22=5,30,7", "garbage"});
    info.vVecCstring2MapShapeParam({"23=FF0000:1:0:1"}, kDrawInfoLoad);
    EXPECT_TRUE(info.bDeleteAllParam());
    EXPECT_TRUE(ParamsOf(info).empty());
    EXPECT_EQ(info.vecGetStudyParams(22), (std::vector<double>{12, 26, 9}));
    EXPECT_EQ(ShapesOf(info).size(), 1U);
    EXPECT_TRUE(info.bDeleteAllShapeParam());
    EXPECT_TRUE(ShapesOf(info).empty());
    EXPECT_TRUE(info.bDeleteAllShapeParam()) << "nothing left to delete";
}

}  // namespace
}  // namespace ta::terminal
