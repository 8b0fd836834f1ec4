// The file of study parameters: what is written, what is read back, what is refused.

#include "terminal/lang/Language.h"
#include "terminal/parameters/ParameterChanges.h"
#include "terminal/parameters/ParameterReader.h"
#include "terminal/parameters/ParameterWriter.h"
#include "terminal/studies/StudyCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ta::terminal {
namespace {

const std::string kMark = "\xEF\xBB\xBF";
const std::string kHead =
    "TA study parameters,1\r\n"
    "Study,指標,Kind,Name,名稱,Value,Colour,Width,Style,Visible\r\n";

/// Typed by hand, of studies with decimals, with names that look like formulas, and without
/// parameters.
const std::string kWritten =
    kMark + kHead +
    "Parabolic SAR,拋物線轉向指標,parameter,Start factor,起始加速因子,0.001,,,,\r\n"
    "Parabolic SAR,拋物線轉向指標,parameter,Factor step,加速因子遞增值,0.05,,,,\r\n"
    "Parabolic SAR,拋物線轉向指標,parameter,Largest factor,加速因子上限,1,,,,\r\n"
    "Parabolic SAR,拋物線轉向指標,shape,SAR,轉向點,,#00FF0A,5,dash-dot-dot,no\r\n"
    "Directional movement index,趨向指標,parameter,Period,期數,1000,,,,\r\n"
    "Directional movement index,趨向指標,shape,'+DI,'+DI,,#FFFFFF,1,dash,yes\r\n"
    "Directional movement index,趨向指標,shape,'-DI,'-DI,,#000000,2,dot,yes\r\n"
    "Directional movement index,趨向指標,shape,ADX,ADX,,#1E5000,3,dash-dot,no\r\n"
    "Candlestick,K線,shape,Candlestick,K線,,#7C848C,1,solid,yes\r\n"
    "End\r\n";

const std::vector<StudySettings> kSettings{
    {8, {0.001, 0.05, 1}, {{0x00FF0A, 5, 4, false}}},
    {40, {1000}, {{0xFFFFFF, 1, 1, true}, {0, 2, 2, true}, {0x1E5000, 3, 3, false}}},
    {0, {}, {{0x7C848C, 1, 0, true}}},
};

/// "line: reason" of a damaged file, with the texts' keys and details as they are.
QString FaultOf(const std::string& bytes) {
    const ParameterFile file = ReadParameters(bytes);
    EXPECT_TRUE(!file.fault || file.studies.empty());
    return file.fault ? QString("%1: %2 %3")
                            .arg(file.fault->line)
                            .arg(QString(file.fault->textKey).section("_", 2),
                                 file.fault->details.join('|'))
                            .trimmed()
                      : "none";
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t found = text.find(from);
    EXPECT_NE(found, std::string::npos) << from;
    return text.replace(found, from.size(), to);
}

std::string ReplacedAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

TEST(ParameterFile, IsWrittenAndReadAsItStandsHere) {
    EXPECT_EQ(WriteParameters(kSettings), kWritten);
    const ParameterFile file = ReadParameters(kWritten);
    EXPECT_FALSE(file.fault);
    EXPECT_EQ(file.studies, kSettings);
}

/// Settings at one end of their ranges; rules want the values of a study to rise.
StudySettings AtTheEnd(const StudyInfo& study, bool largest) {
    StudySettings settings{study.GetStudyType(), {}, {}};
    const std::vector<StudyParamInfo>& params = study.GetParams();
    for (std::size_t i = 0; i < params.size(); ++i) {
        const auto below = static_cast<double>(params.size() - 1 - i);
        const double value = largest ? params[i].maximum - below * params[i].step
                                     : params[i].minimum + static_cast<double>(i) * params[i].step;
        settings.params.push_back(RoundedParam(params[i], value));
    }
    for (std::size_t i = 0; i < study.GetShapes().size(); ++i) {
        const int number = static_cast<int>(i % 5);
        settings.shapes.push_back(largest ? StudyShape{0xFFFFFF, 5, 4 - number, i % 2 == 0}
                                          : StudyShape{0, 1, number, i % 2 == 1});
    }
    return settings;
}

TEST(ParameterFile, EveryStudyComesBackFromTheEndsOfItsRanges) {
    for (const bool largest : {false, true}) {
        std::vector<StudySettings> all;
        std::size_t lines = 3;
        for (const StudyInfo* study : AllStudies()) {
            all.push_back(AtTheEnd(*study, largest));
            lines += all.back().params.size() + all.back().shapes.size();
        }
        const std::string bytes = WriteParameters(all);
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(bytes, '\n')), lines);
        const ParameterFile file = ReadParameters(bytes);
        EXPECT_FALSE(file.fault) << FaultText(*file.fault).toStdString();
        EXPECT_EQ(file.studies, all);
    }
}

