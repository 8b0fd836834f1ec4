#include "terminal/frame/FrameState.h"

#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr int kMaxTabs = 50;

TabState ReadTab(const QSettings& file) {
    TabState tab;
    tab.market = static_cast<unsigned char>(file.value("market").toUInt());
    tab.symbol = file.value("symbol").toString();
    tab.period = file.value("period").toInt();
    tab.count = file.value("count").toInt();
    tab.group = file.value("group", -1).toInt();
    return tab;
}

void WriteTab(QSettings& file, const TabState& tab) {
    file.setValue("market", static_cast<unsigned>(tab.market));
    file.setValue("symbol", tab.symbol);
    file.setValue("period", tab.period);
    file.setValue("count", tab.count);
    file.setValue("group", tab.group);
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
