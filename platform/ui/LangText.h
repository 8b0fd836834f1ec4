#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <QString>
#include <QStringList>

namespace ta::ui {

/// The text of a language key, in the language in use; the key itself when the terminal knows no
/// text for it. Ask again after a change of the language.
TADIALOGS_EXPORT QString LangText(const CString& key);

/// The text with the arguments in the places of %1, %2 and so on; behind it when it has no places,
/// as a key has that the terminal knows no text for.
template <class... Arguments>
QString LangText(const CString& key, const QString& first, const Arguments&... rest) {
    const QString text = LangText(key);
    return text.contains("%1") ? text.arg(first, rest...)
                               : QStringList{text, first, rest...}.join(' ');
}

/// The title of message boxes and questions, which the terminal gives.
TADIALOGS_EXPORT QString TerminalTitle();

/// A label's text without its mnemonic, "&G" or, as in Chinese, "(&G)".
TADIALOGS_EXPORT QString WithoutMnemonic(const QString& text);

/// A text as menus and tabs show it, where a bare "&" marks a mnemonic.
TADIALOGS_EXPORT QString WithBareAmpersands(QString text);

/// Whether a form's text is a language key, "IDS_..." or "IDC_...", and no text of its own.
TADIALOGS_EXPORT bool IsLangKey(const QString& text);

}  // namespace ta::ui
