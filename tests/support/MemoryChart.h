#pragma once

#include "platform/DrawInfo.h"
#include "platform/SyncInfo.h"
#include "platform/Window.h"
#include "tests/support/CallPlan.h"

#include <map>
#include <memory>
#include <vector>

namespace ta::test {

/// A study that calculates nothing.
struct MemoryStudy : Study {
    StudyType type = kNoStudy;

    StudyType GetStudyType() const override { return type; }
    std::vector<std::vector<double>> vecCalculate(const BarSeries&,
                                                  const std::vector<double>&) const override {
        return {};
    }
};

/// What a test says about a study type, in plain fields.
class MemoryStudyInfo : public StudyInfo {
public:
    MemoryStudyInfo(StudyType type, StudyCategory inCategory, const char* utf8Name);

    StudyCategory category;
    CString name;  ///< in every language, and short
    std::vector<StudyParamInfo> params;
    std::vector<StudyShapeInfo> shapes;
    MemoryStudy study;

    StudyType GetStudyType() const override { return study.type; }
    StudyCategory GetCategory() const override { return category; }
    CString cszGetDisplayName() const override { return name; }
    CString cszGetChineseName() const override { return name; }
    CString cszGetEnglishName() const override { return name; }
    CString cszGetAbbreviation() const override { return name; }
    const std::vector<StudyParamInfo>& GetParams() const override { return params; }
    const std::vector<StudyShapeInfo>& GetShapes() const override { return shapes; }
    bool bIsOverlay() const override { return false; }
    std::vector<StudyParamFault> vecCheckParams(const std::vector<double>&) const override {
        return {};
    }
    const Study& GetStudy() const override { return study; }
};

/// A draw info that keeps strings and values as they come, without connecting them, and counts how
/// many of its kind live. Has its own copies of the study infos, so that a sanitizer sees one that
/// is used after its draw info. An operation with a bool result that is planned to fail gives false
/// and does nothing.
class MemoryDrawInfo : public TaDrawInfo, public CallPlan {
public:
    explicit MemoryDrawInfo(const std::vector<MemoryStudyInfo>& infos);
    ~MemoryDrawInfo() override;

    /// How many live. The destruction of one that does not live fails the test.
    static int LiveCount();

    ::CommonProp common;
    std::vector<CString> params;
    std::vector<CString> shapes;
    std::vector<int> paramModes;  ///< the mode of each time that strings came
    std::vector<int> shapeModes;
    std::map<StudyType, std::vector<double>> studyParams;
    std::map<StudyType, std::vector<StudyShape>> studyShapes;
    std::vector<MemoryStudyInfo> studyInfos;

    ::CommonProp& CommonProperty() override { return common; }
    void vVecCstring2MapParam(const std::vector<CString>& strings, int mode) override {
        params = strings;
        paramModes.push_back(mode);
    }
    void vVecCstring2MapShapeParam(const std::vector<CString>& strings, int mode) override {
        shapes = strings;
        shapeModes.push_back(mode);
    }
    void vMapParam2VecCstring(std::vector<CString>& strings) const override { strings = params; }
    void vMapShapeParam2VecCstring(std::vector<CString>& strings) const override {
        strings = shapes;
    }
    bool bDeleteAllParam() override { return Enter("bDeleteAllParam") && Clear(params); }
    bool bDeleteAllShapeParam() override { return Enter("bDeleteAllShapeParam") && Clear(shapes); }
    void vGetStudyInfoVec(std::vector<StudyInfo*>& out, int category) const override;
    bool bGetYaxisRangeAutomatically(int) const override { return true; }
    void vSetYaxisRangeAutomatically(int, bool) override {}
    void vSetYaxisMaxVal(int, double) override {}
    void vSetYaxisMinVal(int, double) override {}
    // Known are the studies that have values here; the number of new values must be the same.
    std::vector<double> vecGetStudyParams(StudyType type) const override {
        return Get(studyParams, type);
    }
    std::vector<StudyShape> vecGetStudyShapes(StudyType type) const override {
        return Get(studyShapes, type);
    }
    bool bSetStudyParams(StudyType type, const std::vector<double>& values) override {
        return Enter("bSetStudyParams") && Set(studyParams, type, values);
    }
    bool bSetStudyShapes(StudyType type, const std::vector<StudyShape>& values) override {
        return Enter("bSetStudyShapes") && Set(studyShapes, type, values);
    }

private:
    static bool Clear(std::vector<CString>& strings) {
        strings.clear();
        return true;
    }
    template <class Value>
    static Value Get(const std::map<int, Value>& map, int key) {
        const auto found = map.find(key);
        return found == map.end() ? Value() : found->second;
    }
    template <class Values>
    static bool Set(std::map<StudyType, Values>& studies, StudyType type, const Values& values) {
        const bool fits = studies.contains(type) && studies[type].size() == values.size();
        if (fits) {
            studies[type] = values;
        }
        return fits;
    }
};

/// Makes memory draw infos. `studyInfos` begins with the studies of a new group: 0, 4 (price), 16
/// (volume), 22, 23 (oscillators); a draw info takes what is there when it is made. A call that is
/// planned to fail gives null.
class MemoryChartModule : public ChartModule, public CallPlan {
public:
    MemoryChartModule();

    std::vector<MemoryStudyInfo> studyInfos;
    std::vector<CWnd*> windows;  ///< the window of each request

    std::unique_ptr<TaDrawInfo> MakeTaDrawInfo(CWnd& window) override;
};

}  // namespace ta::test
