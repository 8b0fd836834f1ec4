#pragma once

#include "groupfile/GroupContents.h"

#include <QString>
#include <QStringList>

#include <vector>

/// What dialogs say of groups, in the user's language.
namespace ta::groupfile {

/// The study's display name; for an unknown one a text with its number.
QString StudyLabel(CTaSettingHandle& repository, StudyType type);

/// The texts, or the names, in one line.
QString Listed(const QStringList& texts);
QString Listed(const std::vector<CString>& names);

/// How many panes are shown, and a line for each pane that is shown or holds studies, with their
/// names as the repository knows them.
QString DescribeGroup(CTaSettingHandle& repository, const GroupContents& contents);

/// A line that says in what `contents` differs from the existing group.
QString DescribeDifferences(const GroupContents& contents, const GroupContents& existing);

}  // namespace ta::groupfile