TEST(ParameterFile, IsReadAsSpreadsheetsSaveIt) {
    const std::string plain = kWritten.substr(kMark.size());
    const std::string sorted = kHead +
                               "Parabolic SAR,,shape,SAR,,,#00ff0a,5,dash-dot-dot,no\n"
                               "Candlestick,,shape,Candlestick,,,#7C848C,1,solid,yes\n"
                               "Parabolic SAR,,parameter,Largest factor,,1.0\n"
                               "Parabolic SAR,,parameter,Start factor,,0.001\n"
                               "Parabolic SAR,,parameter,Factor step,,0.050\nEnd";
    EXPECT_EQ(ReadParameters(sorted).studies, (std::vector{kSettings[0], kSettings[2]}));
    const std::pair<const char*, std::string> cases[] = {
        {"no mark", plain},
        {"line ends", ReplacedAll(kWritten, "\r\n", "\n")},
        {"no last line end", kWritten.substr(0, kWritten.size() - 2)},
        {"tabs", ReplacedAll(kWritten, ",", "\t")},
        {"semicolons", ReplacedAll(kWritten, ",", ";")},
        {"empty cells",
         Replaced(Replaced(kWritten, "parameters,1", "parameters,1,,,,,,,,"), "End", "End,,,,,")},
        {"empty lines", Replaced(kWritten, "End", "\r\n,,,,,,,,,\r\nEnd")},
        {"quotes", "\"" + ReplacedAll(ReplacedAll(plain, ",", "\",\""), "\r\n", "\"\r\n\"") + "\""},
        {"apostrophes lost", ReplacedAll(kWritten, "'", "")},
        {"other Chinese names", ReplacedAll(kWritten, "趨向指標", "別名")},
    };
    for (const auto& [what, bytes] : cases) {
        const ParameterFile file = ReadParameters(bytes);
        EXPECT_FALSE(file.fault) << what << ": " << FaultText(*file.fault).toStdString();
        EXPECT_EQ(file.studies, kSettings) << what;
    }
}

TEST(ParameterFile, DamagedOnesAreRefusedWithLineAndReason) {
    const auto with = [](const std::string& from, const std::string& to) {
        return FaultOf(Replaced(kWritten, from, to));
    };
    EXPECT_EQ(FaultOf(""), "1: NOT_A_FILE TA study parameters");
    EXPECT_EQ(FaultOf("Date,Open\n"), "1: NOT_A_FILE TA study parameters");
    EXPECT_EQ(with("ters,1", "ters,2"), "1: VERSION 2|1");
    EXPECT_EQ(with("ters,1", "ters"), "1: VERSION |1");
    EXPECT_TRUE(with("Width,Style", "Style,Width").startsWith("2: HEADING_WRONG Study,指標,Kind"));
    EXPECT_EQ(FaultOf(kHead + "End\r\n"), "3: EMPTY");
    EXPECT_EQ(with("End", "End\r\nmore"), "13: AFTER_END End");

    EXPECT_EQ(with("Candlestick,K線,s", "Candles,K線,s"), "11: UNKNOWN_STUDY Candles");
    EXPECT_EQ(with("parameter,Start", "value,Start"), "3: KIND value");
    EXPECT_EQ(with("Start factor", "First"), "3: UNKNOWN_ITEM Parabolic SAR|First");
    EXPECT_EQ(with("'-DI", "'+DI"), "9: TWICE Directional movement index|+DI");
    EXPECT_EQ(with("Factor step", "Start factor"), "4: TWICE Parabolic SAR|Start factor");
    EXPECT_EQ(with("0.001,,,,", "0.001,,,,,x"), "3: SURPLUS x");
    EXPECT_EQ(
        with("Parabolic SAR,拋物線轉向指標,parameter,Factor step,加速因子遞增值,0.05,,,,\r\n", ""),
        "3: MISSING Parabolic SAR|Factor step");
    EXPECT_EQ(
        with("Directional movement index,趨向指標,shape,ADX,ADX,,#1E5000,3,dash-dot,no\r\n", ""),
        "7: MISSING Directional movement index|ADX");

    EXPECT_EQ(with("0.05", "0,05"), "4: SURPLUS 05") << "a decimal comma";
    EXPECT_EQ(with("0.05", "\"0,05\""), "4: NUMBER 0,05");
    EXPECT_EQ(with("0.05", ""), "4: NUMBER");
    EXPECT_EQ(with("0.05", "nan"), "4: NUMBER nan");
    EXPECT_EQ(with("0.05", "1e999"), "4: NUMBER 1e999");
    EXPECT_EQ(with("0.05", "０.05"), "4: NUMBER ０.05");
    EXPECT_EQ(with("0.05", "0.0501"), "4: DECIMALS 0.0501|3");
    EXPECT_EQ(with("0.05", "1.001"), "4: RANGE 1.001|0.001|1");
    EXPECT_EQ(with("0.05", "-0.05"), "4: RANGE -0.05|0.001|1");
    EXPECT_EQ(with(",1000,", ",1001,"), "7: RANGE 1001|1|1000");
    EXPECT_EQ(with("上限,1,", "上限,0.04,"), "4: RULE_FACTOR_WITHIN_MAXIMUM");
    EXPECT_EQ(with("#00FF0A", "00FF0A"), "6: COLOUR 00FF0A");
    EXPECT_EQ(with("#00FF0A", "#-00000"), "6: COLOUR #-00000");
    EXPECT_EQ(with("轉向點,", "轉向點,1"), "6: SURPLUS 1");
    EXPECT_EQ(with("#00FF0A,5", "#00FF0A,6"), "6: WIDTH 6");
    EXPECT_EQ(with("#00FF0A,5", "#00FF0A,0"), "6: WIDTH 0");
    EXPECT_TRUE(with("dash-dot-dot", "Dash").startsWith("6: STYLE Dash|solid"));
    EXPECT_EQ(with("dot,no", "dot,nein"), "6: VISIBLE nein");
    EXPECT_EQ(with("Candlestick,K線,s", "Candlestick,\"K線,s"), "11: QUOTE_OPEN");
    EXPECT_EQ(with("0.05", "\"0.05\"9"), "4: AFTER_QUOTE");
}

