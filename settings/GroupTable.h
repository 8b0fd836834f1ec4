#pragma once

#include "settings/GroupRecord.h"

#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

class CWnd;

namespace ta::settings {

/// Gives the record a fresh draw info for `window`, null when the terminal has no chart module.
/// What it pointed to before is not destroyed.
void MakeDrawInfo(ST_TA_DRAWINFO& record, CWnd& window);
/// Gives the record a fresh data repository, alone in its data interface. As above.
void MakeDataRepository(ST_TA_DRAWINFO& record);

/// Destroys what the record points to.
void DestroyObjects(ST_TA_DRAWINFO& record);

/// The groups: names in display order, and the record of each name. The table owns the objects of
/// its records. It may hold records whose name has left the list.
class GroupTable {
public:
    using Records = std::map<CString, ST_TA_DRAWINFO>;

    GroupTable() = default;
    ~GroupTable() { Clear(); }
    GroupTable(const GroupTable&) = delete;
    GroupTable& operator=(const GroupTable&) = delete;

    const std::vector<CString>& Names() const { return m_vGroupName; }
    void SetNames(const std::vector<CString>& names) { m_vGroupName = names; }
    void AppendName(const CString& name) { m_vGroupName.push_back(name); }
    /// The first place of the name in the list.
    std::optional<unsigned> IndexOf(const CString& name) const;
    /// Empty behind the end of the list.
    CString NameAt(std::size_t index) const;

    const Records& All() const { return m_mapDrawInfo; }
    /// Null when there is no record of the name. Valid until the record is erased; its number stays
    /// as it is.
    ST_TA_DRAWINFO* Find(const CString& name);
    const ST_TA_DRAWINFO* Find(const CString& name) const;
    /// Inserts the record under the name, or in the place of that name's record, whose objects are
    /// not destroyed.
    ST_TA_DRAWINFO& Put(const CString& name, ST_TA_DRAWINFO record);
    /// Makes the table hold these records. The objects of those before are not destroyed.
    void SetAll(Records records);
    /// Gives every record a fresh draw info for `window` and a fresh data repository.
    void InitDrawInfo(CWnd& window);

    /// The first name, in byte order, whose record has the number; empty when none has.
    CString NameOfUniNum(int uniNum) const;
    /// Whether a record has the number, also one whose name has left the list.
    bool IsUniNumInUse(int uniNum) const { return m_uses.contains(uniNum); }
    /// The smallest number of 0 to limit - 1 that no record has; -1 when all are taken.
    int FreeUniNum(int limit) const;

    /// Destroys the record and its objects. false when there is none.
    bool Erase(const CString& name);
    /// Takes the first equal entry off the name list. false when there is none.
    bool EraseName(const CString& name);
    /// Moves the record to a name that no record has, and the name in its place in the list.
    void Rename(const CString& oldName, const CString& newName);
    /// Records whose name is not in the list, in byte order.
    std::vector<CString> UnlistedNames() const;
    /// Destroys all records; the list stays.
    void EraseAll();
    /// Destroys all records and empties the list.
    void Clear();

private:
    void Release(int uniNum);

    std::vector<CString> m_vGroupName;
    Records m_mapDrawInfo;
    std::unordered_map<int, unsigned> m_uses;  ///< how many records have a number
};

}  // namespace ta::settings
