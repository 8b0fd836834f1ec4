#include "terminal/plot/ChartAxesText.h"

#include "platform/ui/TextBridge.h"
#include "terminal/plot/ChartAxes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr const char* kWidth = "width";
constexpr const char* kEdge = "edge";
constexpr const char* kRanges = "ranges";

QJsonArray ToJson(const YAxisRanges& ranges) {
    QJsonArray array;
    for (const auto& [axis, range] : ranges) {
        if (!range.automatic) {
            array.append(QJsonArray{axis, range.minimum, range.maximum});
        }
    }
    return array;
}

YAxisRanges RangesFromJson(const QJsonArray& array) {
    YAxisRanges ranges;
    for (const auto& value : array) {
        const QJsonArray entry = value.toArray();
        const YAxisRange range{false, entry.at(1).toDouble(NAN), entry.at(2).toDouble(NAN)};
        if (range.minimum <= range.maximum) {
            ranges[entry.at(0).toInt()] = range;
        }
    }
    return ranges;
}

/// -1 for a value that is none.
int PercentOf(const QJsonValue& value) {
    const int percent = value.toInt(-1);
    return percent <= 100 ? percent : -1;
}

}  // namespace

QString AxesText(const ChartAxes& axes) {
    QJsonObject json;
    if (axes.WidthPercent() != 100) {
        json[kWidth] = axes.WidthPercent();
    }
    if (axes.EdgePercent() != 0) {
        json[kEdge] = axes.EdgePercent();
    }
    QJsonObject ranges;
    for (const auto& [history, ofHistory] : axes.AllRanges()) {
        ranges[ui::ToQString(history)] = ToJson(ofHistory);
    }
    if (!ranges.isEmpty()) {
        json[kRanges] = ranges;
    }
    return json.isEmpty() ? QString() : QJsonDocument(json).toJson(QJsonDocument::Compact);
}

void TakeAxesText(ChartAxes& axes, const QString& text) {
    const QJsonObject json = QJsonDocument::fromJson(text.toUtf8()).object();
    CommonProp& common = axes.DrawInfo().CommonProperty();
    const int width = PercentOf(json[kWidth]);
    common.bYaxisWidthDefault = width < 0;
    common.vSetYaxisWidth(width < 0 ? 100 : width);
    const int edge = PercentOf(json[kEdge]);
    common.bEdgeSpaceDefault = edge < 0;
    common.SetDrawChartMovePixel(0, std::max(edge, 0));
    std::map<CString, YAxisRanges> ranges;
    const QJsonObject histories = json[kRanges].toObject();
    for (auto history = histories.begin(); history != histories.end(); ++history) {
        ranges[ui::FromQString(history.key())] = RangesFromJson(history.value().toArray());
    }
    axes.SetAllRanges(std::move(ranges));
}

}  // namespace ta::terminal
