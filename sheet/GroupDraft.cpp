#include "sheet/GroupDraft.h"

#include "platform/DrawInfo.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/TextBridge.h"
#include "settings/StudyLists.h"
#include "settings/TaSettingHandle.h"
#include "sheet/DefaultChanges.h"
#include "sheet/ParamText.h"

#include <algorithm>

namespace ta::sheet {
namespace {

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

/// Null when the group has none that knows studies. Valid until the repository is asked again.
TaDrawInfo* DrawInfoOf(const CString& group) {
    return dynamic_cast<TaDrawInfo*>(Repository().GetDrawInfo(group));
}

StudyLists StoredStudies(const CString& group) {
    StudyLists lists;
    Repository().GetStudyListByGroupName(group, lists);
    return settings::PackStudyLists(lists);
}

int StoredShowCount(const CString& group) {
    return std::clamp(Repository().GetStudyCountByGroupName(group), 1, kPaneCount);
}

}  // namespace

std::vector<StudyType> StudiesIn(const StudyLists& lists) {
    std::vector<StudyType> types;
    for (const std::vector<StudyType>& pane : lists) {
        for (const StudyType type : pane) {
            if (type != kNoStudy && std::ranges::find(types, type) == types.end()) {
                types.push_back(type);
            }
        }
    }
    return types;
}

GroupDraft::GroupDraft(const CString& group) {
    SetGroup(group);
}

void GroupDraft::SetGroup(const CString& group) {
    m_group = group;
    m_uniNum = Repository().GetUniNumByGroupName(group);
}

// ---- Studies ----

StudyLists GroupDraft::Studies() const {
    return m_studies ? *m_studies : StoredStudies(m_group);
}

void GroupDraft::SetStudies(const StudyLists& lists) {
    m_studies = settings::PackStudyLists(lists);
    if (m_studies == StoredStudies(m_group)) {
        m_studies.reset();
    }
}

int GroupDraft::ShowCount() const {
    return m_showCount.value_or(StoredShowCount(m_group));
}

void GroupDraft::SetShowCount(int count) {
    m_showCount = count;
    if (m_showCount == StoredShowCount(m_group)) {
        m_showCount.reset();
    }
}

// ---- Settings of studies ----

bool GroupDraft::IsEditable() const {
    return DrawInfoOf(m_group) != nullptr;
}

std::vector<double> GroupDraft::StoredParams(const StudyFacts& study) const {
    const TaDrawInfo* drawInfo = DrawInfoOf(m_group);
    std::vector<double> values;
    if (drawInfo != nullptr) {
        values = drawInfo->vecGetStudyParams(study.type);
    }
    for (std::size_t i = values.size(); i < study.params.size(); ++i) {
        values.push_back(study.params[i].defaultValue);
    }
    values.resize(study.params.size());
    return values;
}

std::vector<StudyShape> GroupDraft::StoredShapes(const StudyFacts& study) const {
    const TaDrawInfo* drawInfo = DrawInfoOf(m_group);
    std::vector<StudyShape> shapes;
    if (drawInfo != nullptr) {
        shapes = drawInfo->vecGetStudyShapes(study.type);
    }
    for (std::size_t i = shapes.size(); i < study.shapes.size(); ++i) {
        shapes.push_back(study.shapes[i].defaultShape);
    }
    shapes.resize(study.shapes.size());
    return shapes;
}

const GroupDraft::Edits* GroupDraft::EditsOf(StudyType type) const {
    const auto found = m_edits.find(type);
    return found == m_edits.end() ? nullptr : &found->second;
}

QStringList GroupDraft::ParamTexts(const StudyFacts& study) const {
    const std::vector<double> stored = StoredParams(study);
    const Edits* edits = EditsOf(study.type);
    QStringList texts;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const int index = static_cast<int>(i);
        texts.append(edits != nullptr && edits->params.contains(index)
                         ? edits->params.at(index)
                         : FormatNumber(stored[i], study.params[i].decimals));
    }
    return texts;
}

std::vector<StudyShape> GroupDraft::Shapes(const StudyFacts& study) const {
    std::vector<StudyShape> shapes = StoredShapes(study);
    if (const Edits* edits = EditsOf(study.type)) {
        for (const auto& [index, shape] : edits->shapes) {
            if (index < static_cast<int>(shapes.size())) {
                shapes[static_cast<std::size_t>(index)] = shape;
            }
        }
    }
    return shapes;
}

void GroupDraft::SetParamText(const StudyFacts& study, int index, const QString& text) {
    const auto i = static_cast<std::size_t>(index);
    const int decimals = study.params[i].decimals;
    const bool isStored =
        FaultOf(study.params[i], text).isEmpty() &&
        RoundedTo(decimals, *ParseNumber(text)) == RoundedTo(decimals, StoredParams(study)[i]);
    if (isStored) {
        m_edits[study.type].params.erase(index);
    } else {
        m_edits[study.type].params[index] = text;
    }
}

