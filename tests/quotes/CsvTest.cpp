#include "platform/DayNumber.h"
#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/CsvImport.h"
#include "terminal/quotes/CsvImportJob.h"
#include "terminal/quotes/CsvReader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace ta::terminal {
namespace {

constexpr const char* kHeadingLine = "Date,Open,High,Low,Close,Adj Close,Volume\n";

double Day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return static_cast<double>(*DayNumberFromDate({year, month, day})) +
           ((hour * 60 + minute) * 60 + second) / 86400.0;
}

std::vector<std::vector<std::string>> Split(std::string_view text, char separator = ',') {
    std::vector<std::vector<std::string>> records;
    CsvReader reader(text, separator);
    while (reader.Next()) {
        records.emplace_back(reader.Fields().begin(), reader.Fields().end());
    }
    return records;
}

using Records = std::vector<std::vector<std::string>>;

TEST(CsvReader, SplitsFieldsAndLines) {
    EXPECT_EQ(Split("a,b\r\nc,\n,d"), (Records{{"a", "b"}, {"c", ""}, {"", "d"}}));
    EXPECT_EQ(Split("a\tb c\td\n", '\t'), (Records{{"a", "b c", "d"}}));
    EXPECT_EQ(Split("\n \t\n\r\n"), Records{});
    EXPECT_EQ(Split(""), Records{});
    EXPECT_EQ(Split("\"1,234\",\"say \"\"no\"\"\",\"\",x\n"),
              (Records{{"1,234", "say \"no\"", "", "x"}}));
}

TEST(CsvReader, CountsLinesAndKeepsAStrayQuoteInItsLine) {
    CsvReader reader("a\n\n\"b,c\n\"\"\"d\ne,f\n");
    EXPECT_TRUE(reader.Next());
    EXPECT_FALSE(reader.QuoteOpen());
    EXPECT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line(), 3U);
    EXPECT_TRUE(reader.QuoteOpen());
    EXPECT_TRUE(reader.Next());
    EXPECT_TRUE(reader.QuoteOpen());
    EXPECT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line(), 5U);
    EXPECT_FALSE(reader.QuoteOpen());
    EXPECT_EQ(reader.Fields().size(), 2U);
    EXPECT_FALSE(reader.Next());
}

struct TimeCase {
    const char* date;
    const char* clock;
    double time;
};

TEST(CsvValues, ReadsDatesAndTimes) {
    const double day = Day(2020, 4, 17);
    const std::vector<TimeCase> cases{
        {" 2020/4/17 ", "", day},
        {"20200417", "", day},
        {"4/17/2020", "", day},
        {"17-APR-20", "", day},
        {"31-Dec-69", "", Day(2069, 12, 31)},
        {"1-Jan-70", "", 0},
        {"Dec 31 00", "", Day(2000, 12, 31)},
        {"1 Sept. 99", "", Day(1999, 9, 1)},
        {"2020. 4. 17", "", day},
        {"Apr 17, 2020", "", day},
        {"109/04/17", "", day},
        {"99/12/31", "", Day(2010, 12, 31)},
        {"2020-04-17T09:05:07.250Z", "", Day(2020, 4, 17, 9, 5, 7)},
        {"2020-04-17 00:00:00-04:00", "", day},
        {"4/17/2020 12:00 AM", "", day},
        {"Apr 17, 2020 12:05 pm", "", Day(2020, 4, 17, 12, 5)},
        {"20200417", "90507", Day(2020, 4, 17, 9, 5, 7)},
        {"2020/4/17 9:05:07 -04:00", "", Day(2020, 4, 17, 9, 5, 7)},
    };
    for (const TimeCase& c : cases) {
        double time = -1;
        EXPECT_EQ(ParseTime(c.date, c.clock, &time), CsvFault::None) << c.date << ' ' << c.clock;
        EXPECT_EQ(time, c.time) << c.date << ' ' << c.clock;
    }
}

