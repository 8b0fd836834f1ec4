#include "terminal/frame/FrameState.h"

#include "terminal/frame/ComparisonJson.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QLocale>
#include <QSettings>

#include <algorithm>
#include <vector>

namespace ta::terminal {
namespace {

constexpr int kMaxTabs = 50;
constexpr int kMaxDepths = 1000;

/// "period/minutes/mode/records/day"; nothing for a text that is none.
void ReadDepth(const QString& text, HistoryDepths& depths) {
    const QStringList parts = text.split('/');
    std::vector<long> numbers;
    for (const QString& part : parts) {
        bool isNumber = false;
        numbers.push_back(part.toLong(&isNumber));
        if (!isNumber || numbers.back() < 0 || numbers.back() > 1000000) {
            return;
        }
    }
    if (numbers.size() == 5) {
        depths[{static_cast<int>(numbers[0]), static_cast<int>(numbers[1])}] = {
            static_cast<int>(numbers[2]), numbers[3], numbers[4]};
    }
}

HistoryDepths ReadDepths(const QStringList& texts) {
    HistoryDepths depths;
    for (const QString& text : texts.mid(0, kMaxDepths)) {
        ReadDepth(text, depths);
    }
    return depths;
}

QStringList DepthTexts(const HistoryDepths& depths) {
    QStringList texts;
    for (const auto& [period, depth] : depths) {
        texts.append(QString("%1/%2/%3/%4/%5")
                         .arg(period.first)
                         .arg(period.second)
                         .arg(depth.readMode)
                         .arg(depth.recordCount)
                         .arg(depth.startDay));
    }
    return texts;
}

constexpr const char* kModes[] = {"percent", "indexed", "prices"};  // by ComparisonMode

/// Nothing for a tab that is no comparison; an empty one for a text that cannot be read.
std::optional<ComparisonState> ReadComparison(const QString& text) {
    if (text.isEmpty()) {
        return std::nullopt;
    }
    const QJsonObject json = QJsonDocument::fromJson(text.toUtf8()).object();
    ComparisonState comparison{SetFromJson(json)};
    const auto* const mode = std::ranges::find_if(
        kModes, [mode = json["mode"].toString()](const char* known) { return mode == known; });
    if (mode != std::end(kModes)) {
        comparison.mode = static_cast<ComparisonMode>(mode - kModes);
    }
    return comparison;
}

QString ComparisonText(const ComparisonState& comparison) {
    QJsonObject json = ToJson(comparison.set);
    json["mode"] = kModes[static_cast<std::size_t>(comparison.mode)];
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

ChartState ReadChart(const QSettings& file) {
    ChartState chart;
    chart.market = static_cast<unsigned char>(file.value("market").toUInt());
    chart.symbol = file.value("symbol").toString();
    chart.period = file.value("period").toInt();
    chart.count = file.value("count").toInt();
    chart.group = file.value("group", -1).toInt();
    chart.depths = ReadDepths(file.value("depths").toStringList());
    chart.comparison = ReadComparison(file.value("comparison").toString());
    chart.axes = file.value("axes").toString();
    return chart;
}

void WriteChart(QSettings& file, const ChartState& chart) {
    file.setValue("market", static_cast<unsigned>(chart.market));
    file.setValue("symbol", chart.symbol);
    file.setValue("period", chart.period);
    file.setValue("count", chart.count);
    file.setValue("group", chart.group);
    file.setValue("depths", DepthTexts(chart.depths));
    file.setValue("axes", chart.axes);
    if (chart.comparison) {
        file.setValue("comparison", ComparisonText(*chart.comparison));
    }
}

/// "format/place/place..."; nothing for a text that is none.
void ReadDividers(const QString& text, std::map<int, layout::Places>& dividers) {
    const QStringList parts = text.split('/');
    layout::Places places;
    for (const QString& part : parts.mid(1)) {
        places.push_back(part.toDouble());
    }
    const int format = parts[0].toInt();
    if (layout::IsFormat(format) && layout::Fit(layout::LayoutOf(format), places)) {
        dividers[format] = places;
    }
}

QStringList DividerTexts(const std::map<int, layout::Places>& dividers) {
    QStringList texts;
    for (const auto& [format, places] : dividers) {
        QStringList parts{QString::number(format)};
        for (const double place : places) {
            parts.append(QString::number(place, 'g', QLocale::FloatingPointShortest));
        }
        texts.append(parts.join('/'));
    }
    return texts;
}

GridState ReadGrid(const QSettings& file) {
    GridState grid;
    grid.format = file.value("format", grid.format).toInt();
    grid.active = file.value("active", grid.active).toInt();
    grid.guest = file.value("guest", grid.guest).toInt();
    for (const QString& text : file.value("dividers").toStringList()) {
        ReadDividers(text, grid.dividers);
    }
    grid.links.symbol = file.value("sameSymbol").toBool();
    grid.links.period = file.value("samePeriod").toBool();
    grid.links.cursor = file.value("sameCursor").toBool();
    return grid;
}

void WriteGrid(QSettings& file, const GridState& grid) {
    file.setValue("format", grid.format);
    file.setValue("active", grid.active);
    file.setValue("guest", grid.guest);
    file.setValue("dividers", DividerTexts(grid.dividers));
    file.setValue("sameSymbol", grid.links.symbol);
    file.setValue("samePeriod", grid.links.period);
    file.setValue("sameCursor", grid.links.cursor);
}

/// The first chart stands in the tab itself, as when a tab had one chart.
TabState ReadTab(QSettings& file) {
    TabState tab{{ReadChart(file)}};
    if (tab.charts.front().comparison) {
        return tab;
    }
    tab.grid = ReadGrid(file);
    const int others = std::min(file.beginReadArray("others"), layout::kMostWindows - 1);
    for (int i = 0; i < others; ++i) {
        file.setArrayIndex(i);
        tab.charts.append(ReadChart(file));
        tab.charts.back().comparison.reset();
    }
    file.endArray();
    return tab;
}

void WriteTab(QSettings& file, const TabState& tab) {
    WriteChart(file, tab.charts.front());
    WriteGrid(file, tab.grid);
    file.beginWriteArray("others", static_cast<int>(tab.charts.size()) - 1);
    for (int i = 1; i < tab.charts.size(); ++i) {
        file.setArrayIndex(i - 1);
        WriteChart(file, tab.charts[i]);
    }
    file.endArray();
}

}  // namespace

QString FrameStatePath(const QString& storePath) {
    const QFileInfo store(storePath);
    return store.absolutePath() + '/' + store.completeBaseName() + "-window.ini";
}

FrameState LoadFrameState(const QString& path) {
    QSettings file(path, QSettings::IniFormat);
    FrameState state;
    file.beginGroup("frame");
    state.currentTab = file.value("currentTab").toInt();
    state.language = file.value("language").toString() == "en" ? Language::English
                                                               : Language::TraditionalChinese;
    state.risingRed = file.value("risingRed", true).toBool();
    state.periodBar = file.value("periodBar", true).toBool();
    for (const QString& length : file.value("favourites").toStringList()) {
        state.favourites.append(length.toInt());  // the bar leaves out what is none
    }
    state.geometry = file.value("geometry").toByteArray();
    file.endGroup();
    const int tabs = std::min(file.beginReadArray("tabs"), kMaxTabs);
    for (int i = 0; i < tabs; ++i) {
        file.setArrayIndex(i);
        state.tabs.append(ReadTab(file));
    }
    file.endArray();
    return state;
}

bool SaveFrameState(const QString& path, const FrameState& state) {
    QSettings file(path, QSettings::IniFormat);
    file.beginGroup("frame");
    file.setValue("currentTab", state.currentTab);
    file.setValue("language", state.language == Language::English ? "en" : "zh_TW");
    file.setValue("risingRed", state.risingRed);
    QStringList favourites;
    for (const int length : state.favourites) {
        favourites.append(QString::number(length));
    }
    file.setValue("periodBar", state.periodBar);
    file.setValue("favourites", favourites);
    file.setValue("geometry", state.geometry);
    file.endGroup();
    file.remove("tabs");
    file.beginWriteArray("tabs", static_cast<int>(state.tabs.size()));
    for (int i = 0; i < state.tabs.size(); ++i) {
        file.setArrayIndex(i);
        WriteTab(file, state.tabs[i]);
    }
    file.endArray();
    file.sync();
    return file.status() == QSettings::NoError;
}

}  // namespace ta::terminal