TEST(ParameterFile, NoCutFileIsGood) {
    ASSERT_EQ(FaultOf(kWritten.substr(0, kWritten.size() - 2)), "none");
    for (std::size_t length = 0; length + 2 < kWritten.size(); ++length) {
        const ParameterFile file = ReadParameters(kWritten.substr(0, length));
        ASSERT_TRUE(file.fault) << length;
        EXPECT_GE(file.fault->line, 1U);
        EXPECT_TRUE(file.studies.empty());
    }
    EXPECT_EQ(FaultOf(kWritten.substr(0, kWritten.find("End"))), "11: CUT End");
}

TEST(ParameterFile, OtherEncodingsAreRefused) {
    EXPECT_EQ(FaultOf(Replaced(kWritten, "K線", "K\xBDu")), "11: NOT_UTF8") << "code page 950";
    EXPECT_EQ(FaultOf(Replaced(kWritten, "SAR", std::string("S\0R", 3))), "3: NUL");
    const QString text = QString::fromStdString(kWritten.substr(kMark.size()));
    const auto* wide = reinterpret_cast<const char*>(text.utf16());
    const std::string utf16(wide, static_cast<std::size_t>(text.size()) * 2);
    EXPECT_EQ(FaultOf("\xFF\xFE" + utf16), "1: NOT_UTF8");
    EXPECT_EQ(FaultOf(utf16), "1: NUL");
    const std::string longWord(1U << 20U, 'x');
    EXPECT_LT(FaultOf(Replaced(kWritten, "SAR", longWord)).size(), 100)
        << "the message stays short";
}

TEST(ParameterFile, TheReasonIsToldInTheLanguage) {
    Language language;
    const ParameterFile file = ReadParameters(Replaced(kWritten, "0.05", "%2"));
    EXPECT_EQ(FaultText(*file.fault), "第 4 行：「%2」不是數字（小數點請用「.」）。");
    language.Select(Language::English);
    EXPECT_EQ(FaultText(*file.fault), R"(Line 4: "%2" is no number (the decimal sign is ".").)");
    const ParameterFile range = ReadParameters(Replaced(kWritten, "0.05", "1.001"));
    EXPECT_EQ(FaultText(*range.fault), R"(Line 4: "1.001" must be between 0.001 and 1.)");
}

TEST(ParameterFile, DifferencesAreWhatTheFileHasOtherwise) {
    Language language;
    std::vector<StudySettings> now = kSettings;
    EXPECT_TRUE(Differences(kSettings, now).empty());
    now[1].params[0] = 14;
    now[1].shapes[2] = {0x1C7ED6, 1, 3, false};
    now[2].shapes[0].style = 4;
    now[2].shapes[0].visible = false;
    const std::vector<StudyChanges> differences = Differences(kSettings, now);
    ASSERT_EQ(differences.size(), 2U);
    EXPECT_EQ(differences[0].settings, kSettings[1]);
    const std::vector<ParameterChange> expected{
        {"期數", "14", "1000"},
        {"ADX 顏色", "#1C7ED6", "#1E5000", 0x1C7ED6U, 0x1E5000U},
        {"ADX 線寬", "1", "3"}};
    EXPECT_EQ(differences[0].changes, expected);
    const std::vector<ParameterChange> looks{{"K線 線型", "雙點虛線", "實線"},
                                             {"K線 顯示", "不顯示", "顯示"}};
    EXPECT_EQ(differences[1].changes, looks);
}

}  // namespace
}  // namespace ta::terminal
