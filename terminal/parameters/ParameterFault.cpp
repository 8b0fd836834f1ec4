#include "terminal/parameters/ParameterFault.h"

#include "terminal/lang/Language.h"

#include <algorithm>

namespace ta::terminal {
namespace {

QString Reason(const ParameterFault& fault) {
    const QString text = Tr(fault.textKey);
    const QStringList& details = fault.details;
    switch (details.size()) {
        case 0:
            return text;
        case 1:
            return text.arg(details[0]);
        case 2:
            return text.arg(details[0], details[1]);
        default:
            return text.arg(details[0], details[1], details[2]);
    }
}

}  // namespace

QString FaultText(const ParameterFault& fault) {
    return Tr("IDS_TERMINAL-PARAMETERS_AT_LINE").arg(QString::number(fault.line), Reason(fault));
}

QString Shown(std::string_view utf8) {
    constexpr qsizetype kLongest = 60;
    constexpr std::size_t kMostBytes = 4 * kLongest;
    const auto bytes = static_cast<qsizetype>(std::min(utf8.size(), kMostBytes + 1));
    const QString text = QString::fromUtf8(utf8.data(), bytes);
    if (text.size() <= kLongest) {
        return text;
    }
    const bool cutsPair = text[kLongest - 1].isHighSurrogate();
    return text.left(cutsPair ? kLongest - 1 : kLongest) + u'…';
}

}  // namespace ta::terminal
