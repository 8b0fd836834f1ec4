#pragma once

#include "settings/GroupRecord.h"
#include "terminal/plot/PlotModel.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

class TaDrawInfo;

namespace ta::terminal {

/// The bars of a chart and the studies of its group, calculated; no drawing. Studies are copied
/// from the repository's draw info, so nothing here dies with a reload.
class ChartModel : public PlotModel {
public:
    /// Null is no history.
    void SetBars(std::shared_ptr<const BarSeries> bars, ChartTitle title);
    /// Reads a group from the settings repository: panes, parameters, shapes, options. A study is
    /// calculated again only when its parameters or the bars are others than before. An unknown
    /// group has one pane without studies. Panes of nothing but studies of the volume are left out
    /// for bars that have none, and such bars that have closes only are a line.
    void LoadGroup(const CString& name);
    /// The group's pane that stands at a place; counted from 0 as the place.
    int GroupPane(int pane) const { return m_groupPanes[static_cast<std::size_t>(pane)]; }

    std::optional<LastPrice> Last() const override;

    std::vector<LegendEntry> Legend(int pane, int bar, const PlotTheme& theme) const override;
    QString BarText(int bar) const override;
    /// As the group's lock mode names them.
    std::vector<double> LockValues(const PlotCursor& cursor, bool prices) const override;
    double CursorValue(int bar) const override;

    /// How often a study was calculated so far.
    int CalculationCount() const { return m_calculations; }

private:
    using CalculationKey = std::pair<StudyType, std::vector<double>>;
    /// The values of a study, and between which each output's are.
    struct Calculation {
        std::shared_ptr<const StudyValues> values;
        std::vector<ValueSpan> spans;
    };
    using Calculations = std::map<CalculationKey, Calculation>;
    using KnownStudies = std::map<StudyType, StudyInfo*>;

    ChartStudy MakeStudy(StudyType type, const KnownStudies& known, const TaDrawInfo* drawInfo,
                         Calculations& used);
    const Calculation& Calculate(const StudyInfo& info, const std::vector<double>& params,
                                 Calculations& used);
    bool IsShown(const std::vector<StudyType>& studies, const KnownStudies& known) const;

    std::vector<int> m_groupPanes{0};
    Calculations m_calculated;
    int m_calculations = 0;
};

}  // namespace ta::terminal
