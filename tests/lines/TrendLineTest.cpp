// Trend lines without a window: their data strings and their geometry.

#include "platform/Split.h"
#include "settings/Repository.h"
#include "terminal/lines/TrendLine.h"
#include "terminal/lines/TrendLineGeometry.h"

#include <gtest/gtest.h>

#include <fmt/ranges.h>

#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

using Kind = TrendLineKind;
using Anchors = std::vector<LineAnchor>;
using Lines = std::vector<CString>;

TrendLine MakeLine(Kind kind, Anchors anchors) {
    return {kind, InfoOf(kind).pen, false, std::move(anchors)};
}

// ---- Data strings ----

TEST(TrendLineText, HasTheFieldsThatTheRepositoryReads) {
    TrendLine line = MakeLine(Kind::Parallel, {{18262.5, 3230.78}, {18290, -0.25}, {1, 1e-7}});
    line.pen = {0x00c0ff, 3, 2};
    line.locked = true;
    const CString data = EncodeTrendLine(line);
    EXPECT_EQ(data, "2006/00c0ff/3/2/1/18262.5,3230.78/18290,-0.25/1,1e-07");
    int kind = 0;
    CString name;
    bool flag = false;
    EXPECT_EQ(Repository().DecodeTrendLineData(data, kind, name, flag), 1);
    EXPECT_EQ(kind, 2006);
    EXPECT_TRUE(flag);
}

TEST(TrendLineText, GivesEveryNumberBack) {
    for (const double number : {0.0, 0.1, 1.0 / 3, 18262 + 13.5 / 24, std::nextafter(18262.0, 2e4),
                                -9e6, kLargestLineTime, 5e-324}) {
        for (const TrendLineKindInfo& info : TrendLineKinds()) {
            const TrendLine line = MakeLine(
                info.kind, Anchors(static_cast<std::size_t>(info.anchorCount), {number, -number}));
            EXPECT_EQ(DecodeTrendLine(EncodeTrendLine(line)), line) << EncodeTrendLine(line);
        }
    }
}

TEST(TrendLineText, RefusesWhatIsNotExactlyALine) {
    const CString good = "2004/1565c0/1/0/0/1,2/3,4";
    ASSERT_TRUE(DecodeTrendLine(good));
    // Of each field, what must not stand there.
    const char* const bad[] = {"|2002|2003|2007|2004 |+2004|99999999999",
                               "|1565c|1565c0f|1565cg|-565c0",
                               "|0|6|99999999999",
                               "|5|-1",
                               "|10|2",
                               "|1|1,|,2",
                               "|3|3,|3,4,5|3,nan|inf,4|3, 4|3,4x|3,1e400|2e7,4|3,2e15|3,0x4"};
    for (std::size_t field = 0; field < std::size(bad); ++field) {
        for (const std::string_view text : text::Split(bad[field], '|')) {
            std::vector<std::string_view> fields = text::Split(good, '/');
            fields[field] = text;
            const CString data = fmt::format("{}", fmt::join(fields, "/"));
            EXPECT_FALSE(DecodeTrendLine(data)) << data;
        }
    }
    // Too few fields and too many.
    for (std::size_t length = 0; length < good.size(); ++length) {
        EXPECT_FALSE(DecodeTrendLine(good.substr(0, length))) << length;
    }
    for (const CString& data : Lines{"2004/////", good + "/", good + "/5,6", good + '\0',
                                     CString(100000, '/'), "2002/1565c0/1/0/0/1,2/3,4"}) {
        EXPECT_FALSE(DecodeTrendLine(data)) << data.substr(0, 100);
    }
}

TEST(TrendLineText, ReadsNoMoreThanItWouldWrite) {
    const CString line = "2005/1565c0/2/1/1/16000.5,101.25/16010,102/-16020,1e3";
    for (std::size_t i = 0; i < line.size(); ++i) {
        for (int byte = 0; byte < 256; ++byte) {
            CString changed = line;
            changed[i] = static_cast<char>(byte);
            if (const auto read = DecodeTrendLine(changed)) {
                EXPECT_EQ(DecodeTrendLine(EncodeTrendLine(*read)), read) << changed;
            }
        }
        DecodeTrendLine(line.substr(i));
    }
}

// ---- Geometry ----

LineAnchor At(double bar, double price) {
    return {16000 + bar, price};
}

/// A pane of 100 bars on 1000 pixels and of the prices 100 to 200 on 400 pixels: a bar is 10 pixels
/// wide, a point of price 4 high. Its left upper corner is (50, 20).
DrawingFrame Frame(int bars = 101) {
    auto series = std::make_shared<BarSeries>();
    for (int i = 0; i < bars; ++i) {
        series->push_back({16000.0 + i, 100, 100, 100, 100, 0});
    }
    DrawingFrame frame;
    frame.mapping = {50, 1000, 0, 100, {{20, 400, 100, 200}}, series};
    frame.pane = 0;
    return frame;
}

/// Whether the lines run between the same ends, in either direction.
bool Same(const QLineF& line, const QLineF& other) {
    const auto near = [](const QPointF& a, const QPointF& b) {
        return (a - b).manhattanLength() < 1e-6;
    };
    return (near(line.p1(), other.p1()) && near(line.p2(), other.p2())) ||
           (near(line.p1(), other.p2()) && near(line.p2(), other.p1()));
}

testing::AssertionResult Are(const std::vector<QLineF>& lines, const std::vector<QLineF>& wanted) {
    if (std::ranges::equal(lines, wanted, Same)) {
        return testing::AssertionSuccess();
    }
    auto result = testing::AssertionFailure();
    for (const QLineF& line : lines) {
        result << fmt::format("{},{} to {},{}; ", line.x1(), line.y1(), line.x2(), line.y2());
    }
    return result;
}

