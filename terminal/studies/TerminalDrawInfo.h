#pragma once

#include "platform/DrawInfo.h"
#include "terminal/studies/StudyStrings.h"

#include <map>
#include <utility>
#include <vector>

namespace ta::terminal {

/// The range of a value axis. Minimum and maximum count while it is not automatic.
struct YAxisRange {
    bool automatic = true;
    double minimum = 0;
    double maximum = 0;

    bool operator==(const YAxisRange&) const = default;
};

/// By the index of the axis.
using YAxisRanges = std::map<int, YAxisRange>;

/// The terminal's draw info: the studies' settings as strings (see StudyStrings), the common chart
/// options, and the ranges of the value axes.
///
/// Values of a string that are missing, unreadable or against a range or rule do not take part in
/// drawing; the study's defaults do. With kDrawInfoLoad such a string stays as it is; with
/// kDrawInfoReplace the bad values, and no others, are written as the defaults. Where a study has
/// several strings, the first one counts.
class TerminalDrawInfo : public TaDrawInfo {
public:
    CommonProp& CommonProperty() override { return m_commonProperty; }

    void vVecCstring2MapParam(const std::vector<CString>& strings, int mode) override;
    void vVecCstring2MapShapeParam(const std::vector<CString>& strings, int mode) override;
    void vMapParam2VecCstring(std::vector<CString>& strings) const override;
    void vMapShapeParam2VecCstring(std::vector<CString>& strings) const override;
    /// Always true.
    bool bDeleteAllParam() override;
    bool bDeleteAllShapeParam() override;
    void vGetStudyInfoVec(std::vector<StudyInfo*>& out, int category) const override;

    bool bGetYaxisRangeAutomatically(int axis) const override;
    void vSetYaxisRangeAutomatically(int axis, bool automatic) override;
    void vSetYaxisMaxVal(int axis, double value) override;
    void vSetYaxisMinVal(int axis, double value) override;
    /// The range of an axis as set; an automatic one for an axis that nobody has set.
    YAxisRange GetYaxisRange(int axis) const;
    /// Of every axis that was set, to put in the place of another draw info's.
    const YAxisRanges& GetYaxisRanges() const { return m_yAxes; }
    void SetYaxisRanges(YAxisRanges ranges) { m_yAxes = std::move(ranges); }

    std::vector<double> vecGetStudyParams(StudyType type) const override;
    std::vector<StudyShape> vecGetStudyShapes(StudyType type) const override;
    /// Keeps the digits after the point that each parameter keeps.
    bool bSetStudyParams(StudyType type, const std::vector<double>& values) override;
    bool bSetStudyShapes(StudyType type, const std::vector<StudyShape>& shapes) override;

    /// The default strings of every study that has parameters (shapes), in the order of the table.
    static std::vector<CString> DefaultParamStrings();
    static std::vector<CString> DefaultShapeStrings();

private:
    CommonProp m_commonProperty;
    StudyStrings m_params;
    StudyStrings m_shapes;
    YAxisRanges m_yAxes;
};

}  // namespace ta::terminal
