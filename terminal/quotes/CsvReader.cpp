#include "terminal/quotes/CsvReader.h"

#include <algorithm>

namespace ta::terminal {

std::string_view CsvReader::TakeLine() {
    const std::size_t end = m_text.find('\n', m_position);
    std::string_view line = m_text.substr(m_position, end - m_position);
    m_position = std::min(end, m_text.size() - 1) + 1;
    ++m_line;
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

bool CsvReader::Next() {
    m_fields.clear();
    m_unquoted.clear();
    m_quoteOpen = false;
    m_textAfterQuote = false;
    std::string_view line;
    while (line.find_first_not_of(" \t") == std::string_view::npos) {
        if (m_position >= m_text.size()) {
            return false;
        }
        line = TakeLine();
    }
    std::size_t position = 0;
    while (true) {
        if (position < line.size() && line[position] == '"') {
            m_fields.push_back(QuotedField(line, &position));
        } else {
            const std::size_t end = std::min(line.find(m_separator, position), line.size());
            m_fields.push_back(line.substr(position, end - position));
            position = end;
        }
        if (position >= line.size()) {
            return true;
        }
        ++position;
    }
}

std::string_view CsvReader::QuotedField(std::string_view line, std::size_t* position) {
    const std::size_t begin = *position + 1;
    std::size_t quote = line.find('"', begin);
    const bool doubled = quote != std::string_view::npos && line.substr(quote + 1).starts_with('"');
    if (!doubled) {
        m_quoteOpen = m_quoteOpen || quote == std::string_view::npos;
        quote = std::min(quote, line.size());
        *position = EndOfField(line, quote);
        return line.substr(begin, quote - begin);
    }
    std::string& text = m_unquoted.emplace_back();
    std::size_t i = begin;
    while (i < line.size() && (line[i] != '"' || line.substr(i + 1).starts_with('"'))) {
        text += line[i];
        i += line[i] == '"' ? 2 : 1;
    }
    m_quoteOpen = m_quoteOpen || i >= line.size();
    *position = EndOfField(line, std::min(i, line.size()));
    return text;
}

std::size_t CsvReader::EndOfField(std::string_view line, std::size_t quote) {
    const std::size_t end = std::min(line.find(m_separator, quote), line.size());
    const std::string_view closing = line.substr(quote, end - quote);
    m_textAfterQuote =
        m_textAfterQuote || closing.find_first_not_of(" \t", 1) != std::string_view::npos;
    return end;
}

}  // namespace ta::terminal
