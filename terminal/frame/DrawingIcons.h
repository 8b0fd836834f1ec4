#pragma once

#include "terminal/lines/TrendLine.h"

#include <QIcon>
#include <QPalette>

#include <optional>

namespace ta::terminal {

/// The picture of a drawing tool in the colours of a palette; nothing is the pointer.
QIcon DrawingIcon(std::optional<TrendLineKind> tool, const QPalette& palette);

}  // namespace ta::terminal