void GroupDraft::SetShape(const StudyFacts& study, int index, const StudyShape& shape) {
    if (shape == StoredShapes(study)[static_cast<std::size_t>(index)]) {
        m_edits[study.type].shapes.erase(index);
    } else {
        m_edits[study.type].shapes[index] = shape;
    }
}

void GroupDraft::RestoreDefaults(const StudyFacts& study) {
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        const StudyParamInfo& param = study.params[i];
        SetParamText(study, static_cast<int>(i), FormatNumber(param.defaultValue, param.decimals));
    }
    for (std::size_t i = 0; i < study.shapes.size(); ++i) {
        SetShape(study, static_cast<int>(i), study.shapes[i].defaultShape);
    }
}

QStringList GroupDraft::ChangesToDefaults(const StudyFacts& study) const {
    return sheet::ChangesToDefaults(study, ParamTexts(study), Shapes(study));
}

// ---- Faults ----

QStringList GroupDraft::Faults(const StudyFacts& study) const {
    const QStringList texts = ParamTexts(study);
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

std::optional<std::vector<double>> GroupDraft::Values(const StudyFacts& study) const {
    if (!std::ranges::all_of(Faults(study), &QString::isEmpty)) {
        return std::nullopt;
    }
    const QStringList texts = ParamTexts(study);
    std::vector<double> values;
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        values.push_back(
            RoundedTo(study.params[i].decimals, *ParseNumber(texts[static_cast<int>(i)])));
    }
    return values;
}

std::set<StudyType> GroupDraft::FaultyStudies() const {
    std::set<StudyType> faulty;
    for (const StudyType type : StudiesIn(Studies())) {
        const auto study = EditsOf(type) != nullptr ? FactsOf(type) : std::nullopt;
        if (study && !Values(*study)) {
            faulty.insert(type);
        }
    }
    return faulty;
}

// ---- Against the repository ----

bool GroupDraft::IsStudyChanged(StudyType type) const {
    const auto study = FactsOf(type);
    if (!study) {
        return false;
    }
    const auto values = Values(*study);
    if (!values) {
        // What cannot be saved is a change as long as the user sees it.
        return FaultyStudies().contains(type);
    }
    return *values != StoredParams(*study) || Shapes(*study) != StoredShapes(*study);
}

bool GroupDraft::IsChanged() const {
    return (m_studies && *m_studies != StoredStudies(m_group)) ||
           (m_showCount && *m_showCount != StoredShowCount(m_group)) ||
           std::ranges::any_of(m_edits,
                               [this](const auto& edit) { return IsStudyChanged(edit.first); });
}

bool GroupDraft::HasEdits() const {
    return m_studies || m_showCount || std::ranges::any_of(m_edits, [](const auto& edit) {
               return !edit.second.params.empty() || !edit.second.shapes.empty();
           });
}

bool GroupDraft::SaveStudy(const StudyFacts& study, Saved& saved) {
    const std::vector<double> values = *Values(study);
    const std::vector<StudyShape> shapes = Shapes(study);
    const std::vector<StudyShape> before = StoredShapes(study);
    const bool paramsDiffer = values != StoredParams(study);
    TaDrawInfo* drawInfo = DrawInfoOf(m_group);
    if (drawInfo == nullptr || (paramsDiffer && !drawInfo->bSetStudyParams(study.type, values)) ||
        (shapes != before && !drawInfo->bSetStudyShapes(study.type, shapes))) {
        return false;
    }
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        if (shapes[i] != before[i]) {
            saved.shapeNames.push_back(ui::FromQString(study.ShapeName(i)));
        }
    }
    return true;
}

GroupDraft::Saved GroupDraft::Save() {
    Saved saved;
    for (const auto& [type, edits] : m_edits) {
        const auto study = FactsOf(type);
        if (!study || !Values(*study) || !IsStudyChanged(type)) {
            continue;
        }
        if (SaveStudy(*study, saved)) {
            saved.types.push_back(type);
        } else {
            saved.refused.append(study->name);
        }
    }
    if (m_studies) {
        Repository().SetStudyListByGroupName(m_group, *m_studies);
    }
    if (m_showCount) {
        Repository().SetStudyCountByGroupName(m_group, *m_showCount);
    }
    DropWhatIsStored();
    return saved;
}

void GroupDraft::DropWhatIsStored() {
    if (m_studies == StoredStudies(m_group)) {
        m_studies.reset();
    }
    if (m_showCount == StoredShowCount(m_group)) {
        m_showCount.reset();
    }
    std::erase_if(m_edits, [this](const auto& edit) { return !IsStudyChanged(edit.first); });
}

}  // namespace ta::sheet
