#pragma once

#include "dialogs/TechDataTable.h"
#include "dialogs/TechDataTexts.h"
#include "platform/ExportProfiles.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ta::techdata {

/// The most lines that a spreadsheet takes, the headings' among them.
constexpr std::size_t kSpreadsheetLines = 1'048'576;

/// How a table is written.
struct TextForm {
    enum class Dates { AsShown, Apart, Iso };
    enum class Numbers { AsShown, Decimals, Shortest };
    enum class Encoding { UserCodePage, CodePage, Utf8, Utf8WithMark };

    char separator = ',';
    bool title = false;           ///< the title as the first line
    bool headings = true;         ///< the headings as a line before the rows
    bool separatorAtEnd = false;  ///< each line but the title's ends with a separator
    /// Cells with a separator, a quote or a line end stand in quotes, as RFC 4180 says, and
    /// headings that a spreadsheet would run as formulas get an apostrophe in front.
    bool careful = true;
    Dates dates = Dates::AsShown;
    Numbers numbers = Numbers::AsShown;
    int decimals = 0;  ///< with Numbers::Decimals
    Encoding encoding = Encoding::UserCodePage;
    int codePage = 950;  ///< with Encoding::CodePage
};

/// The viewer's own forms: title, headings and cells, each of the latter followed by the separator
/// (TAB for the clipboard, "," for CSV), lines ended by CR LF, nothing quoted.
TextForm ClipboardForm();
TextForm CsvForm();
/// For pasting selected rows: cells with TABs between them.
TextForm RowsForm(bool headings);
/// The form of a profile's files.
TextForm FormOf(const ExportProfile& profile);

/// What a profile calls a column: its heading, and which of the columns of that heading it is.
CString ColumnKey(const Headers& headers, std::size_t column);
/// The columns of a profile in a table: their numbers from 0, in the table's order.
std::vector<std::size_t> ColumnsOf(const ExportProfile& profile, const Headers& headers);
std::vector<std::size_t> AllColumns(const Headers& headers);

/// Rows `first` to `last`, without `last`.
struct RowRange {
    std::size_t first = 0;
    std::size_t last = 0;
};

/// The characters of the chosen columns' headings, and of the time's where it stands apart, that
/// the form's code page does not have, each once, as UTF-16; empty for other encodings. Cells of
/// numbers and dates lose nothing.
std::u16string LostCharacters(const TextForm& form, const Headers& headers,
                              const std::vector<std::size_t>& columns, bool hasTimeOfDay);

/// Writes rows of a table, piece by piece. Between two pieces the owner may change his vectors:
/// each piece looks again at what they hold.
class TableWriter {
public:
    /// `table` and `cells` outlive this. The title is in the user's code page.
    TableWriter(const TechDataTable& table, const CellTexts& cells, const TextForm& form,
                const CString& title, std::vector<std::size_t> columns, std::vector<RowRange> rows);

    /// Replaces `piece` by the next piece, which ends with the end of a line and holds a few
    /// thousand rows, in the form's encoding. false, and an empty piece, behind the last one.
    bool Next(std::string& piece);
    std::size_t RowsDone() const { return m_done; }
    std::size_t RowsInAll() const;

private:
    void AppendHead(CString& out);
    void AppendHeading(CString& out, std::size_t column);
    void AppendRow(CString& out, std::size_t row);
    void AppendDates(CString& out, const OneRecord* record);
    void AppendValueOf(CString& out, const OneRecord& record, std::size_t column);
    void AppendCareful(CString& out, std::string_view cell) const;
    /// What follows a cell.
    void EndCell(CString& out) const { out += m_form.separator; }
    void EndLine(CString& out) const;
    void Encode(std::string& piece) const;

    const TechDataTable& m_table;
    const CellTexts& m_cells;
    TextForm m_form;
    CString m_title;
    std::vector<std::size_t> m_columns;
    std::vector<RowRange> m_rows;
    bool m_headDone = false;
    std::size_t m_range = 0;    ///< the range that is being written
    std::size_t m_inRange = 0;  ///< rows of it that are written
    std::size_t m_done = 0;
    CString m_cell;  ///< the cell that is being made
};

}  // namespace ta::techdata
