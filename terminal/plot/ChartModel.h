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
    /// group has one pane without studies.
    void LoadGroup(const CString& name);

    std::vector<LegendEntry> Legend(int pane, int bar, const PlotTheme& theme) const override;
    QString BarText(int bar) const override;
    /// As the group's lock mode names them.
    std::vector<double> LockValues(const PlotCursor& cursor, bool prices) const override;
    double CursorValue(int bar) const override;

    /// How often a study was calculated so far.
    int CalculationCount() const { return m_calculations; }

private:
    using CalculationKey = std::pair<StudyType, std::vector<double>>;
    using Calculations = std::map<CalculationKey, std::shared_ptr<const StudyValues>>;
    using KnownStudies = std::map<StudyType, StudyInfo*>;

    ChartStudy MakeStudy(StudyType type, const KnownStudies& known, const TaDrawInfo* drawInfo,
                         Calculations& used);
    std::shared_ptr<const StudyValues> Calculate(const StudyInfo& info,
                                                 const std::vector<double>& params,
                                                 Calculations& used);

    Calculations m_calculated;
    int m_calculations = 0;
};

}  // namespace ta::terminal
