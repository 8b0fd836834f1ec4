#pragma once

#include "terminal/store/CommittedRows.h"
#include "terminal/store/OpenResult.h"
#include "terminal/store/StoreFile.h"

#include <QString>

namespace ta::terminal {

/// A store as opening left it.
struct StoreOpening {
    OpenResult result;
    StoreFile file;  ///< closed when the file could not be opened
    CommittedRows rows;
    /// `rows` is all that the file holds, so nothing is lost when a later PackFile opens it again
    /// and writes.
    bool complete = false;
};

/// Opens the store at `path`, or begins one. A damaged or foreign file is moved aside under a
/// dated name in its folder, with its journals, and never over another file.
StoreOpening OpenStore(const QString& path, const char* vfs);

/// Moves the file of `damaged`, which is closed, aside and begins a new one; opens the file that
/// is there when another process has replaced it already.
StoreOpening ReplaceDamagedStore(const QString& path, const char* vfs, StoreFile& damaged);

}  // namespace ta::terminal
