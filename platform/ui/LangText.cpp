#include "platform/ui/LangText.h"

#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/ui/TextBridge.h"

namespace ta::ui {

QString LangText(const CString& key) {
    const CString text = BKQuoteInterface::GetBKInterface().LangGetLangString(key);
    return ToQString(text::Format("%s", text));
}

bool IsLangKey(const QString& text) {
    return text.startsWith("IDS_") || text.startsWith("IDC_");
}

}  // namespace ta::ui
