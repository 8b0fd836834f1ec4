#include "sheet/GroupDraft.h"

#include "platform/DrawInfo.h"
#include "platform/ui/LangText.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "settings/StudyLists.h"
#include "sheet/ParamText.h"

#include <algorithm>
#include <iterator>

namespace ta::sheet {

using ReloadHold = CTaSettingHandle::ReloadHold;

void GroupDraft::Written::Add(const Written& other) {
    any = any || other.any;
    std::ranges::copy(other.types, std::back_inserter(types));
    std::ranges::copy(other.shapeNames, std::back_inserter(shapeNames));
    refused += other.refused;
}

GroupDraft::GroupDraft(const CString& group) : m_group(group) {
    const ReloadHold hold(Repository());
    m_uniNum = Repository().GetUniNumByGroupName(group);
    m_base = ReadGroup(group);
    m_value = m_base;
}

void GroupDraft::SetStudies(const StudyLists& lists) {
    m_value.studies = settings::PackStudyLists(lists);
    const std::vector<StudyType> now = StudiesIn(m_value.studies);
    const std::vector<StudyType> stored = StudiesIn(m_base.studies);
    for (auto& [type, values] : m_value.settings) {
        if (std::ranges::count(now, type) == 0 && std::ranges::count(stored, type) == 0) {
            values.shapes = m_base.settings.at(type).shapes;
        }
    }
}

// ---- Settings of studies ----

bool GroupDraft::IsEditable() const {
    return DrawInfoOf(m_group) != nullptr;
}

StudyValues& GroupDraft::Values(const StudyFacts& study) {
    auto found = m_value.settings.find(study.type);
    if (found == m_value.settings.end()) {
        const ReloadHold hold(Repository());
        found = m_value.settings.emplace(study.type, ReadSettings(m_group, study)).first;
        m_base.settings.insert(*found);
    }
    return found->second;
}

const StudyValues& GroupDraft::SettingsOf(const StudyFacts& study) {
    return Values(study);
}

void GroupDraft::SetParamText(const StudyFacts& study, int index, const QString& text) {
    const StudyParamInfo& info = study.params[static_cast<std::size_t>(index)];
    const bool canBeSaved = FaultOf(info, text).isEmpty();
    Values(study).params[index] =
        canBeSaved ? FormatNumber(*ParseNumber(text), info.decimals) : text;
}

void GroupDraft::SetShape(const StudyFacts& study, int index, const StudyShape& shape) {
    Values(study).shapes[static_cast<std::size_t>(index)] = shape;
}

void GroupDraft::RestoreDefaults(const StudyFacts& study) {
    StudyValues& values = Values(study);
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        values.params[static_cast<int>(i)] =
            FormatNumber(study.params[i].defaultValue, study.params[i].decimals);
    }
    for (std::size_t i = 0; i < study.shapes.size(); ++i) {
        values.shapes[i] = study.shapes[i].defaultShape;
    }
}

// ---- Faults ----

QStringList GroupDraft::Faults(const StudyFacts& study) {
    const QStringList texts = Values(study).params;
    QStringList faults;
    std::vector<double> values;
    for (int i = 0; i < texts.size(); ++i) {
        faults.append(FaultOf(study.params[static_cast<std::size_t>(i)], texts[i]));
        values.push_back(ParseNumber(texts[i]).value_or(0));
    }
    // Rules are between values that can be; another fault may be the cause of a broken one.
    if (!values.empty() && std::ranges::all_of(faults, &QString::isEmpty)) {
        for (const StudyParamFault& broken : BrokenRules(study.type, values)) {
            faults[broken.parameter] = ui::LangText(broken.messageKey);
        }
    }
    return faults;
}

std::optional<std::vector<double>> GroupDraft::Numbers(const StudyFacts& study) {
    if (!std::ranges::all_of(Faults(study), &QString::isEmpty)) {
        return std::nullopt;
    }
    std::vector<double> numbers;
    for (const QString& text : Values(study).params) {
        numbers.push_back(*ParseNumber(text));
    }
    return numbers;
}

std::set<StudyType> GroupDraft::FaultyStudies() {
    std::set<StudyType> faulty;
    for (const StudyType type : StudiesIn(m_value.studies)) {
        const auto edited = m_value.settings.find(type);
        if (edited == m_value.settings.end() || edited->second == m_base.settings.at(type)) {
            continue;
        }
        if (const auto study = FactsOf(type); study && !Numbers(*study)) {
            faulty.insert(type);
        }
    }
    return faulty;
}

// ---- To and from the repository ----

bool GroupDraft::WriteSettings(const StudyFacts& study, Written& written) {
    const auto numbers = Numbers(study);
    const StudyValues& values = Values(study);
    const StudyValues before = ReadSettings(m_group, study);
    TaDrawInfo* drawInfo = DrawInfoOf(m_group);
    if (!numbers || values == before) {
        return true;
    }
    if (drawInfo == nullptr ||
        (values.params != before.params && !drawInfo->bSetStudyParams(study.type, *numbers)) ||
        (values.shapes != before.shapes && !drawInfo->bSetStudyShapes(study.type, values.shapes))) {
        return false;
    }
    written.types.push_back(study.type);
    for (std::size_t i = 0; i < values.shapes.size(); ++i) {
        if (values.shapes[i] != before.shapes[i]) {
            written.shapeNames.push_back(ui::FromQString(study.ShapeName(i)));
        }
    }
    return true;
}

GroupDraft::Written GroupDraft::Write() {
    const ReloadHold hold(Repository());
    Written written;
    for (const auto& [type, values] : m_value.settings) {
        if (const auto study = FactsOf(type); study && !WriteSettings(*study, written)) {
            written.refused.append(study->name);
        }
    }
    const GroupValues before = ReadGroup(m_group);
    if (m_value.studies != before.studies) {
        Repository().SetStudyListByGroupName(m_group, m_value.studies);
    }
    if (m_value.showCount != before.showCount) {
        Repository().SetStudyCountByGroupName(m_group, m_value.showCount);
    }
    written.any = !written.types.empty() || m_value.studies != before.studies ||
                  m_value.showCount != before.showCount;
    return written;
}

void GroupDraft::Rebase(const CString& group) {
    const ReloadHold hold(Repository());
    m_group = group;
    m_uniNum = Repository().GetUniNumByGroupName(group);
    GroupValues now = ReadGroup(group);
    for (const auto& [type, values] : m_base.settings) {
        const auto study = FactsOf(type);
        now.settings[type] = study ? ReadSettings(group, *study) : values;
    }
    m_value = Rebased(m_value, m_base, now);
    m_base = std::move(now);
}

}  // namespace ta::sheet
