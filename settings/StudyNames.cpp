#include "settings/StudyNames.h"

#include "platform/DrawInfo.h"
#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>

namespace ta::settings {
namespace {

struct PeriodLabel {
    const char* languageKey;
    bool counted;
};

// In the order of the period codes.
constexpr std::array kPeriodLabels{
    PeriodLabel{"IDS_DIALOG-SETHISTDATA_SHORT_DAILY", false},
    PeriodLabel{"IDS_DIALOG-SETHISTDATA_SHORT_WEEKLY", false},
    PeriodLabel{"IDS_DIALOG-SETHISTDATA_SHORT_MONTHLY", false},
    PeriodLabel{"IDS_DIALOG-SETHISTDATA_SHORT_MINUTE", true},
    PeriodLabel{"IDS_DIALOG-SETHISTDATA_SHORT_SECOND", true},
};

/// The first study, by category and order in it, that `wanted` accepts; null when none.
template <class Wanted>
StudyInfo* FindStudy(const ChartBaseDrawInfo& drawInfo, const Wanted& wanted) {
    for (const StudyCategory category : kStudyCategories) {
        std::vector<StudyInfo*> studies;
        drawInfo.vGetStudyInfoVec(studies, static_cast<int>(category));
        const auto found = std::ranges::find_if(studies, wanted);
        if (found != studies.end()) {
            return *found;
        }
    }
    return nullptr;
}

/// The study name in a legend entry: after the first "(" of an entry marked "*", before the first
/// "-" that is not its first character, without white space around it.
CString PlainStudyName(CString name) {
    if (!name.empty() && name.front() == '*') {
        const std::size_t bracket = name.find('(');
        if (bracket != CString::npos) {
            name = name.substr(bracket + 1);
        }
    }
    const std::size_t dash = name.find('-');
    if (dash != CString::npos && dash > 0) {
        name = name.substr(0, dash);
    }
    return CString(text::Trim(name));
}

}  // namespace

CString StudyName(const ChartBaseDrawInfo& drawInfo, StudyType type) {
    const StudyInfo* study =
        FindStudy(drawInfo, [type](const StudyInfo* info) { return info->GetStudyType() == type; });
    return study == nullptr ? CString() : study->cszGetDisplayName();
}

StudyType StudyOfName(const ChartBaseDrawInfo& drawInfo, const CString& name) {
    const CString plain = PlainStudyName(name);
    const StudyInfo* study = FindStudy(
        drawInfo, [&plain](const StudyInfo* info) { return info->cszGetDisplayName() == plain; });
    return study == nullptr ? 0 : study->GetStudyType();
}

CString DataPeriodLabel(int periodCode, int count) {
    if (periodCode < 0 || periodCode >= static_cast<int>(kPeriodLabels.size())) {
        return {};
    }
    const PeriodLabel& label = kPeriodLabels[static_cast<std::size_t>(periodCode)];
    const CString unit = BKQuoteInterface::GetBKInterface().LangGetLangString(label.languageKey);
    return label.counted ? text::Format("%d%s", count, unit) : unit;
}

CString LayoutDisplayName(const CString& stored) {
    return stored.substr(0, stored.find("###"));
}

}  // namespace ta::settings
