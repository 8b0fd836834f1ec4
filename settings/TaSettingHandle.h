#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/Window.h"
#include "settings/GroupRecord.h"

#include <memory>
#include <utility>
#include <vector>

class StudyInfo;

/// One view that uses a group in a stored window layout.
struct ST_TA_ViewGroupInfo {
    CString name;   ///< name of the layout entry, as shown
    int value = 0;  ///< its number, as the configuration store gives it
};

/// The strings of every group: pairs of group name and one string per study.
using SettingsByGroup = std::vector<std::pair<CString, std::vector<CString>>>;

/// Pairs of group name and record.
using GroupRecords = std::vector<std::pair<CString, ST_TA_DRAWINFO>>;

/// Pairs of type key and the trend-line data strings under it.
using TrendLineList = std::vector<std::pair<CString, std::vector<CString>>>;

/// The chart class under which the chart views keep their trend lines.
TADIALOGS_EXPORT extern const char* const kTechViewClass;

/// The one repository of the user's technical-analysis settings: indicator groups, chart options
/// and trend lines. Loaded from the configuration store on first use; hang the services into
/// CSyncInfo before.
///
/// All calls on the GUI thread. Nothing throws; names that are not known give the not-found value
/// that the operation names. Every operation that does not say otherwise first calls
/// ReloadTASetting(), which destroys all draw infos and data repositories when the store was
/// changed by another party: keep a group's name or UniNum across calls, never a pointer from here.
///
/// Edits change memory only and are stored by SaveAllGroupSetting(). SetGroupNameList,
/// SetStudyCountByGroupName, SetTechWndKeyByGroupName and UpdateTrendLineSymbolTime hand their
/// value to the store at once, and AddGroupSetting the new group's default strings; the store
/// commits them at its next PackFile.
class TADIALOGS_EXPORT CTaSettingHandle : public CWnd {
public:
    /// The instance, made on the first call and destroyed at process exit.
    static CTaSettingHandle& GetInstance();
    ~CTaSettingHandle() override;

    /// Holds off reloads while it lives. Whoever checks, edits and saves holds it from the check to
    /// the save, so that another party's commit does not come in between; the flag stays up, and
    /// the next call without a hold reloads. SaveAllGroupSetting then stores what memory holds,
    /// over what the other party has committed. May be nested; the repository must outlive it.
    class TADIALOGS_EXPORT ReloadHold {
    public:
        explicit ReloadHold(CTaSettingHandle& repository);
        ~ReloadHold();
        ReloadHold(const ReloadHold&) = delete;
        ReloadHold& operator=(const ReloadHold&) = delete;

    private:
        CTaSettingHandle& m_repository;
    };

    /// When the store's reload flag is up: lowers it, drops everything in memory, unsaved edits
    /// included, loads again and tells the registered chart views, group by group, then of the
    /// trend lines. Otherwise does nothing.
    void ReloadTASetting();

    /// How often the settings were loaded again, which tells a reload's group messages from those
    /// that others send. Does not reload.
    unsigned GetReloadCount() const;

    // ---- Group table ----

    /// 1 when a group of this exact name is in the group list, else 0.
    int FindGroup(const CString& name);
    /// Position in the group list; 0 also when there is no such group (ask FindGroup first).
    unsigned GetGroupIndexByName(const CString& name);
    /// Position of the group of this number; -1 when there is none.
    int GetGroupIndexByUniNum(int uniNum);
    /// Empty when out of range.
    CString GetGroupNameByIndex(unsigned index);
    /// Empty when no group has the number. Does not reload.
    CString GetGroupNameByUniNum(int uniNum) const;
    /// -1 when out of range.
    int GetUniNumByGroupIndex(int index);
    /// -1 when there is no such group. Does not reload.
    int GetUniNumByGroupName(const CString& name) const;
    /// Replaces `out` by the names in display order; returns how many.
    unsigned GetGroupNameList(std::vector<CString>& out);
    /// Makes `names` the group list, in this order, and writes the list. A group that the list no
    /// longer names stays in the table until ClearNoUseGroup. A name that has no group, because a
    /// reload took it away, gets one with the default studies and settings, as AddGroupSetting
    /// makes it, in memory: without it the next save would leave a neighbour's values under the
    /// name.
    void SetGroupNameList(std::vector<CString>& names);
    /// The first name of the list; empty when there are no groups.
    CString GetSystemDefaultGroup();
    /// 10 to 50. Does not reload.
    int GetMaxTAGroupCount() const;
    /// 1 when the user may edit groups. Does not reload.
    int GetGroupAuthorize() const;

