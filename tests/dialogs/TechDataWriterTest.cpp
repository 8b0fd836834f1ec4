// The texts of files and of the clipboard, byte for byte.

#include "dialogs/TechDataWriter.h"
#include "platform/Text.h"
#include "tests/dialogs/TechDataFixture.h"

#include <limits>

namespace ta::test {
namespace {

using namespace ta::techdata;

class TechDataText : public testing::Test {
protected:
    /// The whole text. The list shows all records.
    std::string Write(const TextForm& form, const std::vector<std::size_t>& columns,
                      std::vector<RowRange> rows) {
        TechDataTable table(headers, records);
        table.Grow(table.Missing());
        const CellTexts cells(market, "", dataType);
        TableWriter writer(table, cells, form, title, columns, std::move(rows));
        std::string text;
        for (std::string piece; writer.Next(piece); text += piece) {
        }
        EXPECT_EQ(writer.RowsDone(), writer.RowsInAll());
        return text;
    }
    std::string Write(const TextForm& form) {
        return Write(form, AllColumns(headers), {{0, records.size()}});
    }
    std::string Write(const ExportProfile& profile) {
        return Write(FormOf(profile), ColumnsOf(profile, headers), {{0, records.size()}});
    }

    TechDataServices services;
    CString title = "T";
    unsigned char market = 77;
    int dataType = kDailyData;
    Headers headers = MakeHeaders({"A", "B"});
    Records records = {{19787, {2}}};
};

TEST_F(TechDataText, TheViewersOwnForms) {
    // Nothing is quoted, guarded or escaped, and the code page's bytes stay.
    title = text::FromUtf8("台積電, \"x\"\t\n");
    headers[0].name = "=A,\"\r\n\xA5";
    EXPECT_EQ(Write(CsvForm()), title + "\r\n=A,\"\r\n\xA5,B,\r\n2024/03/05,2.00,\r\n");
    title = CString(10'000, 'x');
    records.clear();
    headers = MakeHeaders({"A"});
    EXPECT_EQ(Write(ClipboardForm()), title + "\r\nA\t\r\n");
    headers.clear();
    title.clear();
    EXPECT_EQ(Write(CsvForm()), "\r\n\r\n");
}

TEST_F(TechDataText, ProfilesForSpreadsheetsAndAnalysis) {
    const double nan = std::nan("");
    headers = MakeHeaders({"date", text::FromUtf8("量,\"x\""), "=1+2"});
    records = {{19787.5, {0.1, -1e300}}, {19787 + 86399.999 / 86400, {nan, -0.0}}, {1e9, {1}}};
    dataType = 0;
    ExportProfile profile;
    profile.form = ExportForm::Analysis;
    EXPECT_EQ(Write(profile),
              "date,\"量,\"\"x\"\"\",'=1+2\r\n2024-03-05T12:00:00,0.1,-1e+300\r\n"
              "2024-03-06T00:00:00,,-0\r\n,,\r\n");
    records = {{19787.5, {0.125, -1}}, {1e9, {1}}};
    profile.form = ExportForm::Spreadsheet;
    const std::string head =
        "\xEF\xBB\xBF"
        "date,IDS_TADIALOGS-TECHDATA_TIME,\"量,\"\"x\"\"\",'=1+2\r\n";
    EXPECT_EQ(Write(profile), head + "2024/03/05,12:00,0.12,-1.00\r\n,,,\r\n");
    profile.decimals = 3;
    EXPECT_EQ(Write(profile), head + "2024/03/05,12:00,0.125,-1.000\r\n,,,\r\n");
    dataType = kDailyData;
    profile.columns = {"=1+2", "not there", "date"};
    EXPECT_EQ(Write(profile),
              "\xEF\xBB\xBF"
              "date,'=1+2\r\n2024/03/05,-1.000\r\n,\r\n");
    profile.form = ExportForm::Analysis;
    EXPECT_EQ(Write(profile), "date,'=1+2\r\n2024-03-05,-1\r\n,\r\n");
    profile.form = ExportForm::Fixed;  // has all columns
    EXPECT_EQ(Write(profile).substr(0, 8), "T\r\ndate,");
}

TEST_F(TechDataText, ColumnsAreFoundByHeadingAndWhichOfThatHeading) {
    headers = MakeHeaders({"A", "B", "C", "B", "B"});
    using Columns = std::vector<std::size_t>;
    for (const auto& [chosen, found] : {std::pair(std::vector<CString>{"B"}, Columns{1}),
                                        {{ColumnKey(headers, 4), "C"}, {2, 4}},
                                        {{"not there", ColumnKey(headers, 3)}, {3}},
                                        {{"of another language"}, {0, 1, 2, 3, 4}}}) {
        ExportProfile profile{"", ExportForm::Analysis, chosen, false, -1, 0};
        EXPECT_EQ(ColumnsOf(profile, headers), found) << chosen[0];
    }
}

TEST_F(TechDataText, OnlyHeadingsThatStartFormulasAreGuarded) {
    for (const auto& [name, guarded] : {std::pair("=A", true),
                                        {"+A", true},
                                        {"-A", true},
                                        {"@A", true},
                                        {"＠", true},
                                        {"A=", false},
                                        {"（A", false},
                                        {"", false}}) {
        headers[1].name = text::FromUtf8(name);
        records = {{19787, {-5}}};
        ExportProfile profile;
        profile.form = ExportForm::Analysis;
        EXPECT_EQ(Write(profile),
                  fmt::format("A,{}{}\r\n2024-03-05,-5\r\n", guarded ? "'" : "", name));
    }
    headers[1].name = "\tA";
    EXPECT_EQ(Write(RowsForm(true)), "A\t\"'\tA\"\r\n2024/03/05\t-5.00\r\n");
}

TEST_F(TechDataText, CodePagesAndWhatTheyLose) {
    headers[1].name = text::FromUtf8("量€ é量");  // é is not in the user's code page
    headers.push_back({text::FromUtf8("測"), 0, 0, 2});
    ExportProfile profile;
    profile.form = ExportForm::CodePage;
    const auto lost = [&] {
        return LostCharacters(FormOf(profile), headers, ColumnsOf(profile, headers),
                              dataType != kDailyData);
    };
    records.clear();
    EXPECT_EQ(Write(profile), "A," + headers[1].name + "," + headers[2].name + "\r\n");
    EXPECT_EQ(lost(), u"");
    profile.codePage = 1252;
    EXPECT_EQ(Write(profile), "A,?\x80 ??,?\r\n");
    EXPECT_EQ(lost(), u"量測");
    profile.columns = {"A"};
    EXPECT_EQ(lost(), u"");
    dataType = 0;
    services.quotes.language["IDS_TADIALOGS-TECHDATA_TIME"] = text::FromUtf8("時");
    EXPECT_EQ(lost(), u"時") << "the time has a heading of its own";
    profile.columns.clear();
    profile.form = ExportForm::Spreadsheet;
    EXPECT_EQ(lost(), u"");
    EXPECT_EQ(text::FromUtf16(u"x", 437, nullptr), "");
    std::u16string pairs;
    EXPECT_EQ(text::FromUtf16(u"a𠀀?𠀀", 950, &pairs), "a???");
    EXPECT_EQ(pairs, u"𠀀");
}

TEST_F(TechDataText, PiecesOfAMillionCellsEndWithLines) {
    records = MakeRecords(40'000, 1);
    headers[1].name = text::FromUtf8("量");
    TechDataTable table(headers, records);
    table.Grow(table.Missing());
    const CellTexts cells(market, "", dataType);
    ExportProfile profile;
    profile.form = ExportForm::Analysis;
    TableWriter writer(table, cells, FormOf(profile), title, AllColumns(headers),
                       {{0, records.size()}});
    std::size_t pieces = 0;
    std::size_t lines = 0;
    for (std::string piece; writer.Next(piece); ++pieces) {
        EXPECT_TRUE(piece.ends_with("\r\n"));
        lines += static_cast<std::size_t>(std::ranges::count(piece, '\n'));
        records.resize(30'000);  // the owner shortens them meanwhile
    }
    EXPECT_GT(pieces, 1U);
    EXPECT_EQ(lines, 40'001U);
}

}  // namespace
}  // namespace ta::test
