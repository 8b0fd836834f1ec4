#include "groupfile/GroupMerge.h"

#include <algorithm>

namespace ta::groupfile {

bool GroupMerge::InsertAllGroup(const std::vector<CString>& existing,
                                const std::vector<CString>& fromFile, int maxCount,
                                bool replaceExisting, std::size_t shownRows) {
    const auto hasRoom = [maxCount](std::size_t count) {
        return maxCount >= 0 && count < static_cast<std::size_t>(maxCount);
    };
    const bool merges = hasRoom(shownRows);
    std::set<CString> merged(existing.begin(), existing.end());
    if (merges) {
        m_mergeList = existing;
        m_loadedList.clear();
        for (const CString& name : fromFile) {
            if (merged.contains(name)) {
                if (replaceExisting) {
                    m_loadedList.insert(name);
                }
            } else if (hasRoom(m_mergeList.size())) {
                m_mergeList.push_back(name);
                m_loadedList.insert(name);
                merged.insert(name);
            }
        }
    }
    merged.insert(m_mergeList.begin(), m_mergeList.end());
    m_leftOut = static_cast<std::size_t>(std::ranges::count_if(
        fromFile, [&merged](const CString& name) { return !merged.contains(name); }));
    return merges;
}

CString GroupMerge::RowText(const CString& name) const {
    return IsLoadSettingFromFile(name) ? "* " + name : name;
}

}  // namespace ta::groupfile