TEST(TrendLineShape, AnchorsAreBarsAndRoundedPrices) {
    const DrawingFrame frame = Frame();
    EXPECT_EQ(frame.AnchorAt({50 + 103, 420 - 4 * 30.001}), At(10, 130));
    EXPECT_EQ(frame.AnchorAt({50 + 1057, 420}), At(106, 100)) << "Beyond the last bar.";
    EXPECT_EQ(frame.AnchorAt({50 - 54, 420}), At(-5, 100));
    EXPECT_EQ(frame.PointOf(At(10, 130)), QPointF(150, 300));
    EXPECT_EQ(frame.Moved(At(10, 130), 2.4, 1.234), At(12, 131.23));
    EXPECT_EQ(frame.Moved(At(10.5, 0.12345), 0.4, 0), At(10.5, 0.12345));
}

struct ShapeCase {
    const char* what;
    Kind kind;
    Anchors anchors;
    std::vector<QLineF> lines;
    std::vector<QLineF> guides;
};

TEST(TrendLineShape, IsCutOffAtThePane) {
    const Anchors three{At(0, 130), At(100, 150), At(50, 150)};
    const QLineF first(50, 300, 1050, 220);
    const QLineF second(50, 260, 1050, 180);
    const std::vector<ShapeCase> cases{
        {"a line, to the edges",
         Kind::Line,
         {At(10, 130), At(20, 135)},
         {{50, 320, 1050, 120}},
         {}},
        {"an upright line", Kind::Line, {At(10, 130), At(10, 120)}, {{150, 20, 150, 420}}, {}},
        {"a line far out on both sides",
         Kind::Line,
         {At(-1e6, 150), At(1e6, 150)},
         {{50, 220, 1050, 220}},
         {}},
        {"a segment, at the left edge",
         Kind::Segment,
         {At(10, 130), At(-10, 120)},
         {{50, 320, 150, 300}},
         {}},
        {"a level", Kind::Horizontal, {At(3, 150)}, {{50, 220, 1050, 220}}, {}},
        {"parallels through the third point", Kind::Parallel, three, {first, second}, {}},
        {"rails on both sides", Kind::RailLine, three, {second, {50, 340, 1050, 260}}, {first}},
        {"a segment outside", Kind::Segment, {At(-10, 130), At(-20, 135)}, {}, {}},
        {"a segment past the corner", Kind::Segment, {At(-5, 190), At(5, 215)}, {}, {}},
        {"a line above", Kind::Line, {At(10, 230), At(20, 230)}, {}, {}},
        {"a level below", Kind::Horizontal, {At(10, 99)}, {}, {}},
        {"a cut that begins later", Kind::GoldenCut, {At(130, 120), At(140, 160)}, {}, {}},
        {"a line without direction", Kind::Line, {At(10, 130), At(10, 130)}, {}, {}},
    };
    for (const ShapeCase& test : cases) {
        SCOPED_TRACE(test.what);
        const TrendLinePicture picture = MakePicture(MakeLine(test.kind, test.anchors), Frame());
        EXPECT_TRUE(Are(picture.lines, test.lines));
        EXPECT_TRUE(Are(picture.guides, test.guides));
        EXPECT_EQ(picture.IsInView(), !test.lines.empty());
    }
    const TrendLine level = MakeLine(Kind::Horizontal, {At(1, 150)});
    EXPECT_TRUE(MakePicture(level, Frame(1)).lines.empty()) << "Without bars.";
    DrawingFrame noPane = Frame();
    noPane.pane = -1;
    EXPECT_TRUE(MakePicture(level, noPane).handles.empty());
    EXPECT_TRUE(
        MakePicture(MakeLine(Kind::Line, {At(-1e6, 1e14), At(1e6 + 100, 300 - 1e14)}), Frame())
            .IsInView());
}

TEST(TrendLineShape, AGoldenCutMeasuresFromTheEndOfTheMove) {
    const TrendLine cut = MakeLine(Kind::GoldenCut, {At(40, 100), At(10, 200)});
    const auto picture = MakePicture(cut, Frame());
    ASSERT_EQ(picture.labels.size(), std::size(kGoldenLevels));
    const double prices[] = {200, 176.4, 161.8, 150, 138.2, 121.4, 100};
    for (std::size_t i = 0; i < std::size(prices); ++i) {
        EXPECT_EQ(picture.labels[i].level, kGoldenLevels[i]);
        EXPECT_NEAR(picture.labels[i].price, prices[i], 1e-9);
        const double y = 420 - 4 * (prices[i] - 100);
        EXPECT_TRUE(Are({picture.lines[i]}, {{150, y, 1050, y}}));
    }
    DrawingFrame high = Frame();
    high.mapping.panes[0].low = 155;
    EXPECT_EQ(MakePicture(cut, high).labels.size(), 3u) << "Levels in view only.";
}

TEST(TrendLineShape, HitsAreWithinAFewPixels) {
    const auto picture = MakePicture(MakeLine(Kind::Segment, {At(10, 150), At(20, 150)}), Frame());
    const auto anchor = [&](double x, double y, bool handles) {
        const auto hit = HitTest(picture, {x, y}, handles);
        return hit ? hit->anchor : -2;
    };
    EXPECT_EQ(anchor(200, 223, true), -1);
    EXPECT_EQ(anchor(200, 227, true), -2);
    EXPECT_EQ(anchor(155, 220, true), 0);
    EXPECT_EQ(anchor(245, 224, true), 1);
    EXPECT_EQ(anchor(245, 224, false), -1);
    EXPECT_EQ(anchor(256, 220, false), -2) << "Past the end.";
}

}  // namespace
}  // namespace ta::terminal
