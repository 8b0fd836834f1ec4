#pragma once

#include "platform/Types.h"

#include <string_view>
#include <vector>

namespace ta::terminal {

/// How traders write a study over a chart, and the levels that they read it by.
struct StudyLook {
    enum class Name {
        Abbreviation,  ///< with the parameters: "MACD(12,26,9)"
        Display,       ///< the name alone
        None,          ///< the lines say it: "MA5 MA10"
    };

    Name name = Name::Abbreviation;
    /// Of the lines, with "{0}" for the first parameter. A line beyond them has its own name.
    std::vector<std::string_view> lines = {};
    std::vector<double> levels = {};
};

/// A study that the table does not know has the abbreviation and its lines' own names.
const StudyLook& LookOf(StudyType type);

}  // namespace ta::terminal
