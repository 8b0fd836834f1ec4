#include "sheet/GroupValues.h"

#include "platform/DrawInfo.h"
#include "settings/Repository.h"
#include "settings/StudyLists.h"
#include "sheet/ParamText.h"

#include <algorithm>

namespace ta::sheet {
namespace {

template <class Item>
Item RebasedItem(const Item& value, const Item& base, const Item& now) {
    return value == base ? now : value;
}

/// Item by item, as far as all have it.
template <class Items>
Items RebasedItems(const Items& value, const Items& base, const Items& now) {
    Items items = now;
    const auto count = std::min({value.size(), base.size(), now.size()});
    for (decltype(items.size()) i = 0; i < count; ++i) {
        items[i] = RebasedItem(value[i], base[i], now[i]);
    }
    return items;
}

}  // namespace

TaDrawInfo* DrawInfoOf(const CString& group) {
    return dynamic_cast<TaDrawInfo*>(Repository().GetDrawInfo(group));
}

GroupValues ReadGroup(const CString& group) {
    GroupValues values;
    Repository().GetStudyListByGroupName(group, values.studies);
    values.studies = settings::PackStudyLists(values.studies);
    values.showCount = std::clamp(Repository().GetStudyCountByGroupName(group), 1, kPaneCount);
    return values;
}

StudyValues ReadSettings(const CString& group, const StudyFacts& study) {
    std::vector<double> params;
    StudyValues values;
    if (const TaDrawInfo* drawInfo = DrawInfoOf(group)) {
        params = drawInfo->vecGetStudyParams(study.type);
        values.shapes = drawInfo->vecGetStudyShapes(study.type);
    }
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        const StudyParamInfo& info = study.params[i];
        values.params.append(
            FormatNumber(i < params.size() ? params[i] : info.defaultValue, info.decimals));
    }
    for (std::size_t i = values.shapes.size(); i < study.shapes.size(); ++i) {
        values.shapes.push_back(study.shapes[i].defaultShape);
    }
    values.shapes.resize(study.shapes.size());
    return values;
}

GroupValues Rebased(const GroupValues& value, const GroupValues& base, const GroupValues& now) {
    GroupValues rebased = now;
    rebased.studies = RebasedItem(value.studies, base.studies, now.studies);
    rebased.showCount = RebasedItem(value.showCount, base.showCount, now.showCount);
    for (auto& [type, settings] : rebased.settings) {
        const StudyValues& edited = value.settings.at(type);
        const StudyValues& before = base.settings.at(type);
        settings.params = RebasedItems(edited.params, before.params, settings.params);
        settings.shapes = RebasedItems(edited.shapes, before.shapes, settings.shapes);
    }
    return rebased;
}

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

}  // namespace ta::sheet
