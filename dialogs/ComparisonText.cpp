#include "dialogs/ComparisonText.h"

#include "platform/DayNumber.h"
#include "platform/FormatText.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>

namespace ta::compare {
namespace {

constexpr std::size_t kLeafTextBytes = 127;

bool EndsWithBracket(std::string_view label) {
    std::size_t last = CString::npos;
    for (std::size_t i = 0; i < label.size(); i += text::CharLength(label, i)) {
        last = i;
    }
    return last != CString::npos && last + 1 == label.size() && label[last] == ']';
}

CString Language(const char* key) {
    return BKQuoteInterface::GetBKInterface().LangGetLangString(key);
}

CString WithDataType(const CString& line, const history::Values& values) {
    constexpr const char* kPeriods[] = {"IDC_CHANGESYM-CHANGESYM_DATATYPE_DAILY",
                                        "IDC_CHANGESYM-CHANGESYM_DATATYPE_WEEKLY",
                                        "IDC_CHANGESYM-CHANGESYM_DATATYPE_MONTLY"};
    if (values.dataType == history::kMinutes) {
        return text::Format("%s%d%s", line, values.minutes,
                            Language("IDC_CHANGESYM-CHANGESYM_DATATYPE_MIN"));
    }
    return values.dataType >= history::kDaily && values.dataType <= history::kMonthly
               ? line + Language(kPeriods[values.dataType])
               : line;
}

}  // namespace

MarketTable::MarketTable(const BKQuoteInterface& quotes) {
    std::vector<std::uint8_t> ids;
    BKQuoteInterface::Texts names;
    quotes.bGetQuoteServiceID(ids, names);
    names.resize(ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        BKQuoteInterface::Items items;
        if (quotes.bGetTADailyItemNoByService(items, ids[i], "") && !items.empty()) {
            m_entries.emplace_back(ids[i], '[' + names[i] + ']');
        }
    }
}

CString MarketTable::Label(std::uint8_t market) const {
    const auto found =
        std::ranges::find(m_entries, market, &std::pair<std::uint8_t, CString>::first);
    return found == m_entries.end() ? CString() : found->second;
}

std::uint8_t MarketTable::Id(const char* label) const {
    if (label == nullptr) {
        return 0;
    }
    const std::string_view given = label;
    const std::string_view missing = EndsWithBracket(given) ? "" : "]";
    const auto found = std::ranges::find_if(m_entries, [&](const auto& entry) {
        const CString& own = entry.second;
        return own.size() == given.size() + missing.size() && own.starts_with(given) &&
               own.ends_with(missing);
    });
    return found == m_entries.end() ? std::uint8_t{0} : found->first;
}

bool SymbolFields(const BKQuoteInterface& quotes, std::uint8_t market, const CString& code,
                  CString& symbolText, CString& nameText) {
    static const BKQuoteInterface::Items kItems{kItemSymbolText, quotes.bSymbolNameIsShowRealMonth()
                                                                     ? kItemSymbolNameRealMonth
                                                                     : kItemSymbolName};
    std::vector<X1Format> values;
    if (!quotes.bGetItemDataByItemNo(market, code, kItems, values, true) ||
        values.size() < kItems.size()) {
        return false;
    }
    symbolText = std::move(values[0].text);
    nameText = std::move(values[1].text);
    return true;
}

CString ChosenText(const BKQuoteInterface& quotes, const MarketTable& markets, std::uint8_t market,
                   const CString& code) {
    CString symbolText;
    CString nameText;
    const CString label = markets.Label(market);
    return SymbolFields(quotes, market, code, symbolText, nameText)
               ? label + symbolText + ' ' + nameText
               : label + code + " ???";
}

CString IdOfLeafText(const CString& text) {
    const CString taken = text::Cut(text, kLeafTextBytes);
    return taken.substr(0, taken.find(' '));
}

CString LabelOfChosenText(const CString& text) {
    const CString front = text.substr(0, text.find(' '));
    return front.substr(0, text::FindChar(front, ']'));
}

CString DataDescription(const history::Values& values) {
    const CString line = WithDataType(Language("IDC_CHANGESYM-CHANGESYM_DATATYPE"), values);
    if (values.readMode == history::kReadLast) {
        return text::Format("%s%s%d%s", line, Language("IDC_CHANGESYM-CHANGESYM_READLAST"),
                            values.recordCount, Language("IDC_CHANGESYM-CHANGESYM_REC_NUMBER"));
    }
    const CalendarDate date = DateFromDayNumber(values.startDate);
    return text::Format("%s%s%d/%d/%d", line, Language("IDC_CHANGESYM-CHANGESYM_REC_START_DATE"),
                        date.year, date.month, date.day);
}

}  // namespace ta::compare
