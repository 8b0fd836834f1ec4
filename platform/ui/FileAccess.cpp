#include "platform/ui/FileAccess.h"

#include "platform/ui/LangText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace ta::ui {
namespace {

/// Why an operation on the file failed; for what has no words of ours, the system's.
QString FaultOf(const QFileDevice& file, bool hasRight) {
    return hasRight ? file.errorString() : LangText("IDS_TADIALOGS-FILE_NO_RIGHT");
}

QString WithPath(const CString& key, const QString& path, const QString& fault) {
    return LangText(key, QDir::toNativeSeparators(path), fault);
}

QString ReadFault(const QString& path, std::string& bytes, std::size_t maxSize) {
    const QFileInfo info(path);
    if (!info.exists()) {
        return LangText("IDS_TADIALOGS-FILE_NOT_FOUND");
    }
    if (!info.isFile()) {
        return LangText("IDS_TADIALOGS-FILE_NOT_A_FILE");
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return FaultOf(file, info.isReadable());
    }
    if (static_cast<std::size_t>(file.size()) > maxSize) {
        return LangText("IDS_TADIALOGS-FILE_TOO_LARGE", QString::number(maxSize >> 20U));
    }
    bytes.resize(static_cast<std::size_t>(file.size()));
    const qint64 count = file.read(bytes.data(), static_cast<qint64>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<qint64>(count, 0)));
    return count < 0 ? FaultOf(file, true) : QString();
}

bool WriteAll(QFileDevice& file, std::string_view bytes) {
    // What did not fit into the first write fails in the next one, with the reason.
    while (!bytes.empty()) {
        const qint64 count = file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

enum class Written { Whole, GivenUp, Failed };

Written WritePieces(QFileDevice& file, const PieceSource& source) {
    for (std::string piece;;) {
        if (!source(piece)) {
            return Written::GivenUp;
        }
        if (piece.empty()) {
            return Written::Whole;
        }
        if (!WriteAll(file, piece)) {
            return Written::Failed;
        }
    }
}

/// A path that cannot be one of a file to write; empty when it can.
QString PathFault(const QFileInfo& info) {
    if (info.isDir()) {
        return LangText("IDS_TADIALOGS-FILE_NOT_A_FILE");
    }
    return info.dir().exists() ? QString() : LangText("IDS_TADIALOGS-FILE_PATH_GONE");
}

QString WriteFault(const QString& path, const PieceSource& source) {
    const QFileInfo info(path);
    const QString pathFault = PathFault(info);
    if (!pathFault.isEmpty()) {
        return pathFault;
    }
    // Unbuffered, because commit overlooks a failure to write what a buffer still holds.
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        const Written written = WritePieces(file, source);
        if (written == Written::GivenUp || (written == Written::Whole && file.commit())) {
            return {};
        }
    }
    if (file.error() == QFileDevice::ResourceError) {
        return LangText("IDS_TADIALOGS-FILE_DISK_FULL");
    }
    const bool replaces = info.exists();
    return FaultOf(file, QFileInfo(info.path()).isWritable() && (!replaces || info.isWritable()));
}

}  // namespace

QString FileNameOf(const QString& text) {
    constexpr qsizetype kLongest = 80;
    constexpr QStringView kUnfit = u"<>:\"/\\|?*";
    QString name = text.trimmed().left(kLongest);
    for (QChar& character : name) {
        character = character < u' ' || kUnfit.contains(character) ? u'_' : character;
    }
    return name;
}

QString ReadWholeFile(const QString& path, std::string& bytes, std::size_t maxSize) {
    bytes.clear();
    const QString fault = ReadFault(path, bytes, maxSize);
    return fault.isEmpty() ? fault : WithPath("IDS_TADIALOGS-FILE_UNREADABLE", path, fault);
}

QString WriteWholeFile(const QString& path, std::string_view bytes) {
    return WriteWholeFile(path, [&bytes](std::string& piece) {
        piece = std::exchange(bytes, {});
        return true;
    });
}

QString WriteWholeFile(const QString& path, const PieceSource& source) {
    const QString fault = WriteFault(path, source);
    return fault.isEmpty() ? fault : WithPath("IDS_TADIALOGS-FILE_UNWRITABLE", path, fault);
}

}  // namespace ta::ui
