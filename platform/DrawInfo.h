#pragma once

#include "platform/CommonProp.h"
#include "platform/Export.h"
#include "platform/Study.h"
#include "platform/Types.h"

#include <vector>

/// How vVecCstring2MapParam and its shape twin take strings.
enum DrawInfoMode : int {
    kDrawInfoLoad = 0,     ///< as stored: strings are kept even when a value is out of range
    kDrawInfoReplace = 1,  ///< from elsewhere: values that break a range or rule become defaults
};

/// The drawing properties of a group, as the chart module keeps them. The chart module implements
/// it; the settings repository owns the one of each group and hands out pointers.
class TADIALOGS_EXPORT ChartBaseDrawInfo {
public:
    virtual ~ChartBaseDrawInfo() = default;

    /// The common chart options and axis settings, to read and to change.
    virtual CommonProp& CommonProperty() = 0;

    /// Takes the parameter (shape) settings, one string per study; they replace all that were
    /// there. Strings of studies that the chart module does not know are kept and come back.
    virtual void vVecCstring2MapParam(const std::vector<CString>& strings, int mode) = 0;
    virtual void vVecCstring2MapShapeParam(const std::vector<CString>& strings, int mode) = 0;
    /// Gives them back, in the order in which they came.
    virtual void vMapParam2VecCstring(std::vector<CString>& strings) const = 0;
    virtual void vMapShapeParam2VecCstring(std::vector<CString>& strings) const = 0;
    virtual bool bDeleteAllParam() = 0;
    virtual bool bDeleteAllShapeParam() = 0;

    /// Replaces `out` by the studies of a category (1 to 4; see StudyCategory), in the order of
    /// their list; empty for another number. The objects stay the chart module's.
    virtual void vGetStudyInfoVec(std::vector<StudyInfo*>& out, int category) const = 0;

    // The range of the value axis `axis`.
    virtual bool bGetYaxisRangeAutomatically(int axis) const = 0;
    virtual void vSetYaxisRangeAutomatically(int axis, bool automatic) = 0;
    virtual void vSetYaxisMaxVal(int axis, double value) = 0;
    virtual void vSetYaxisMinVal(int axis, double value) = 0;
};

/// The draw info of technical-analysis charts: study by study, what the strings above carry.
class TADIALOGS_EXPORT TaDrawInfo : public ChartBaseDrawInfo {
public:
    /// The values of a study: as set, or its defaults; empty for a study that is not known.
    virtual std::vector<double> vecGetStudyParams(StudyType type) const = 0;
    virtual std::vector<StudyShape> vecGetStudyShapes(StudyType type) const = 0;
    /// Sets them. false, and nothing changes, for an unknown study, a wrong number of values, a
    /// value out of range or against a rule.
    virtual bool bSetStudyParams(StudyType type, const std::vector<double>& values) = 0;
    virtual bool bSetStudyShapes(StudyType type, const std::vector<StudyShape>& shapes) = 0;
};
