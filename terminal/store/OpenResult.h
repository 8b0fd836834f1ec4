#pragma once

#include <QString>

namespace ta::terminal {

/// What opening the store came to.
struct OpenResult {
    enum State {
        Opened,
        Created,       ///< there was no store; it starts empty
        MovedAside,    ///< the file was damaged or no store; it is kept as movedTo, a new one begun
        NewerVersion,  ///< written by a newer version of the program: read, never written
        ReadOnly,      ///< the file or its folder cannot be written: read, tried again at PackFile
        Failed,        ///< nothing could be read; the store works in memory alone
    };

    State state = Failed;
    QString path;     ///< of the store
    QString movedTo;  ///< where a damaged or foreign file went; empty when none did
    QString reason;   ///< the system's words for Failed, in English
};

/// Why a PackFile failed. What was to be written is still pending, except for Replaced.
struct PackError {
    enum Reason {
        DiskFull,
        CannotWrite,   ///< no permission, or a read-only medium
        NewerVersion,  ///< the store is of a newer version and is not written
        InUse,         ///< another process held the store for longer than we wait
        NotOpen,       ///< opening had failed
        Replaced,  ///< the file was found damaged and moved to movedTo; all is saved in a new one
        Other,
    };

    Reason reason = Other;
    QString path;     ///< of the store
    QString movedTo;  ///< where a damaged file went; empty when none did
    QString detail;   ///< the system's words, in English
};

/// The text for the user, in the language in use. Empty for Opened and Created.
QString OpenMessage(const OpenResult& result);
QString PackErrorMessage(const PackError& error);

}  // namespace ta::terminal