TEST(CsvValues, RefusesOtherDates) {
    double time = 0;
    const QString bad =
        "yesterday|2020-13-01|2020-02-30|2019-02-29|2020-00-10|2020-04-00|31/12/2020|"
        "17-04-2020|2020|2020-04|2020-04-17x|2020-04-17 25:00|2020-04-17 09:60|"
        "2020-04-17 13:05 PM|2020-04-17 09:05 xm|Foo 17 2020|Ap 17 2020|123456789|"
        "1-2-3-4|2020-04-17 09:05 +|/1/2|2020-04-17 24:00|2020-04-17 0:05 am|"
        "1 Mayo 2020|2020-04-17 09:05:60|2020/04/17x09:05";
    for (const QString& date : bad.split('|')) {
        EXPECT_EQ(ParseTime(date.toStdString(), "", &time), CsvFault::DateNotReadable)
            << date.toStdString();
    }
    EXPECT_EQ(ParseTime("2020-04-17", "noon", &time), CsvFault::DateNotReadable);
    EXPECT_EQ(ParseTime("", "09:05", &time), CsvFault::MissingField);
    for (const char* date : {"1969-12-31", "2070-01-01", "58/01/01", "12/10/12"}) {
        EXPECT_EQ(ParseTime(date, "", &time), CsvFault::YearOutOfRange) << date;
    }
}

TEST(CsvValues, ReadsNumbers) {
    const std::vector<std::pair<const char*, double>> good{{" 7 ", 7},
                                                           {"$1,234.50", 1234.5},
                                                           {"-1,000.25", -1000.25},
                                                           {".5", 0.5},
                                                           {"5.", 5},
                                                           {"007.10", 7.1},
                                                           {"2.2250738585072", 2.2250738585072},
                                                           {"999999999999.997", 999999999999.997},
                                                           {"1e3", 1000}};
    for (const auto& [text, wanted] : good) {
        double value = 0;
        EXPECT_EQ(ParsePrice(text, &value), CsvFault::None) << text;
        EXPECT_EQ(value, wanted) << text;
    }
    double value = 0;
    for (const char* text :
         {"abc", "1,23", "1234,567", "1,2345", ",123", "1,,234", "1.234,5", "12 3", "1.2.3", "nan",
          "inf", "null", "--", "1e999", "0x10", "1111111111111111111111111111111111111111,111"}) {
        EXPECT_EQ(ParsePrice(text, &value), CsvFault::NumberNotReadable) << text;
    }
    EXPECT_EQ(ParsePrice(" ", &value), CsvFault::MissingField);
}

TEST(CsvValues, ReadsVolumesAndDecimals) {
    const std::vector<std::pair<const char*, double>> good{
        {"", 0},        {"-", 0},           {"null", 0}, {"N/A", 0}, {"931,800,000", 931800000},
        {"1.5K", 1500}, {"2.25m", 2250000}, {"3B", 3e9}};
    for (const auto& [text, wanted] : good) {
        double value = -1;
        EXPECT_EQ(ParseVolume(text, &value), CsvFault::None) << text;
        EXPECT_EQ(value, wanted) << text;
    }
    double value = 0;
    EXPECT_EQ(ParseVolume("-5", &value), CsvFault::NegativeVolume);
    EXPECT_EQ(ParseVolume("K", &value), CsvFault::NumberNotReadable);
}

const BarSeries kTwoDays{{Day(2020, 4, 16), 10, 12, 9, 11, 500},
                         {Day(2020, 4, 17), 11, 13.5, 10.25, 12, 1600}};

