#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <utility>
#include <vector>

/// The lines of one symbol: pairs of type key ("0a/2330/0003/5/x") and the trend-line data strings
/// under it, in the order in which they were drawn.
using TrendLinesByType = std::vector<std::pair<CString, std::vector<CString>>>;

/// The per-user configuration store. The terminal implements it and hangs it into CSyncInfo.
///
/// All operations return success. A load that fails, also because nothing is stored, leaves its
/// output as it was; one that succeeds replaces it. The library does not look at the result of a
/// save: a store that cannot save says so to the user itself. Nothing may throw. All calls come on
/// the GUI thread.
///
/// Groups are addressed by their index in the group name list, from 0, as the list of the same
/// process stands; what is stored under an index does not move with the name. Saves are pending
/// until PackFile; loads of the same process see them at once. Texts are bytes of the user's code
/// page and may hold any of them.
class TADIALOGS_EXPORT SMXCfgIO2 {
public:
    virtual ~SMXCfgIO2() = default;

    /// The reload flag of this process: true after another party changed the settings. Asked before
    /// nearly every operation of the repository, so it is to be cheap.
    virtual bool GetTASettingReloadType(bool& reload) = 0;
    /// false lowers the flag of this process, which loads everything again next; where another
    /// party has committed, its pending writes of the groups and their list are dropped. true
    /// raises the flag for every process on the store.
    virtual bool SetTASettingReloadType(bool reload) = 0;
    /// How many groups the user may have; the repository keeps it within 10 to 50.
    virtual bool GetTAGroupMaxCount(int& count) = 0;

    /// The names in display order.
    virtual bool LoadTAGroupNameList(std::vector<CString>& names) = 0;
    virtual bool SaveTAGroupNameList(const std::vector<CString>& names) = 0;
    /// `key` names the pane: "StudyTypeLogKey01" to "StudyTypeLogKey10". Saved are always 8 slots,
    /// -1 for an empty one; a load may give any number of any values.
    virtual bool LoadTAGroupStudyList(unsigned index, const CString& key,
                                      std::vector<std::int32_t>& studies) = 0;
    virtual bool SaveTAGroupStudyList(unsigned index, const CString& key,
                                      const std::vector<std::int32_t>& studies) = 0;
    /// The group's unique number, -1 when none was free.
    virtual bool LoadTAGroupUniNum(unsigned index, int& uniNum) = 0;
    virtual bool SaveTAGroupUniNum(unsigned index, int uniNum) = 0;

    /// The defaults of a new group, one string per study.
    virtual bool LoadTAStudyParamDefaultSetting(std::vector<CString>& strings) = 0;
    virtual bool LoadTAStudyShapeDefaultSetting(std::vector<CString>& strings) = 0;
    /// A group's strings, as its draw info writes them; an empty list is not "nothing stored".
    virtual bool LoadTAStudyParamSetting(unsigned index, std::vector<CString>& strings) = 0;
    virtual bool SaveTAStudyParamSetting(unsigned index, const std::vector<CString>& strings) = 0;
    virtual bool LoadTAStudyShapeSetting(unsigned index, std::vector<CString>& strings) = 0;
    virtual bool SaveTAStudyShapeSetting(unsigned index, const std::vector<CString>& strings) = 0;
    /// Panes shown, 1 to 10 as the dialogs set it; other numbers come back as they were saved.
    virtual bool LoadTAStudyShowCount(unsigned index, int& count) = 0;
    virtual bool SaveTAStudyShowCount(unsigned index, int count) = 0;
    /// The key of the window layout.
    virtual bool LoadTATechWndShowKey(unsigned index, int& key) = 0;
    virtual bool SaveTATechWndShowKey(unsigned index, int key) = 0;

    // The common chart options of a group; CommonProp says what the values mean.
    virtual bool LoadTASettingScalePos(unsigned index, std::uint32_t& value) = 0;
    virtual bool SaveTASettingScalePos(unsigned index, std::uint32_t value) = 0;
    virtual bool LoadTASettingChartGrid(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingChartGrid(unsigned index, bool value) = 0;
    virtual bool LoadTASettingCursor(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingCursor(unsigned index, bool value) = 0;
    virtual bool LoadTASettingCursorOld(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingCursorOld(unsigned index, bool value) = 0;
    virtual bool LoadTASettingShowTAInfo(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingShowTAInfo(unsigned index, bool value) = 0;
    virtual bool LoadTASettingCrossLine(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingCrossLine(unsigned index, bool value) = 0;
    virtual bool LoadTASettingLowIdx(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingLowIdx(unsigned index, bool value) = 0;
    virtual bool LoadTASettingHighLow(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingHighLow(unsigned index, bool value) = 0;
    virtual bool LoadTASettingCDP(unsigned index, bool& value) = 0;
    virtual bool SaveTASettingCDP(unsigned index, bool value) = 0;
    virtual bool LoadTASettingCursorLineLockMode(unsigned index, std::uint32_t& value) = 0;
    virtual bool SaveTASettingCursorLineLockMode(unsigned index, std::uint32_t value) = 0;
    virtual bool LoadTASettingCursorMoveStyle(unsigned index, std::uint32_t& value) = 0;
    virtual bool SaveTASettingCursorMoveStyle(unsigned index, std::uint32_t value) = 0;

    /// The views of a stored window layout that use the group of this UniNum: pairs of stored
    /// layout name ("name###suffix", shown up to the "###") and number. Asked after a PackFile.
    virtual bool GetTAViewGroupSetting(int layout, std::vector<std::pair<CString, int>>& views) = 0;

    // Trend lines, per chart class ("MXTechView") and symbol key ("0a/2330": the service in two
    // hexadecimal digits and the symbol).

    /// The classes that have lines.
    virtual bool LoadTATrendLineSettingClass(std::vector<CString>& classes) = 0;
    /// The symbol keys that have lines of the class.
    virtual bool LoadTATrendLineSettingSymbols(const CString& chartClass,
                                               std::vector<CString>& symbolKeys) = 0;
    virtual bool LoadTATrendLine(const CString& chartClass, const CString& symbolKey,
                                 TrendLinesByType& lines) = 0;
    /// Replaces all lines of the symbol; lines that are all empty remove the symbol.
    virtual bool SaveTATrendLine(const CString& chartClass, const CString& symbolKey,
                                 const TrendLinesByType& lines) = 0;
    /// Removes the lines of all symbols of exactly this class.
    virtual bool RemoveAllTrendLineData(const CString& chartClass) = 0;
    /// The date of last change of a symbol's lines, "YYYY-MM-DD".
    virtual bool LoadTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                              const CString& symbol, CString& date) = 0;
    virtual bool SaveTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                              const CString& symbol, const CString& date) = 0;

    /// Commits the pending writes to the file, as a whole or not at all, and raises the flag of
    /// every other process on the store.
    virtual void PackFile() = 0;
};
