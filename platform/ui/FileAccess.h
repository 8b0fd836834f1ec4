#pragma once

#include "platform/Export.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace ta::ui {

/// The largest file that dialogs read, in bytes.
constexpr std::size_t kMaxFileSize = 64U << 20U;

/// `text` as the name of a file, without what file systems do not take; cut when it is long.
TADIALOGS_EXPORT QString FileNameOf(const QString& text);

/// Replaces `bytes` by the whole file. Returns an empty string, or why it could not be read, in the
/// user's language; `bytes` is then empty.
TADIALOGS_EXPORT QString ReadWholeFile(const QString& path, std::string& bytes,
                                       std::size_t maxSize = kMaxFileSize);

/// Makes the file hold `bytes`, as a whole: after a failure or a crash it is as it was before, and
/// after success it is on the disk. Returns an empty string, or why it could not be written, in the
/// user's language.
TADIALOGS_EXPORT QString WriteWholeFile(const QString& path, std::string_view bytes);

/// Replaces `piece` by the next piece of a file, by nothing at the end. false gives the file up.
using PieceSource = std::function<bool(std::string& piece)>;

/// The same with bytes that are made while they are written. A file that its source gives up stays
/// as it was before, which is no failure here: the result is empty.
TADIALOGS_EXPORT QString WriteWholeFile(const QString& path, const PieceSource& source);

}  // namespace ta::ui
