#include "tests/support/MemoryChart.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <set>

namespace ta::test {
namespace {

// Never destroyed: the process-wide repository may destroy draw infos at the very end.
std::set<const MemoryDrawInfo*>& LiveDrawInfos() {
    static auto& live = *new std::set<const MemoryDrawInfo*>;
    return live;
}

}  // namespace

MemoryStudyInfo::MemoryStudyInfo(StudyType type, StudyCategory inCategory, const char* utf8Name)
    : category(inCategory), name(text::FromUtf8(utf8Name)) {
    study.type = type;
}

MemoryDrawInfo::MemoryDrawInfo(const std::vector<MemoryStudyInfo>& infos) : studyInfos(infos) {
    LiveDrawInfos().insert(this);
}

MemoryDrawInfo::~MemoryDrawInfo() {
    EXPECT_EQ(LiveDrawInfos().erase(this), 1U) << "A draw info was destroyed twice.";
}

int MemoryDrawInfo::LiveCount() {
    return static_cast<int>(LiveDrawInfos().size());
}

void MemoryDrawInfo::vGetStudyInfoVec(std::vector<StudyInfo*>& out, int category) const {
    out.clear();
    for (const MemoryStudyInfo& info : studyInfos) {
        if (static_cast<int>(info.category) == category) {
            // The interface hands out changeable infos from a const operation.
            out.push_back(const_cast<MemoryStudyInfo*>(&info));
        }
    }
}

MemoryChartModule::MemoryChartModule()
    : studyInfos{{0, StudyCategory::Price, "K線圖"},
                 {4, StudyCategory::Price, "移動平均線"},
                 {16, StudyCategory::Volume, "成交量"},
                 {22, StudyCategory::Oscillator, "MACD"},
                 {23, StudyCategory::Oscillator, "KD"}} {}

std::unique_ptr<TaDrawInfo> MemoryChartModule::MakeTaDrawInfo(CWnd& window) {
    windows.push_back(&window);
    return Enter("MakeTaDrawInfo") ? std::make_unique<MemoryDrawInfo>(studyInfos) : nullptr;
}

}  // namespace ta::test
