#pragma once

#include <string_view>
#include <vector>

namespace ta::text {

/// The parts of `text` between separators, at least one, and empty ones too. `separator` is a
/// character below 0x40, which is never half of another. The parts live as long as `text`.
inline std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator, begin)) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

}  // namespace ta::text
