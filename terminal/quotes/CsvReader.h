#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace ta::terminal {

/// Splits separated text into records of one line each. A field may stand in double quotes, with
/// the separator in it and "" for a quote; a quote that the line does not close ends with the line,
/// so that one stray quote costs one line. Works on bytes: good for UTF-8 and for code pages whose
/// second bytes are 0x40 and above.
class CsvReader {
public:
    /// `text` must outlive the reader.
    explicit CsvReader(std::string_view text, char separator = ',')
        : m_text(text), m_separator(separator) {}

    /// Goes to the next line that is not blank; false at the end.
    bool Next();

    /// Line number of the record, from 1.
    std::size_t Line() const { return m_line; }
    /// The fields of the record, without quotes; valid until the next call of Next.
    const std::vector<std::string_view>& Fields() const { return m_fields; }
    /// Whether the line ended inside a quoted field.
    bool QuoteOpen() const { return m_quoteOpen; }
    /// Whether something stood between a closing quote and the separator; it is no part of the
    /// field.
    bool TextAfterQuote() const { return m_textAfterQuote; }
    /// Bytes read so far.
    std::size_t Position() const { return m_position; }

private:
    std::string_view TakeLine();
    std::string_view QuotedField(std::string_view line, std::size_t* position);
    std::size_t EndOfField(std::string_view line, std::size_t quote);

    std::string_view m_text;
    char m_separator;
    std::size_t m_position = 0;
    std::size_t m_line = 0;
    bool m_quoteOpen = false;
    bool m_textAfterQuote = false;
    std::vector<std::string_view> m_fields;
    std::deque<std::string> m_unquoted;
};

}  // namespace ta::terminal
