#include "sheet/ParamText.h"

#include "platform/Rounding.h"
#include "platform/ui/LangText.h"

#include <QLocale>

#include <cmath>

namespace ta::sheet {
namespace {

using ui::LangText;

}  // namespace

std::optional<double> ParseNumber(const QString& text) {
    bool isNumber = false;
    const QString plain = text.normalized(QString::NormalizationForm_KC).trimmed();
    const double value = QLocale::c().toDouble(plain, &isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

QString FormatNumber(double value, int decimals) {
    QString text = QString::number(RoundedTo(value, decimals), 'f', decimals);
    if (text.contains('.')) {
        while (text.endsWith('0')) {
            text.chop(1);
        }
        if (text.endsWith('.')) {
            text.chop(1);
        }
    }
    return text;
}

QString RangeText(const StudyParamInfo& param) {
    return FormatNumber(param.minimum, param.decimals) + " ~ " +
           FormatNumber(param.maximum, param.decimals);
}

QString FaultOf(const StudyParamInfo& param, const QString& text) {
    const std::optional<double> value = ParseNumber(text);
    if (!value) {
        return LangText("IDS_TADIALOGS-SHEET_FAULT_NUMBER");
    }
    if (!(*value >= param.minimum && *value <= param.maximum)) {
        return LangText("IDS_TADIALOGS-SHEET_FAULT_RANGE",
                        FormatNumber(param.minimum, param.decimals),
                        FormatNumber(param.maximum, param.decimals));
    }
    constexpr double kTypedDigits = 1e-9;
    if (std::abs(*value - RoundedTo(*value, param.decimals)) > kTypedDigits) {
        return param.decimals == 0 ? LangText("IDS_TADIALOGS-SHEET_FAULT_INTEGER")
                                   : LangText("IDS_TADIALOGS-SHEET_FAULT_DECIMALS",
                                              QString::number(param.decimals));
    }
    return {};
}

}  // namespace ta::sheet
