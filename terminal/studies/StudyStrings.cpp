#include "terminal/studies/StudyStrings.h"

#include "platform/Split.h"
#include "platform/Text.h"
#include "terminal/studies/StudyDefinition.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

using text::Split;
using text::Trim;

std::optional<int> ParseInteger(std::string_view text, int base = 10) {
    int value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, base);
    const bool whole = error == std::errc() && stop == end && value >= 0;
    return whole ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<std::vector<std::string_view>> StudyStrings::Values(StudyType type) const {
    const auto found = std::ranges::find(m_strings, type, StudyOfString);
    return found == m_strings.end() ? std::nullopt : std::optional(SplitValues(*found));
}

void StudyStrings::Write(StudyType type, const std::vector<CString>& values) {
    const auto found = std::ranges::find(m_strings, type, StudyOfString);
    if (found == m_strings.end()) {
        m_strings.push_back(WithValues(fmt::format("{}=", type), values));
    } else {
        *found = WithValues(*found, values);
    }
}

StudyType StudyOfString(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return kNoStudy;
    }
    return ParseInteger(Trim(text.substr(0, equals))).value_or(kNoStudy);
}

std::vector<std::string_view> SplitValues(std::string_view text) {
    const std::string_view values = text.substr(text.find('=') + 1);
    return values.empty() ? std::vector<std::string_view>() : Split(values, ',');
}

CString WithValues(std::string_view text, const std::vector<CString>& values) {
    std::vector<std::string_view> all(values.begin(), values.end());
    const std::vector<std::string_view> before = SplitValues(text);
    if (before.size() > all.size()) {
        all.insert(all.end(), before.begin() + static_cast<std::ptrdiff_t>(all.size()),
                   before.end());
    }
    return fmt::format("{}{}", text.substr(0, text.find('=') + 1), fmt::join(all, ","));
}

double ParseNumber(std::string_view text) {
    const std::string_view digits = Trim(text);
    double value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    const bool whole = error == std::errc() && stop == end && std::isfinite(value);
    return whole ? value : std::numeric_limits<double>::quiet_NaN();
}

CString FormatNumber(double value) {
    std::array<char, 400> digits{};  // the longest double written out has 325 characters or so
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

std::optional<StudyShape> ParseShape(std::string_view text) {
    const std::vector<std::string_view> fields = Split(Trim(text), ':');
    if (fields.size() < 4 || fields[0].size() != 6) {
        return std::nullopt;
    }
    const auto colour = ParseInteger(fields[0], 16);
    const auto width = ParseInteger(fields[1]);
    const auto style = ParseInteger(fields[2]);
    const auto visible = ParseInteger(fields[3]);
    if (!colour || !width || !style || !visible || *visible > 1) {
        return std::nullopt;
    }
    const StudyShape shape{static_cast<std::uint32_t>(*colour), *width, *style, *visible == 1};
    return IsUsableShape(shape) ? std::optional(shape) : std::nullopt;
}

CString FormatShape(const StudyShape& shape, std::string_view before) {
    CString text = fmt::format("{:06X}:{}:{}:{}", shape.colour, shape.width, shape.style,
                               shape.visible ? 1 : 0);
    const std::vector<std::string_view> fields = Split(before, ':');
    for (std::size_t i = 4; i < fields.size(); ++i) {
        text += fmt::format(":{}", fields[i]);
    }
    return text;
}

}  // namespace ta::terminal
