#pragma once

#include "platform/ComparisonSets.h"
#include "terminal/chart/HistoryDepth.h"
#include "terminal/compare/Comparison.h"
#include "terminal/frame/GridState.h"
#include "terminal/lang/Language.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace ta::terminal {

/// What a comparison chart shows.
struct ComparisonState {
    ComparisonSet set;
    ComparisonMode mode = ComparisonMode::Percent;

    bool operator==(const ComparisonState&) const = default;
};

/// One chart window of the frame.
struct ChartState {
    unsigned char market = 0;
    QString symbol;
    int period = 0;  ///< 0 daily, 1 weekly, 2 monthly, 3 minute, 4 second
    int count = 0;   ///< minutes or seconds of a bar; 0 for the other periods
    int group = -1;  ///< UniNum of the chart's group
    HistoryDepths depths = {};
    std::optional<ComparisonState> comparison = {};  ///< in the place of all above but the depths
    QString axes = {};                               ///< as AxesText gives it

    bool operator==(const ChartState&) const = default;
};

/// One tab of the frame.
struct TabState {
    /// At least one, and as many as the layout has windows or more; the rest is parked. A
    /// comparison has its tab to itself.
    QList<ChartState> charts;
    GridState grid = {};

    bool operator==(const TabState&) const = default;
};

/// What the frame remembers between runs, beside the settings of the configuration store.
struct FrameState {
    QList<TabState> tabs;
    int currentTab = 0;
    Language::Id language = Language::TraditionalChinese;
    bool risingRed = true;
    bool periodBar = true;  ///< whether it is shown
    QList<int> favourites;  ///< bar lengths that the user keeps in it
    QByteArray geometry;    ///< as QWidget::saveGeometry gives it

    bool operator==(const FrameState&) const = default;
};

/// The file beside a configuration store that keeps its frame's state.
QString FrameStatePath(const QString& storePath);

/// Reads an INI file; what is missing or makes no sense stays at its default.
FrameState LoadFrameState(const QString& path);

/// Writes it, keeping sections of others in the file. false when the file cannot be written.
bool SaveFrameState(const QString& path, const FrameState& state);

}  // namespace ta::terminal
