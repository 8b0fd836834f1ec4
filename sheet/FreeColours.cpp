#include "sheet/FreeColours.h"

#include "sheet/GroupDraft.h"

#include <algorithm>
#include <array>
#include <set>

namespace ta::sheet {
namespace {

using Colours = std::set<std::uint32_t>;

// Of a contrast of at least 3 to 1 to white and to black, neighbours apart.
constexpr std::array<std::uint32_t, 9> kPalette{0x1C7ED6, 0xE8590C, 0x9C36B5, 0x2B8A3E, 0xD6336C,
                                                0x0C8599, 0x96691E, 0x7048E8, 0x5C940D};

bool HasColour(const StudyFacts& study, std::size_t shape) {
    return ShapeUseOf(study.shapes[shape].kind).colour;
}

/// Of the other studies of the pane.
Colours TakenIn(GroupDraft& draft, const std::vector<StudyType>& pane, StudyType added) {
    Colours taken;
    for (const StudyType type : pane) {
        const auto study = type == added ? std::nullopt : FactsOf(type);
        if (!study) {
            continue;
        }
        const std::vector<StudyShape>& shapes = draft.SettingsOf(*study).shapes;
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            if (shapes[i].visible && HasColour(*study, i)) {
                taken.insert(shapes[i].colour);
            }
        }
    }
    return taken;
}

std::ptrdiff_t CountOf(const StudyLists& lists, StudyType type) {
    std::ptrdiff_t count = 0;
    for (const std::vector<StudyType>& pane : lists) {
        count += std::ranges::count(pane, type);
    }
    return count;
}

}  // namespace

void TakeFreeColours(GroupDraft& draft, const StudyLists& lists, int pane, StudyType added) {
    const auto study = FactsOf(added);
    if (!study || !draft.IsEditable() || CountOf(lists, added) != 1) {
        return;
    }
    Colours taken = TakenIn(draft, lists[static_cast<std::size_t>(pane)], added);
    const std::vector<StudyShape> shapes = draft.SettingsOf(*study).shapes;
    Colours own;
    for (const StudyShape& shape : shapes) {
        own.insert(shape.colour);
    }
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        StudyShape shape = shapes[i];
        const bool isDefault = shape.colour == study->shapes[i].defaultShape.colour;
        if (!HasColour(*study, i) || !isDefault || !taken.contains(shape.colour)) {
            continue;
        }
        const auto* const free = std::ranges::find_if(kPalette, [&](std::uint32_t colour) {
            return !taken.contains(colour) && !own.contains(colour);
        });
        if (free != kPalette.end()) {
            shape.colour = *free;
            own.insert(*free);
            draft.SetShape(*study, static_cast<int>(i), shape);
        }
    }
}

}  // namespace ta::sheet
