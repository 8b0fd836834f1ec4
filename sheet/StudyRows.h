#pragma once

#include "platform/Study.h"

#include <QString>

namespace ta::sheet {

/// A parameter of a study as the editor shows it.
struct ParamRow {
    QString name;
    StudyParamInfo info;  ///< range, step, decimals and default
    QString text;         ///< the value, or whatever the user has typed
};

/// A shape of a study likewise.
struct ShapeRow {
    QString name;
    StudyDrawKind kind = StudyDrawKind::Line;
    StudyShape shape;
    StudyShape defaultShape;
};

}  // namespace ta::sheet
