#include "settings/TrendLineKeys.h"

#include "platform/QuoteInterface.h"

#include <fmt/printf.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace ta::settings {
namespace {

struct LineKind {
    int kind;
    const char* languageKey;
};

constexpr std::array kLineKinds{
    LineKind{2002, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_HORIZONTAL"},
    LineKind{2004, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_LINE"},
    LineKind{2005, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_RAILLINE"},
    LineKind{2006, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_PARALLEL"},
    LineKind{2007, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_STOCKBOX"},
    LineKind{2008, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDENWAVE"},
    LineKind{2009, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDEN_CUT"},
    LineKind{2010, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDENCUT_UP"},
    LineKind{2011, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDENCUT_DOWN"},
    LineKind{2012, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDENYIELDTIME"},
    LineKind{2013, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_OPP_DOWNGUMP"},
    LineKind{2014, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_OPP_UPGUMP"},
    LineKind{2015, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_ABS_DOWNGUMP"},
    LineKind{2016, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_ABS_UPGUMP"},
    LineKind{2017, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_PHASE"},
    LineKind{2018, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_ORDINALTIME"},
    LineKind{2019, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_EVENTIME"},
    LineKind{2020, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDENRULER"},
    LineKind{2021, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_LINESEGMENT"},
};

constexpr int kMinutePeriod = 3;
constexpr int kSecondPeriod = 4;

/// Leading blanks, sign and digits of the text; 0 when there are none. Clamped to the range of int.
int LeadingNumber(const CString& text) {
    const long value = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(
        std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

/// Position of the n-th "/" (n from 1), or npos.
std::size_t FindSlash(const CString& text, int n) {
    std::size_t position = text.find('/');
    for (int i = 1; i < n && position != CString::npos; ++i) {
        position = text.find('/', position + 1);
    }
    return position;
}

}  // namespace

CString PackSymbolKey(unsigned char service, const CString& symbol) {
    return fmt::sprintf("%02x/%s", static_cast<unsigned>(service), symbol);
}

CString PackTrendLineSymbolKey(const CString& chartClass, const CString& symbolKey) {
    return chartClass + "-" + symbolKey;
}

CString PackTrendLineTypeKey(const CString& symbolKey, const CString& trailingName, int periodCode,
                             int count) {
    const bool counted = periodCode == kMinutePeriod || periodCode == kSecondPeriod;
    return fmt::sprintf("%s/%04d/%d/%s", symbolKey, periodCode, counted ? count : 0, trailingName);
}

bool DecodeClassSymbolKey(const CString& key, CString& chartClass, CString& symbolKey) {
    const std::size_t dash = key.find('-');
    if (dash == CString::npos) {
        return false;
    }
    const CString whole = key;
    chartClass = whole.substr(0, dash);
    symbolKey = whole.substr(dash + 1);
    return true;
}

bool DecodeSymbolKey(const CString& key, unsigned char& service, CString& symbol) {
    const std::size_t slash = key.find('/');
    if (slash == CString::npos) {
        return false;
    }
    const CString whole = key;
    service = static_cast<unsigned char>(std::strtoul(whole.substr(0, slash).c_str(), nullptr, 16) &
                                         0xFFU);
    symbol = whole.substr(slash + 1);
    return true;
}

bool DecodeTypeKey(const CString& key, CString& symbolKey, CString& trailingName, int& periodCode,
                   int& count) {
    const std::size_t second = FindSlash(key, 2);
    const std::size_t third = FindSlash(key, 3);
    const std::size_t fourth = FindSlash(key, 4);
    if (fourth == CString::npos) {
        return false;
    }
    const CString whole = key;
    symbolKey = whole.substr(0, second);
    periodCode = LeadingNumber(whole.substr(second + 1, third - second - 1));
    count = LeadingNumber(whole.substr(third + 1, fourth - third - 1));
    trailingName = whole.substr(fourth + 1);
    return true;
}

bool DecodeLineData(const CString& data, int& kind, CString& name, bool& flag) {
    const std::size_t first = data.find('/');
    if (first == CString::npos) {
        return false;
    }
    const CString whole = data;
    kind = LeadingNumber(whole.substr(0, first));
    name = GetTrendLineName(kind);
    const std::size_t fourth = FindSlash(whole, 4);
    if (fourth == CString::npos || FindSlash(whole, 5) == CString::npos) {
        return false;
    }
    flag = whole[fourth + 1] == '1';
    return true;
}

CString GetTrendLineName(int kind) {
    const auto found = std::ranges::find(kLineKinds, kind, &LineKind::kind);
    return found == kLineKinds.end()
               ? CString()
               : BKQuoteInterface::GetBKInterface().LangGetLangString(found->languageKey);
}

}  // namespace ta::settings
