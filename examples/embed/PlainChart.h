#pragma once

#include "platform/DrawInfo.h"
#include "platform/SyncInfo.h"

/// The drawing properties of a group in a chart module that has no studies yet: the chart options,
/// and the settings strings as they came.
class PlainDrawInfo final : public TaDrawInfo {
public:
    CommonProp& CommonProperty() override { return m_common; }

    void vVecCstring2MapParam(const std::vector<CString>& strings, int) override {
        m_params = strings;
    }
    void vVecCstring2MapShapeParam(const std::vector<CString>& strings, int) override {
        m_shapes = strings;
    }
    void vMapParam2VecCstring(std::vector<CString>& strings) const override { strings = m_params; }
    void vMapShapeParam2VecCstring(std::vector<CString>& strings) const override {
        strings = m_shapes;
    }
    bool bDeleteAllParam() override {
        m_params.clear();
        return true;
    }
    bool bDeleteAllShapeParam() override {
        m_shapes.clear();
        return true;
    }
    void vGetStudyInfoVec(std::vector<StudyInfo*>& out, int) const override { out.clear(); }

    bool bGetYaxisRangeAutomatically(int) const override { return true; }
    void vSetYaxisRangeAutomatically(int, bool) override {}
    void vSetYaxisMaxVal(int, double) override {}
    void vSetYaxisMinVal(int, double) override {}

    std::vector<double> vecGetStudyParams(StudyType) const override { return {}; }
    std::vector<StudyShape> vecGetStudyShapes(StudyType) const override { return {}; }
    bool bSetStudyParams(StudyType, const std::vector<double>&) override { return false; }
    bool bSetStudyShapes(StudyType, const std::vector<StudyShape>&) override { return false; }

private:
    CommonProp m_common;
    std::vector<CString> m_params;
    std::vector<CString> m_shapes;
};

class PlainChartModule final : public ta::ChartModule {
public:
    std::unique_ptr<TaDrawInfo> MakeTaDrawInfo(CWnd&) override {
        return std::make_unique<PlainDrawInfo>();
    }
};
