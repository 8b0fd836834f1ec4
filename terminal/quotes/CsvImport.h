#pragma once

#include "platform/Study.h"
#include "terminal/quotes/CsvValues.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace ta::terminal {

struct CsvBadRow {
    std::size_t line = 0;  ///< from 1
    CsvFault fault = CsvFault::None;
};

/// What a price file held. Nothing has been kept anywhere: the caller shows the bad rows and
/// decides.
struct CsvImportResult {
    /// Why nothing could be read, in the language in use; empty when the file is a price file.
    QString error;
    bool cancelled = false;          ///< the rest is empty then
    BarSeries bars;                  ///< the good rows, oldest first, times ascending
    std::vector<CsvBadRow> badRows;  ///< the first kMaxBadRowsKept ones, by line
    std::size_t badRowCount = 0;     ///< all of them
    double priceStep = 0.01;         ///< a step that shows the decimals that the prices have
};

inline constexpr std::size_t kMaxBadRowsKept = 1000;

/// Told how much is done (0 to 1) every few thousand rows; false cancels.
using CsvProgress = std::function<bool(double)>;

/// Reads prices from CSV text: UTF-8 with or without mark, UTF-16 with mark, or the user's code
/// page; separated by comma, semicolon or tab. The first 20 lines are searched for the headings of
/// date, open, high, low and close (volume and time of day may be there as well), in English or
/// Chinese, in any order, among others. Rows may come in any order. A row whose time was there
/// before is a bad row.
CsvImportResult ImportCsv(std::string_view bytes, const CsvProgress& progress = {});
CsvImportResult ImportCsvFile(const QString& path, const CsvProgress& progress = {});

/// The reason in the language in use, for a list of bad rows.
QString FaultText(CsvFault fault);

}  // namespace ta::terminal
