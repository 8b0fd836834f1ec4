#pragma once

#include "platform/Text.h"

#include <QString>

/// The toolkit's strings, to and from text in the user's code page. Dialogs call these where they
/// call the repository and nowhere else.
namespace ta::ui {

inline QString ToQString(const CString& text) {
    return QString::fromStdU16String(ta::text::ToUtf16(text));
}

/// A character that the code page lacks becomes "?".
inline CString FromQString(const QString& text) {
    const auto* begin = reinterpret_cast<const char16_t*>(text.utf16());
    return ta::text::FromUtf16({begin, static_cast<std::size_t>(text.size())});
}

}  // namespace ta::ui