std::string Utf16(const std::string& utf8, bool bigEndian) {
    const std::u16string text = QString::fromStdString(utf8).toStdU16String();
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t c : text) {
        const char high = static_cast<char>(c >> 8);
        const char low = static_cast<char>(c & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

TEST(CsvImport, ReadsTheUsualFiles) {
    const std::string chinese =
        "日期,開盤價,最高價,最低價,收盤價,成交量\n"
        "109/04/16,10,12,9,11,500\n109/04/17,11,13.5,10.25,12,\"1,600\"\n";
    const std::vector<std::string> files{
        std::string(kHeadingLine) +
            "2020-04-16,10,12,9,11,10.5,500\n2020-04-17,11,13.5,10.25,12,11.7,1600\n",
        "\xEF\xBB\xBF"
        "date;OPEN;High;low;close;volume\r\n"
        "2020/04/17;11;13.5;10.25;12;1600\r\n2020/04/16;10;12;9;11;500",
        "Date\tTime\tOpen\tHigh\tLow\tClose\tVol\n"
        "16-Apr-2020\t\t10\t12\t9\t11\t500\n17-Apr-2020\t\t11\t13.5\t10.25\t12\t1600\n",
        "\"Date\",\"Price\",\"Open\",\"High\",\"Low\",\"Vol.\",\"Change %\"\n"
        "\"Apr 17, 2020\",\"12.00\",\"11.00\",\"13.50\",\"10.25\",\"1.60K\",\"1%\"\n"
        "\"Apr 16, 2020\",\"11.00\",\"10.00\",\"12.00\",\"9.00\",\"0.50K\",\"-1%\"\n",
        "<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>\n"
        "X,D,20200416,000000,10,12,9,11,500\nX,D,20200417,000000,11,13.5,10.25,12,1600\n",
        "109年04月 9901 各日成交資訊\n\n" + chinese,
        chinese,
        text::FromUtf8(chinese),
        Utf16(chinese, false),
        Utf16(chinese, true),
    };
    for (const std::string& file : files) {
        const CsvImportResult result = ImportCsv(file);
        EXPECT_TRUE(result.error.isEmpty()) << file;
        EXPECT_EQ(result.badRowCount, 0U) << file;
        EXPECT_EQ(result.bars, kTwoDays) << file;
        EXPECT_DOUBLE_EQ(result.priceStep, 0.01) << file;
    }
}

// 許, 功, 蓋 and others end in a backslash, "|" or another mark; none of them parts fields.
TEST(CsvImport, Big5NamesDoNotPartFields) {
    const CString file = text::FromUtf8(
        "證券名稱,日期,開盤價,最高價,最低價,收盤價\n"
        "許功蓋,2020-04-16,10,12,9,11\n\"育, 餐崤\",2020-04-17,11,13.5,10.25,12\n");
    const CsvImportResult result = ImportCsv(file);
    ASSERT_EQ(result.bars.size(), 2U);
    EXPECT_EQ(result.badRowCount, 0U);
    EXPECT_EQ(result.bars[1].close, 12);
    EXPECT_EQ(result.bars[1].volume, 0);
}

TEST(CsvImport, TellsBadRowsWithLineAndReason) {
    const std::string file = std::string("title\n") + kHeadingLine +
                             "2020-04-01,10,12,9,11,11,1\n"
                             "2020-04-02,ten,12,9,11,11,1\n"
                             "2020-04-03,10,8,9,11,11,1\n"
                             "someday,10,12,9,11,11,1\n"
                             "1969-04-06,10,12,9,11,11,1\n"
                             "2020-04-07,10,12\n"
                             "2020-04-08,10,,9,11,11,1\n"
                             "2020-04-09,13,12,9,11,11,1\n"
                             "2020-04-09,10,12,9,8,11,1\n"
                             "\n"
                             "2020-04-10,10,12,9,11,11,-1\n"
                             "2020-04-01,10,12,9,11,11,2\n"
                             "2020-04-13,\"10,12,9,11,11,1\n"
                             "2020-04-14,10,12,9,11,null,null\n";
    const CsvImportResult result = ImportCsv(file);
    const std::vector<std::pair<std::size_t, CsvFault>> wanted{
        {4, CsvFault::NumberNotReadable}, {5, CsvFault::HighBelowLow},
        {6, CsvFault::DateNotReadable},   {7, CsvFault::YearOutOfRange},
        {8, CsvFault::MissingField},      {9, CsvFault::MissingField},
        {10, CsvFault::OutsideHighLow},   {11, CsvFault::OutsideHighLow},
        {13, CsvFault::NegativeVolume},   {14, CsvFault::DuplicateTime},
        {15, CsvFault::QuoteNotClosed}};
    ASSERT_EQ(result.badRows.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(result.badRows[i].line, wanted[i].first);
        EXPECT_EQ(result.badRows[i].fault, wanted[i].second) << wanted[i].first;
    }
    EXPECT_EQ(result.badRowCount, wanted.size());
    ASSERT_EQ(result.bars.size(), 2U);
    EXPECT_EQ(result.bars[0], (Bar{Day(2020, 4, 1), 10, 12, 9, 11, 1}));
    EXPECT_EQ(result.bars[1].time, Day(2020, 4, 14));
}

TEST(CsvImport, StepShowsTheDecimalsOfThePrices) {
    const auto step = [](const std::string& price) {
        return ImportCsv("date,open,high,low,close\n2020-04-17," + price + ',' + price + ',' +
                         price + ',' + price)
            .priceStep;
    };
    EXPECT_DOUBLE_EQ(step("1250"), 1);
    EXPECT_DOUBLE_EQ(step("12.5"), 0.1);
    EXPECT_DOUBLE_EQ(step("1455.219971"), 0.01);
    EXPECT_DOUBLE_EQ(step("1.08345"), 0.00001);
}

TEST(CsvImport, RefusesWhatIsNoPriceFile) {
    const Language language;
    for (const std::string file :
         {"", "\xFF\xFE", "hello", "date,open,high,low\n2020-04-17,1,1,1\n",
          "date,open,high,low,close\n", "\n\n\n", "date open high low close\n"}) {
        const CsvImportResult result = ImportCsv(file);
        EXPECT_FALSE(result.error.isEmpty()) << file;
        EXPECT_TRUE(result.bars.empty());
    }
    QTemporaryDir folder;
    EXPECT_TRUE(ImportCsvFile(folder.filePath("none.csv")).error.contains("none.csv"));
    EXPECT_FALSE(ImportCsvFile(folder.path()).error.isEmpty());
}

// One row a minute, from 2000 on.
std::string LargeFile(int rows) {
    std::string text = "Date,Open,High,Low,Close,Volume\n";
    for (int i = 0; i < rows; ++i) {
        const CalendarDate date = DateFromDayNumber(10957 + i / 1440);
        std::array<char, 80> line;
        std::snprintf(line.data(), line.size(), "%04d-%02d-%02d %02d:%02d,1.25,2.5,1,1,%d\n",
                      date.year, date.month, date.day, i % 1440 / 60, i % 60, i);
        text += line.data();
    }
    return text;
}

class ImportJob : public testing::Test {
protected:
    ImportJob() {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(LargeFile(200000)));
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("large.csv");
};

TEST_F(ImportJob, ReadsInTheBackground) {
    CsvImportJob job(m_path);
    QSignalSpy progressed(&job, &CsvImportJob::progressed);
    QSignalSpy finished(&job, &CsvImportJob::finished);
    job.Start();
    job.Start();
    ASSERT_TRUE(finished.wait(60000));
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(job.Result().bars.size(), 200000U);
    EXPECT_EQ(job.Result().badRowCount, 0U);
    ASSERT_GT(progressed.count(), 3);
    EXPECT_EQ(progressed.last().first().toInt(), 1000);
}

TEST_F(ImportJob, CancelLeavesNothing) {
    CsvImportJob job(m_path);
    QSignalSpy finished(&job, &CsvImportJob::finished);
    QObject::connect(&job, &CsvImportJob::progressed, &job, [&job] { job.Cancel(); });
    job.Start();
    ASSERT_TRUE(finished.wait(60000));
    EXPECT_TRUE(job.Result().cancelled);
    EXPECT_TRUE(job.Result().bars.empty());
}

TEST_F(ImportJob, DestroyingARunningJobIsSafe) {
    for (int i = 0; i < 3; ++i) {
        CsvImportJob job(m_path);
        job.Start();
    }
    CsvImportJob neverStarted(m_path);
}

}  // namespace
}  // namespace ta::terminal
