#include "terminal/frame/FrameState.h"

#include "terminal/frame/ComparisonJson.h"

#include <QFileInfo>
#include <QJsonDocument>
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

TabState ReadTab(const QSettings& file) {
    TabState tab;
    tab.market = static_cast<unsigned char>(file.value("market").toUInt());
    tab.symbol = file.value("symbol").toString();
    tab.period = file.value("period").toInt();
    tab.count = file.value("count").toInt();
    tab.group = file.value("group", -1).toInt();
    tab.depths = ReadDepths(file.value("depths").toStringList());
    tab.comparison = ReadComparison(file.value("comparison").toString());
    tab.axes = file.value("axes").toString();
    return tab;
}

void WriteTab(QSettings& file, const TabState& tab) {
    file.setValue("market", static_cast<unsigned>(tab.market));
    file.setValue("symbol", tab.symbol);
    file.setValue("period", tab.period);
    file.setValue("count", tab.count);
    file.setValue("group", tab.group);
    file.setValue("depths", DepthTexts(tab.depths));
    file.setValue("axes", tab.axes);
    if (tab.comparison) {
        file.setValue("comparison", ComparisonText(*tab.comparison));
    }
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
