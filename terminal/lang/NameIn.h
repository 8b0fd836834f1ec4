#pragma once

#include "platform/Types.h"
#include "terminal/lang/Language.h"

namespace ta::terminal {

/// The name in the language in use of what has an `englishName` and a `chineseName`.
template <class Named>
CString NameIn(const Named& named) {
    const Language* language = Language::Instance();
    const bool english = language != nullptr && language->Current() == Language::English;
    return english ? named.englishName : named.chineseName;
}

}  // namespace ta::terminal