    /// Adds a group with the default studies and settings at the end; its default strings go to the
    /// store at once. 0, and nothing changes, when the name exists. The maximum is the caller's
    /// business.
    int AddGroupSetting(const CString& name);
    /// Destroys a group's record and takes its name off the list. 0 when the name is unknown.
    int DeleteGroupSetting(const CString& name);
    /// Renames a group in its place; number and settings stay. 0, and nothing changes, when the new
    /// name exists or the old one does not.
    int ModifyGroupName(const CString& oldName, const CString& newName);
    /// Deletes every group that the list no longer names.
    void ClearNoUseGroup();

    /// Panes shown; 1 for an unknown group.
    int GetStudyCountByGroupName(const CString& name);
    /// Sets it and writes it; any number is taken. A group that the list does not name has no place
    /// in the store: its value stays in memory, and writes over no other group's.
    void SetStudyCountByGroupName(const CString& name, int count);
    /// Panes that hold at least one study; 0 for an unknown group.
    unsigned GetTechCountByGroup(const CString& name);
    /// Replaces `out` by the group's 10 lists of 8; 0 and an empty `out` for an unknown group.
    int GetStudyListByGroupName(const CString& name, StudyLists& out);
    /// Replaces them. Any shape is accepted: surplus lists and studies are left out, missing ones
    /// empty, negative ones skipped.
    void SetStudyListByGroupName(const CString& name, const StudyLists& lists);
    /// Layout key of the technical windows; 1 for an unknown group.
    int GetTechWndKeyByGroupName(const CString& name);
    /// Sets it and writes it, as above.
    void SetTechWndKeyByGroupName(const CString& name, int key);

    // ---- Draw info, data, settings strings ----

    // Null for an unknown group, and a null draw info where the chart module gave none. The
    // repository keeps ownership; the next reload destroys them.
    ChartBaseDrawInfo* GetDrawInfo(const CString& name);
    CTADataInterface* GetTaDataInterface(const CString& name);
    CTADataRepository* GetTaDataRepository(const CString& name);

    /// Replaces `out` by a copy of every entry of the table in byte order of names.
    void GetAllDrawInfo(GroupRecords& out);
    /// Makes the table equal `in`, whose objects the repository owns from here on. Objects of old
    /// entries that `in` does not carry on are left to the caller.
    void SetAllDrawInfo(const GroupRecords& in);

    /// Replaces `out` by every group's strings, in byte order of names; returns 1 when there is
    /// any.
    int GetAllStudyParamSetting(SettingsByGroup& out);
    int GetAllStudyShapeSetting(SettingsByGroup& out);
    void SetAllStudyParamSetting(const SettingsByGroup& in);
    void SetAllStudyShapeSetting(const SettingsByGroup& in);
    /// 0, and an empty `out`, for an unknown group.
    int GetStudyParamSettingByGroupName(const CString& name, std::vector<CString>& out);
    int GetStudyShapeSettingByGroupName(const CString& name, std::vector<CString>& out);
    /// `mode`: 0 load, 1 restore or replace (strings from elsewhere; see DrawInfoMode).
    void SetStudyParamSettingByGroupName(const CString& name, const std::vector<CString>& in,
                                         int mode = 0);
    void SetStudyShapeSettingByGroupName(const CString& name, const std::vector<CString>& in,
                                         int mode = 0);
    /// Clears the group's parameter and shape settings in its draw info.
    void DeleteAllParam(const CString& name);

    /// Replaces `out` by the chart module's studies of a category (1 to 4), as the default group's
    /// draw info lists them. They live until the next reload.
    void vGetStudyInfoVec(std::vector<StudyInfo*>& out, int studyType);
    /// 1 when the user may use the study. Negative numbers are no study. Does not reload.
    int IsStudyCanUse(StudyType type) const;
    /// 1 when the user may use bars shorter than a minute. Does not reload.
    int IsSecondlyDataCanUse(unsigned char dataKind) const;

    // ---- Saving ----

    /// Writes trend lines, the group list and every group, and commits. Settings that another party
    /// has changed and flagged are loaded first, which discards unsaved edits. From there to the
    /// commit reloads are held off: another party's commit in between would make the store a
    /// mixture of two states. A failure of the store is not reported.
    void SaveAllGroupSetting();

    // ---- Trend lines: class "MXTechView", symbol key "0a/2330", type key
    // "0a/2330/0003/5/x" (symbol key, period code, count, trailing name) ----

