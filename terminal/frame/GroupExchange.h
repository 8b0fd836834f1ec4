#pragma once

#include <QString>

class QWidget;

namespace ta::terminal {

/// Whether a file is a group file by its name.
bool IsGroupFile(const QString& path);

/// Opens the library's export dialog over `parent`.
void ExportGroups(QWidget& parent);

/// Opens the library's import dialog over `parent` on a group file; asks for one when `path` is
/// empty. The charts are told of what came in. false when nothing changed.
bool ImportGroups(QWidget& parent, QString path = {});

}  // namespace ta::terminal
