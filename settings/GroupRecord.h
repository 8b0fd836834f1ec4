#pragma once

#include "platform/TaData.h"
#include "platform/Types.h"

#include <vector>

class ChartBaseDrawInfo;

/// The studies of a group: 10 pane lists of 8 slots, -1 for an empty one, the filled ones in front.
using StudyLists = std::vector<std::vector<StudyType>>;

/// The record of one indicator group. A copy shares the objects that the pointers name; they belong
/// to the repository's own entry and are destroyed with it, at the latest by the next reload.
struct ST_TA_DRAWINFO {
    int iUniNum = -1;         ///< unique number of the group, stable across renames and reordering
    int iStudyShowCount = 4;  ///< panes shown
    int iTechWndShowKey = 4;  ///< layout of the technical windows
    ChartBaseDrawInfo* pDrawInfo = nullptr;        ///< owned by the repository
    CTADataRepository* pDataRepository = nullptr;  ///< owned by the repository
    CTADataInterface DataInterface;                ///< looks into pDataRepository
    StudyLists vStudyList;
};
