#include "terminal/lang/Language.h"
#include "terminal/store/OpenResult.h"

#include <QDir>

namespace ta::terminal {

namespace {

/// `text`, and where a damaged file was kept when the text does not say so itself.
QString WithKeptFile(const QString& text, const QString& movedTo) {
    return movedTo.isEmpty() ? text
                             : text + '\n' + Tr("IDS_TERMINAL-STORE_DAMAGED_KEPT").arg(movedTo);
}

}  // namespace

QString OpenMessage(const OpenResult& result) {
    const QString path = QDir::toNativeSeparators(result.path);
    const QString movedTo = QDir::toNativeSeparators(result.movedTo);
    switch (result.state) {
        case OpenResult::Opened:
        case OpenResult::Created:
            return {};
        case OpenResult::MovedAside:
            return Tr("IDS_TERMINAL-STORE_MOVED_ASIDE").arg(path, movedTo);
        case OpenResult::NewerVersion:
            return Tr("IDS_TERMINAL-STORE_NEWER_VERSION").arg(path);
        case OpenResult::ReadOnly:
            return Tr("IDS_TERMINAL-STORE_READ_ONLY").arg(path);
        case OpenResult::Failed:
            break;
    }
    return WithKeptFile(Tr("IDS_TERMINAL-STORE_OPEN_FAILED").arg(path, result.reason), movedTo);
}

QString PackErrorMessage(const PackError& error) {
    const QString path = QDir::toNativeSeparators(error.path);
    const QString movedTo = QDir::toNativeSeparators(error.movedTo);
    switch (error.reason) {
        case PackError::Replaced:
            return Tr("IDS_TERMINAL-STORE_PACK_REPLACED").arg(path, movedTo);
        case PackError::DiskFull:
            return WithKeptFile(Tr("IDS_TERMINAL-STORE_PACK_DISK_FULL").arg(path), movedTo);
        case PackError::CannotWrite:
            return WithKeptFile(Tr("IDS_TERMINAL-STORE_PACK_CANNOT_WRITE").arg(path), movedTo);
        case PackError::NewerVersion:
            return WithKeptFile(Tr("IDS_TERMINAL-STORE_PACK_NEWER_VERSION").arg(path), movedTo);
        case PackError::InUse:
            return WithKeptFile(Tr("IDS_TERMINAL-STORE_PACK_IN_USE").arg(path), movedTo);
        case PackError::NotOpen:
            return WithKeptFile(Tr("IDS_TERMINAL-STORE_PACK_NOT_OPEN").arg(path, error.detail),
                                movedTo);
        case PackError::Other:
            break;
    }
    return WithKeptFile(Tr("IDS_TERMINAL-STORE_PACK_FAILED").arg(path, error.detail), movedTo);
}

}  // namespace ta::terminal
