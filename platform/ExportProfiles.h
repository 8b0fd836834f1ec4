#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <vector>

namespace ta {

/// What a profile's file is written for.
enum class ExportForm {
    Fixed,        ///< the viewer's own form, byte for byte: nothing else of the profile counts
    Spreadsheet,  ///< UTF-8 with its mark; date and time apart
    CodePage,     ///< a code page, for programs that know no UTF-8; date and time apart
    Analysis,     ///< UTF-8 without mark; ISO 8601 dates, numbers that read back the same
};

/// How a user saves tables, under a name. All forms but the fixed one quote as RFC 4180 says, have
/// the headings in the first line and no comma at the ends of lines.
struct ExportProfile {
    CString name;  ///< unique, not empty
    ExportForm form = ExportForm::Fixed;
    /// The headings of the columns to write, which stand in the table's order; the second column of
    /// one heading has a line feed and "2" behind it, and so on. One that a table does not have is
    /// passed over. Empty, or none of them there: all columns.
    std::vector<CString> columns;
    bool selectedRows = false;  ///< the selected rows only; all rows when none is selected
    int decimals = -1;  ///< of values, 0 to 9; -1 as shown. The analysis form has no use for it
    int codePage = 0;   ///< of the code-page form: 950, 936, 932, 949, 1252; 0 the user's

    bool operator==(const ExportProfile&) const = default;
};

/// Where the user's export profiles are kept. The terminal implements it and hangs it into
/// CSyncInfo; without one, profiles live as long as the dialog that makes them.
class TADIALOGS_EXPORT ExportProfiles {
public:
    virtual ~ExportProfiles() = default;

    /// Replaces `profiles` by those kept, in the user's order. false, and nothing changes, when
    /// they cannot be read; none kept is true.
    virtual bool bLoadExportProfiles(std::vector<ExportProfile>& profiles) = 0;
    /// Keeps these in the place of all that were kept. false when they could not be; those of
    /// before are then still there.
    virtual bool bSaveExportProfiles(const std::vector<ExportProfile>& profiles) = 0;
};

}  // namespace ta