    /// Splits at the first "-". 0 for an empty key or one without "-".
    int DecodeTrendLineClassSymbolKey(const CString& key, CString& chartClass,
                                      CString& symbolKey) const;
    /// Splits at the first "/", the service in hexadecimal. 0 for an empty key or one without "/".
    int DecodeTrendLineServiceSymbolKey(const CString& key, unsigned char& service,
                                        CString& symbol) const;
    /// 0 for an empty key or one with fewer than four "/".
    int DecodeTrendLineTypeKey(const CString& key, CString& symbolKey, CString& trailingName,
                               int& periodCode, int& count) const;
    /// Kind, its name in the language in use, and flag of a data string. 0 when it is malformed;
    /// outputs not reached stay as they were.
    int DecodeTrendLineData(const CString& data, int& kind, CString& name, bool& flag) const;

    /// Adds one line at the end, unless an equal one is there. `count`: minutes or seconds of a
    /// bar, of no meaning for other periods. 0 when a string is empty, else 1. Memory only. The
    /// limits of GetTATrendLineMaxCount are the caller's business.
    int AddTrendLineData(const CString& chartClass, const CString& symbolKey,
                         const CString& trailingName, int periodCode, const CString& data,
                         int count);
    /// Makes `data` the lines of one type key; empty `data` removes them. `count` as for adding. 0
    /// when a name is empty, else 1. Memory only.
    int SetTrendLineData(const CString& chartClass, const CString& symbolKey,
                         const CString& trailingName, int periodCode,
                         const std::vector<CString>& data, int count);
    /// Replaces `data` by the lines of one type key. 0, and empty, when there are none.
    int GetTrendLineData(std::vector<CString>& data, const CString& chartClass,
                         const CString& symbolKey, const CString& trailingName, int periodCode,
                         int count);
    /// Replaces `out` by all lines under a class-symbol key ("MXTechView-0a/2330"). 0 when none.
    int GetAllTrendLineData(const CString& classSymbolKey, TrendLineList& out);
    /// Lines of one symbol.
    unsigned GetTrendLineCount(const CString& chartClass, const CString& symbolKey);
    /// Lines of every class-symbol key that contains the class text anywhere.
    unsigned GetTrendLineCount(const CString& chartClass);
    /// Class-symbol keys that contain the class text anywhere.
    unsigned GetTrendLineSymbolCount(const CString& chartClass);
    /// Removes the lines of a class from the store (pending) and from memory.
    void ClearAllTrendLine(const CString& chartClass);
    /// Drops from memory every class-symbol key that contains the class text anywhere. Does not
    /// reload.
    void ReleaseTrendLine(const CString& chartClass);
    /// Hands every symbol's lines to the store, under the class that it was loaded or drawn with,
    /// which may hold a "-". Does not commit and does not reload.
    void SaveTrendLineData();
    /// Date of last change, "YYYY-MM-DD"; empty without lines or date.
    CString GetTrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                      const CString& symbol);
    /// Sets it to today and writes it, when the symbol has lines.
    void UpdateTrendLineSymbolTime(const CString& chartClass, unsigned char service,
                                   const CString& symbol);
    /// The most trend lines that the user may keep, in all and per symbol, as the entitlement
    /// service says now, or said at the last load when it is gone; negative: no limit. Does not
    /// reload.
    void GetTATrendLineMaxCount(int& inAll, int& perSymbol) const;

    // ---- Chart views ----

    /// Registers a view, once. It is told of changes until it leaves, which it must before it is
    /// destroyed. Null is ignored. These four do not reload.
    void AddTechViewPtr(CView* view);
    void RemoveTechViewPtr(CView* view);
    /// Sends a message to every registered view, in order of registration.
    void SendMsg2AllTechView(unsigned message, unsigned wParam);
    void SendTLineUpdate2AllTechView();

    // ---- Names ----

    /// Display name; empty when unknown.
    CString StudyTypeToStudyName(StudyType type);
    /// The study of a display name, plain or decorated as in a legend; 0 when none.
    StudyType StudyNameToStudyType(const CString& name);
    /// Short label of a data period: 0 daily, 1 weekly, 2 monthly, 3 minute, 4 second (the last two
    /// with `count`); empty for another code. Does not reload.
    CString PackTADataTypeString(int periodCode, int count) const;
    /// The part of a stored layout name before "###". Does not reload.
    CString TransSystemLayoutString(const CString& stored) const;
    /// Appends the entries of a stored window layout to `out`; false when the store has none. What
    /// is pending in the store is committed first.
    bool GetTAViewGroupSetting(int layout, std::vector<ST_TA_ViewGroupInfo>& out);

private:
    friend struct TaSettingHandleTestAccess;

    CTaSettingHandle();
    void vCreate(CWnd* pParent);
    void ReleaseTASetting();
    int IsReload() const;
    bool bReloadIfFlagged();
    void LoadAll();
    void ClearTechViewPtr();

    struct TADIALOGS_HIDDEN Parts;
    std::unique_ptr<Parts> m_parts;
};
