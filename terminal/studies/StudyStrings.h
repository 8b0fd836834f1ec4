#pragma once

#include "platform/Study.h"
#include "platform/Types.h"

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace ta::terminal {

/// The settings strings of a group, one a study: the type, "=", and values separated by commas, as
/// in "22=12,26,9" or "16=1C7ED6:1:0:1,E8590C:1:2:0". They stay as they were given, in their
/// order, until a study is written; they are taken apart only when a study is asked for.
class StudyStrings {
public:
    void Replace(std::vector<CString> strings) { m_strings = std::move(strings); }
    const std::vector<CString>& All() const { return m_strings; }

    /// The values of the first string of a study, with those that this version does not know; they
    /// last until the next change. Nothing when the study has no string.
    std::optional<std::vector<std::string_view>> Values(StudyType type) const;

    /// Writes the first values of the study's first string and keeps the values behind them;
    /// appends a string when the study has none.
    void Write(StudyType type, const std::vector<CString>& values);

private:
    std::vector<CString> m_strings;
};

/// The study that a string belongs to; kNoStudy when it does not begin with a type and "=".
StudyType StudyOfString(std::string_view text);
/// The values of such a string; none for "22=".
std::vector<std::string_view> SplitValues(std::string_view text);
/// The string with its first values replaced. `values` may be more or fewer than it has.
CString WithValues(std::string_view text, const std::vector<CString>& values);

/// A decimal number, blanks around it allowed; NaN for anything else.
double ParseNumber(std::string_view text);
/// The shortest text that ParseNumber reads back as the same number; never with an exponent.
CString FormatNumber(double value);

/// Colour as six hexadecimal digits, width, style, visible (1 or 0), separated by ":"; fields
/// behind these are allowed. Nothing when a field is missing, unreadable or out of range.
std::optional<StudyShape> ParseShape(std::string_view text);
/// `before` is the text that it takes the place of, whose fields behind the known four stay.
CString FormatShape(const StudyShape& shape, std::string_view before = {});

}  // namespace ta::terminal
