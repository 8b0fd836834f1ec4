// Any bytes as the parameter and shape strings of a group, one a line: they come back as they were,
// every study has usable values, and writing one study leaves the strings of the others alone.

#include "terminal/studies/StudyCatalogue.h"
#include "terminal/studies/TerminalDrawInfo.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace {

using ta::terminal::TerminalDrawInfo;

void Require(bool condition, const char* what) {
    if (!condition) {
        std::cerr << what << '\n';
        std::abort();
    }
}

std::vector<CString> Lines(const CString& text) {
    std::vector<CString> lines;
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != CString::npos; end = text.find('\n', start)) {
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    lines.push_back(text.substr(start));
    return lines;
}

void CheckValues(TerminalDrawInfo& drawInfo) {
    for (const StudyCategory category : kStudyCategories) {
        std::vector<StudyInfo*> studies;
        drawInfo.vGetStudyInfoVec(studies, static_cast<int>(category));
        for (const StudyInfo* study : studies) {
            const std::vector<double> values = drawInfo.vecGetStudyParams(study->GetStudyType());
            const auto& params = study->GetParams();
            Require(values.size() == params.size(), "not a value for each parameter");
            for (std::size_t i = 0; i < values.size(); ++i) {
                Require(values[i] >= params[i].minimum && values[i] <= params[i].maximum,
                        "a value out of range");
            }
            Require(study->vecCheckParams(values).empty(), "values against a rule");
            Require(drawInfo.bSetStudyParams(study->GetStudyType(), values),
                    "own values are refused");
            Require(drawInfo.vecGetStudyParams(study->GetStudyType()) == values,
                    "values came back changed");
            const auto shapes = drawInfo.vecGetStudyShapes(study->GetStudyType());
            Require(shapes.size() == study->GetShapes().size(), "not a shape for each line");
            Require(drawInfo.bSetStudyShapes(study->GetStudyType(), shapes),
                    "own shapes are refused");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<CString> given = Lines({reinterpret_cast<const char*>(data), size});
    std::vector<CString> back;
    for (const int mode : {kDrawInfoLoad, kDrawInfoReplace}) {
        TerminalDrawInfo drawInfo;
        drawInfo.vVecCstring2MapParam(given, mode);
        drawInfo.vVecCstring2MapShapeParam(given, mode);
        drawInfo.vMapParam2VecCstring(back);
        Require(back.size() == given.size() && (mode == kDrawInfoReplace || back == given),
                "strings came back changed");
        CheckValues(drawInfo);
    }
    return 0;
}
