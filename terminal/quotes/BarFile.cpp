#include "terminal/quotes/BarFile.h"

#include "terminal/lang/Language.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <type_traits>

namespace ta::terminal {
namespace {

struct Header {
    std::array<char, 8> mark{'T', 'A', 'B', 'A', 'R', 'S', '1', '\n'};
    std::uint32_t byteOrder = 0x01020304;
    std::uint32_t recordSize = sizeof(Bar);
    std::uint64_t count = 0;

    bool operator==(const Header&) const = default;
};

static_assert(sizeof(Header) == 24 && std::is_trivially_copyable_v<Header>);
static_assert(sizeof(Bar) == 6 * sizeof(double) && std::is_trivially_copyable_v<Bar>);

bool Fail(const QString& path, const QString& reason, QString* error) {
    if (error != nullptr) {
        *error = Tr("IDS_TERMINAL-QUOTES_FILE_UNREADABLE").arg(path, reason);
    }
    return false;
}

// Leaves `file` open after the header.
bool OpenAndCheck(QFile* file, std::uint64_t* count, QString* error) {
    if (!file->open(QIODevice::ReadOnly)) {
        return Fail(file->fileName(), file->errorString(), error);
    }
    Header header;
    const bool read =
        file->read(reinterpret_cast<char*>(&header), sizeof header) == qint64{sizeof header};
    Header wanted;
    wanted.count = header.count;
    const auto length = static_cast<std::uint64_t>(file->size());
    if (!read || !(header == wanted) || header.count == 0 ||
        (length - sizeof header) % sizeof(Bar) != 0 ||
        header.count != (length - sizeof header) / sizeof(Bar)) {
        return Fail(file->fileName(), Tr("IDS_TERMINAL-QUOTES_BAR_FILE_DAMAGED"), error);
    }
    *count = header.count;
    return true;
}

bool IsProper(const Bar& bar) {
    return std::isfinite(bar.time) && std::isfinite(bar.high) && std::isfinite(bar.low) &&
           std::isfinite(bar.volume) && bar.low <= bar.open && bar.open <= bar.high &&
           bar.low <= bar.close && bar.close <= bar.high;
}

}  // namespace

bool WriteBarFile(const QString& path, const BarSeries& bars, QString* error) {
    QSaveFile file(path);
    Header header;
    header.count = bars.size();
    const auto length = static_cast<qint64>(bars.size() * sizeof(Bar));
    // The commit alone does not tell that the last buffer did not fit the disk.
    if (file.open(QIODevice::WriteOnly) &&
        file.write(reinterpret_cast<const char*>(&header), sizeof header) ==
            qint64{sizeof header} &&
        file.write(reinterpret_cast<const char*>(bars.data()), length) == length && file.flush() &&
        file.commit()) {
        return true;
    }
    if (error != nullptr) {
        *error = Tr("IDS_TERMINAL-QUOTES_FILE_UNWRITABLE").arg(path, file.errorString());
    }
    return false;
}

std::shared_ptr<const BarSeries> ReadBarFile(const QString& path, QString* error) {
    QFile file(path);
    std::uint64_t count = 0;
    if (!OpenAndCheck(&file, &count, error)) {
        return nullptr;
    }
    auto bars = std::make_shared<BarSeries>(count);
    const auto length = static_cast<qint64>(count * sizeof(Bar));
    const auto ascending = [](const Bar& left, const Bar& right) { return left.time < right.time; };
    if (file.read(reinterpret_cast<char*>(bars->data()), length) != length ||
        !std::ranges::all_of(*bars, IsProper) ||
        std::ranges::adjacent_find(*bars, std::not_fn(ascending)) != bars->end()) {
        Fail(path, Tr("IDS_TERMINAL-QUOTES_BAR_FILE_DAMAGED"), error);
        return nullptr;
    }
    return bars;
}

bool CheckBarFile(const QString& path, QString* error) {
    QFile file(path);
    std::uint64_t count = 0;
    return OpenAndCheck(&file, &count, error);
}

}  // namespace ta::terminal
