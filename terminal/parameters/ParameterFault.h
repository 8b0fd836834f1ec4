#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <string_view>

namespace ta::terminal {

/// How a file of study parameters is damaged, and where.
struct ParameterFault {
    const char* textKey = "";  ///< language key of the reason
    QStringList details = {};  ///< its %1, %2, ...; at most three
    std::size_t line = 0;      ///< from 1; 0: not known here
};

/// Line and reason in the language in use.
QString FaultText(const ParameterFault& fault);

/// Text of a file as messages show it, cut when it is very long.
QString Shown(std::string_view utf8);

}  // namespace ta::terminal
