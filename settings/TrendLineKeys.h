#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

/// The key and data strings of trend lines. The separators "-" and "/" are bytes that never are
/// half a character, so symbols and names in any characters of the code page pass through.
///
/// Decoders return false on malformed text and leave the outputs that they did not reach unchanged.
namespace ta::settings {

/// "0a/2330" of service 10 and symbol 2330.
TADIALOGS_EXPORT CString PackSymbolKey(unsigned char service, const CString& symbol);

/// "MXTechView-0a/2330".
CString PackTrendLineSymbolKey(const CString& chartClass, const CString& symbolKey);

/// "0a/2330/0003/5/x": symbol key, period code, count, trailing name. The count is 0 unless the
/// period is minute (3) or second (4).
CString PackTrendLineTypeKey(const CString& symbolKey, const CString& trailingName, int periodCode,
                             int count);

bool DecodeClassSymbolKey(const CString& key, CString& chartClass, CString& symbolKey);
bool DecodeSymbolKey(const CString& key, unsigned char& service, CString& symbol);
bool DecodeTypeKey(const CString& key, CString& symbolKey, CString& trailingName, int& periodCode,
                   int& count);

/// A trend-line data string: "kind/f1/f2/f3/flag.../...". Fields 1 to 3 and those after field 4 are
/// the chart module's.
bool DecodeLineData(const CString& data, int& kind, CString& name, bool& flag);

/// The name of a trend-line kind in the language in use; empty for a kind without one.
CString TrendLineKindName(int kind);

}  // namespace ta::settings
