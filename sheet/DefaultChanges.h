#pragma once

#include "sheet/StudyFacts.h"

#include <QStringList>

/// What restoring a study's defaults would change, in words.
namespace ta::sheet {

/// The names of line styles 0 to 4.
QString StyleName(int style);

/// A line for each parameter and shape that restoring the defaults would change, "期數1：7 → 5".
/// `params` has a text per parameter, as typed; `shapes` a shape per shape of the study.
QStringList ChangesToDefaults(const StudyFacts& study, const QStringList& params,
                              const std::vector<StudyShape>& shapes);

}  // namespace ta::sheet
