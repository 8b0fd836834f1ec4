#pragma once

#include "platform/ConfigStore.h"
#include "platform/Text.h"
#include "tests/support/CallPlan.h"
#include "tests/support/MemoryConfigStore.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ta::test {

/// Passes every call on to another store and writes it down as a line of text in UTF-8: the
/// operation with what is handed in, not with what comes back, for example
/// "SaveTAGroupStudyList(0, StudyTypeLogKey01, [0 4 -1])" or "LoadTAGroupUniNum(2)". A call that is
/// planned to fail is written down, gives false and is not passed on.
class RecordingConfigStore : public SMXCfgIO2, public CallPlan {
public:
    /// `target` outlives this.
    explicit RecordingConfigStore(SMXCfgIO2& target) : m_target(target) {}

    using Strings = std::vector<CString>;
    using Studies = std::vector<std::int32_t>;
    using Views = std::vector<std::pair<CString, int>>;

    std::vector<std::string> lines;

    /// The lines so far; begins a new record.
    std::vector<std::string> TakeLines() { return std::exchange(lines, {}); }

#define TA_TEST_RECORD(Operation, parameters, ...)                     \
    bool Operation parameters override {                               \
        return Record(#Operation, &SMXCfgIO2::Operation, __VA_ARGS__); \
    }
#define TA_TEST_RECORD_GROUP_VALUE(Operation, Type, field)       \
    TA_TEST_RECORD(Load##Operation, (unsigned i, Type& v), i, v) \
    TA_TEST_RECORD(Save##Operation, (unsigned i, Type v), i, v)
#define TA_TEST_RECORD_GROUP_LIST(Operation)                        \
    TA_TEST_RECORD(Load##Operation, (unsigned i, Strings& v), i, v) \
    TA_TEST_RECORD(Save##Operation, (unsigned i, const Strings& v), i, v)

    TA_TEST_RECORD(GetTASettingReloadType, (bool& v), v)
    TA_TEST_RECORD(SetTASettingReloadType, (bool v), v)
    TA_TEST_RECORD(GetTAGroupMaxCount, (int& v), v)
    TA_TEST_RECORD(LoadTAGroupNameList, (Strings & v), v)
    TA_TEST_RECORD(SaveTAGroupNameList, (const Strings& v), v)
    TA_TEST_RECORD(LoadTAGroupStudyList, (unsigned i, const CString& k, Studies& v), i, k, v)
    TA_TEST_RECORD(SaveTAGroupStudyList, (unsigned i, const CString& k, const Studies& v), i, k, v)
    TA_TEST_RECORD(LoadTAStudyParamDefaultSetting, (Strings & v), v)
    TA_TEST_RECORD(LoadTAStudyShapeDefaultSetting, (Strings & v), v)
    TA_TEST_RECORD_GROUP_LIST(TAStudyParamSetting)
    TA_TEST_RECORD_GROUP_LIST(TAStudyShapeSetting)
    TA_TEST_GROUP_VALUES(TA_TEST_RECORD_GROUP_VALUE)
    TA_TEST_RECORD(GetTAViewGroupSetting, (int l, Views& v), l, v)
    TA_TEST_RECORD(LoadTATrendLineSettingClass, (Strings & v), v)
    TA_TEST_RECORD(LoadTATrendLineSettingSymbols, (const CString& c, Strings& v), c, v)
    TA_TEST_RECORD(LoadTATrendLine, (const CString& c, const CString& s, TrendLinesByType& v), c, s,
                   v)
    TA_TEST_RECORD(SaveTATrendLine, (const CString& c, const CString& s, const TrendLinesByType& v),
                   c, s, v)
    TA_TEST_RECORD(RemoveAllTrendLineData, (const CString& c), c)
    TA_TEST_RECORD(LoadTATrendLineSymbolUpdTime,
                   (const CString& c, unsigned char n, const CString& s, CString& v), c, n, s, v)
    TA_TEST_RECORD(SaveTATrendLineSymbolUpdTime,
                   (const CString& c, unsigned char n, const CString& s, const CString& v), c, n, s,
                   v)
#undef TA_TEST_RECORD_GROUP_LIST
#undef TA_TEST_RECORD_GROUP_VALUE
#undef TA_TEST_RECORD

    void PackFile() override {
        const bool passesOn = Enter("PackFile");
        lines.push_back("PackFile()");
        if (passesOn) {
            m_target.PackFile();
        }
    }

private:
    static std::string Show(bool value) {
        return value ? "true" : "false";
    }
    template <class Number>
    requires std::is_integral_v<Number>
    static std::string Show(Number value) {
        return std::to_string(value);
    }
    static std::string Show(const CString& value) {
        return text::ToUtf8(value);
    }
    template <class First, class Second>
    static std::string Show(const std::pair<First, Second>& value) {
        return Show(value.first) + '=' + Show(value.second);
    }
    template <class Element>
    static std::string Show(const std::vector<Element>& list) {
        std::string shown = "[";
        for (std::size_t i = 0; i < list.size(); ++i) {
            shown += (i == 0 ? "" : " ") + Show(list[i]);
        }
        return shown + ']';
    }

    template <class Parameter>
    static constexpr bool kIsOutput = std::is_lvalue_reference_v<Parameter> &&
                                      !std::is_const_v<std::remove_reference_t<Parameter>>;

    template <class Parameter>
    static void Append(std::string& shown, const std::remove_reference_t<Parameter>& value) {
        if constexpr (!kIsOutput<Parameter>) {
            shown += (shown.empty() ? "" : ", ") + Show(value);
        }
    }

    template <class... Parameters>
    bool Record(const char* name, bool (SMXCfgIO2::*operation)(Parameters...),
                std::type_identity_t<Parameters>... arguments) {
        const bool passesOn = Enter(name);
        std::string shown;
        (Append<Parameters>(shown, arguments), ...);
        lines.push_back(name + ('(' + shown + ')'));
        return passesOn && (m_target.*operation)(arguments...);
    }

    SMXCfgIO2& m_target;
};

}  // namespace ta::test
