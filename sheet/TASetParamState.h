#pragma once

#include "sheet/GroupDrafts.h"
#include "sheet/TASetParam.h"
#include "sheet/TaParamSettingView.h"

#include <optional>
#include <utility>
#include <vector>

/// What the study page remembers.
struct CTASetParam::State {
    struct Selection {
        CString group;
        int paneCount;
        int pane;
        int study;  ///< from 1; 0 for the pane
    };

    ta::sheet::GroupDrafts drafts;
    CString group;                               ///< the group to show
    CString shownGroup;                          ///< the one that the tree shows
    StudyLists filled;                           ///< the studies that the tree shows
    std::optional<Selection> initial;            ///< until the page was active
    std::optional<ta::sheet::StudyFacts> shown;  ///< the study in the editor
    VolumeAmountType specialType{};
    std::pair<bool, bool> specialFlags;
    std::vector<StudyType> savedTypes;
    std::vector<CString> savedNames;
    bool saved = false;

    /// The draft of the group to show.
    ta::sheet::GroupDraft& Draft() { return drafts.At(group); }
    /// The group's studies whose settings are not the defaults.
    std::vector<ta::sheet::StudyFacts> StudiesOffDefaults();
    /// What restoring their defaults changes, in some lines.
    QString ChangesOf(const std::vector<ta::sheet::StudyFacts>& studies);
    // The rows of the study in the editor.
    std::vector<CTaParamSettingView::ParamRow> ParamRows();
    std::vector<CTaParamSettingView::ShapeRow> ShapeRows();
};
