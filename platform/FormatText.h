#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <fmt/printf.h>

#include <exception>
#include <string>
#include <string_view>
#include <type_traits>

namespace ta::text {
namespace detail {

// The formatter takes narrow text for UTF-8 and would cut double-byte characters in half, so it
// gets one wide unit a character: the byte, or the two bytes as one number.
TADIALOGS_EXPORT std::wstring ToUnits(std::string_view text);
TADIALOGS_EXPORT CString FromUnits(std::wstring_view units);

template <class Argument>
auto ToFormatArgument(const Argument& argument) {
    if constexpr (std::is_convertible_v<const Argument&, std::string_view>) {
        return ToUnits(argument);
    } else {
        return argument;
    }
}

}  // namespace detail

/// Formats by a printf format that comes from a language string. When its conversions do not fit
/// the arguments (a translator's stray "%s"), the result is the format's own text, unformatted.
/// Widths and precisions of text count characters.
template <class... Arguments>
CString Format(const CString& format, const Arguments&... arguments) {
    try {
        return detail::FromUnits(
            fmt::sprintf(detail::ToUnits(format), detail::ToFormatArgument(arguments)...));
    } catch (const std::exception&) {
        return format;
    }
}

}  // namespace ta::text
