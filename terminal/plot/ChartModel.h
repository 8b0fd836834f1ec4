#pragma once

#include "platform/CommonProp.h"
#include "platform/Study.h"
#include "settings/GroupRecord.h"
#include "terminal/plot/PlotNumbers.h"

#include <QString>

#include <map>
#include <memory>
#include <utility>
#include <vector>

class TaDrawInfo;

namespace ta::terminal {

/// The values of a study over all bars: one vector per output, NaN for none.
using StudyValues = std::vector<std::vector<double>>;

struct ChartOutput {
    StudyDrawKind kind = StudyDrawKind::Line;
    QString name;
    StudyShape shape;
};

/// A study of the group as the chart needs it.
struct ChartStudy {
    StudyType type = kNoStudy;
    QString name;        ///< "#99" for a study that is not known
    QString parameters;  ///< "5,10,20"
    bool onPriceScale = false;
    NumberKind numbers = NumberKind::Plain;
    std::vector<ChartOutput> outputs;  ///< none for a study that is not known
    std::shared_ptr<const StudyValues> values;

    bool HasCandlesticks() const;
    /// Of one output; NaN outside the bars.
    double ValueAt(std::size_t output, int bar) const;
};

/// The studies of one pane, in slot order.
using ChartPane = std::vector<ChartStudy>;

/// What the chart says about the symbol.
struct ChartTitle {
    QString symbol;
    QString period;
    int periodCode = 0;  ///< as BarsKey::period
    int priceDecimals = 2;
};

/// The bars of a chart and the studies of its group, calculated; no drawing. Studies are copied
/// from the repository's draw info, so nothing here dies with a reload.
class ChartModel {
public:
    /// Null is no history.
    void SetBars(std::shared_ptr<const BarSeries> bars, ChartTitle title);
    /// Reads a group from the settings repository: panes, parameters, shapes, options. A study is
    /// calculated again only when its parameters or the bars are others than before. An unknown
    /// group has one pane without studies.
    void LoadGroup(const CString& name);

    /// Never null.
    const std::shared_ptr<const BarSeries>& SharedBars() const { return m_bars; }
    const BarSeries& Bars() const { return *m_bars; }
    int BarCount() const { return static_cast<int>(m_bars->size()); }
    const ChartTitle& Title() const { return m_title; }
    const std::vector<ChartPane>& Panes() const { return m_panes; }
    const CommonProp& Options() const { return m_options; }
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

    std::shared_ptr<const BarSeries> m_bars = std::make_shared<const BarSeries>();
    ChartTitle m_title;
    std::vector<ChartPane> m_panes{1};
    CommonProp m_options;
    Calculations m_calculated;
    int m_calculations = 0;
};

}  // namespace ta::terminal
