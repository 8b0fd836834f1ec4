#include "platform/ui/LangText.h"

#include "platform/QuoteInterface.h"
#include "platform/SyncInfo.h"
#include "platform/ui/TextBridge.h"

#include <QRegularExpression>

namespace ta::ui {

QString LangText(const CString& key) {
    return ToQString(BKQuoteInterface::GetBKInterface().LangGetLangString(key));
}

QString TerminalTitle() {
    return ToQString(CSyncInfo::GetSettingCFG().SYS_szGetMessageBoxTitle());
}

QString WithoutMnemonic(const QString& text) {
    static const QRegularExpression mnemonic(R"(\s*\(&.\)|&)");
    return QString(text).remove(mnemonic);
}

QString WithBareAmpersands(QString text) {
    return text.replace('&', "&&");
}

bool IsLangKey(const QString& text) {
    return text.startsWith(QLatin1String("IDS_")) || text.startsWith(QLatin1String("IDC_"));
}

}  // namespace ta::ui
