#include "groupfile/GroupMerge.h"

#include <algorithm>

namespace ta::groupfile {
namespace {

// Neither byte can be the second half of a double-byte character.
const CString kMark = "* ";

bool Contains(const std::vector<CString>& names, const CString& name) {
    return std::ranges::find(names, name) != names.end();
}

}  // namespace

void GroupMerge::InsertAllGroup(const std::vector<CString>& existing,
                                const std::vector<CString>& fromFile, int maxCount,
                                bool replaceExisting, std::size_t shownRows) {
    const auto hasRoom = [maxCount](std::size_t count) {
        return maxCount < 0 || count < static_cast<std::size_t>(maxCount);
    };
    if (hasRoom(shownRows)) {
        m_mergeList = existing;
        m_loadedList.clear();
        for (const CString& name : fromFile) {
            if (Contains(existing, name)) {
                if (replaceExisting) {
                    m_loadedList.push_back(name);
                }
            } else if (hasRoom(m_mergeList.size()) && !Contains(m_mergeList, name)) {
                m_mergeList.push_back(name);
                m_loadedList.push_back(name);
            }
        }
    }
    m_leftOut = static_cast<std::size_t>(std::ranges::count_if(
        fromFile, [this](const CString& name) { return !Contains(m_mergeList, name); }));
}

bool GroupMerge::IsLoadSettingFromFile(const CString& name) const {
    return Contains(m_loadedList, name);
}

CString GroupMerge::RowText(const CString& name) const {
    return IsLoadSettingFromFile(name) ? kMark + name : name;
}

CString GroupMerge::NameOfRow(const CString& row) {
    const std::size_t mark = row.find(kMark);
    return mark == CString::npos ? row : row.substr(mark + kMark.size());
}

}  // namespace ta::groupfile
