#pragma once

#include "sheet/GroupValues.h"

#include <QStringList>

#include <vector>

/// What restoring a study's defaults would change, in words.
namespace ta::sheet {

/// A line for each parameter and shape that restoring the defaults would change, "期數1：7 → 5".
QStringList ChangesToDefaults(const StudyFacts& study, const StudyValues& values);
/// Whether there is none.
bool IsDefault(const StudyFacts& study, const StudyValues& values);

/// A study with its changes.
struct DefaultChanges {
    StudyFacts study;
    QStringList lines;
};

/// The changes of several studies, in full for the first ones and in about twenty lines.
QString InSomeLines(const std::vector<DefaultChanges>& changes);

}  // namespace ta::sheet
