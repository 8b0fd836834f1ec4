#pragma once

#include "platform/Study.h"

#include <QString>

#include <memory>

namespace ta::terminal {

// Bars of the user's own files on disk: a header of 24 bytes (mark, byte order, size of a record,
// count of records) and the records of six doubles, in the order of the machine's bytes.

/// Writes the whole file or leaves what was there. The reason of a failure goes to `error`.
bool WriteBarFile(const QString& path, const BarSeries& bars, QString* error);

/// Null, with the reason in `error`, for a file that is not whole or holds no proper bars.
std::shared_ptr<const BarSeries> ReadBarFile(const QString& path, QString* error);

/// Whether the file is there with a fitting header and length; its bars are not read.
bool CheckBarFile(const QString& path, QString* error);

}  // namespace ta::terminal
