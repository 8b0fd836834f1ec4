// Any bytes as a trend-line key and data string: the decoders take them, and what they read packs
// to a key that reads the same.

#include "settings/TrendLineKeys.h"
#include "terminal/lines/TrendLine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace {

using namespace ta::settings;

void Require(bool condition, const char* what) {
    if (!condition) {
        std::cerr << what << '\n';
        std::abort();
    }
}

void DecodeAsClassSymbolKey(const CString& text) {
    CString chartClass;
    CString symbolKey;
    if (DecodeClassSymbolKey(text, chartClass, symbolKey)) {
        Require(PackTrendLineSymbolKey(chartClass, symbolKey) == text, "class-symbol key");
    }
}

void DecodeAsSymbolKey(const CString& text) {
    unsigned char service = 0;
    CString symbol;
    if (!DecodeSymbolKey(text, service, symbol)) {
        return;
    }
    unsigned char again = 0;
    CString same;
    Require(DecodeSymbolKey(PackSymbolKey(service, symbol), again, same) && again == service &&
                same == symbol,
            "symbol key");
}

void DecodeAsTypeKey(const CString& text) {
    CString symbolKey;
    CString name;
    int period = 0;
    int count = 0;
    if (!DecodeTypeKey(text, symbolKey, name, period, count)) {
        return;
    }
    CString sameKey;
    CString sameName;
    int samePeriod = 0;
    int sameCount = 0;
    const CString packed = PackTrendLineTypeKey(symbolKey, name, period, count);
    Require(DecodeTypeKey(packed, sameKey, sameName, samePeriod, sameCount) &&
                sameKey == symbolKey && sameName == name && samePeriod == period,
            "type key");
    Require(sameCount == (period == 3 || period == 4 ? count : 0), "count of a type key");
}

void DecodeAsData(const CString& text) {
    int kind = 0;
    CString name;
    bool flag = false;
    const bool readable = DecodeLineData(text, kind, name, flag);
    if (const auto line = ta::terminal::DecodeTrendLine(text)) {
        Require(readable && kind == static_cast<int>(line->kind) && flag == line->locked,
                "the terminal reads what the repository cannot");
        const CString encoded = ta::terminal::EncodeTrendLine(*line);
        Require(ta::terminal::DecodeTrendLine(encoded) == line, "a line came back changed");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CString text(reinterpret_cast<const char*>(data), size);
    DecodeAsClassSymbolKey(text);
    DecodeAsSymbolKey(text);
    DecodeAsTypeKey(text);
    DecodeAsData(text);
    return 0;
}
