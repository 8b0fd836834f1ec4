#pragma once

#include "platform/Types.h"

#include <cstddef>
#include <set>
#include <utility>
#include <vector>

namespace ta::groupfile {

/// The group list that an import will make of the existing groups and those of a file.
class GroupMerge {
public:
    /// Merges by the rule: existing groups keep their places; a group of the file whose name exists
    /// is loaded over it when `replaceExisting`, else left out; the others are appended in file
    /// order while the list has fewer than `maxCount` names, none when that is negative; a name
    /// that a file has twice is appended once. When `shownRows`, the rows of the result list so
    /// far, are `maxCount` or more, nothing is merged at all: false, and the lists stay as they
    /// are.
    bool InsertAllGroup(const std::vector<CString>& existing, const std::vector<CString>& fromFile,
                        int maxCount, bool replaceExisting, std::size_t shownRows);

    /// The resulting names in order.
    const std::vector<CString>& GetMergeList() const { return m_mergeList; }
    /// The same names in the order that the user gave them.
    void SetMergeList(std::vector<CString> names) { m_mergeList = std::move(names); }
    /// Whether the settings of this name are read from the file.
    bool IsLoadSettingFromFile(const CString& name) const { return m_loadedList.contains(name); }
    /// Groups of the file that the maximum left out.
    std::size_t LeftOutCount() const { return m_leftOut; }

    /// A row of the result list: "* name" for a group that is loaded from the file, else the name.
    /// To be shown, not to be read back: names may hold the mark themselves, and a list keeps the
    /// name of each row beside its text.
    CString RowText(const CString& name) const;

private:
    std::vector<CString> m_mergeList;
    std::set<CString> m_loadedList;
    std::size_t m_leftOut = 0;
};

}  // namespace ta::groupfile
