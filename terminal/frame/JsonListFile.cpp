#include "terminal/frame/JsonListFile.h"

#include "platform/ui/FileAccess.h"

#include <QFile>
#include <QJsonDocument>

namespace ta::terminal {

bool JsonListFile::Read(QJsonArray& entries) const {
    entries = {};
    if (!QFile::exists(m_path)) {
        return true;
    }
    std::string bytes;
    const bool isRead = ui::ReadWholeFile(m_path, bytes).isEmpty();
    const QJsonDocument file = QJsonDocument::fromJson(QByteArray::fromStdString(bytes));
    entries = file.array();
    return isRead && file.isArray();
}

bool JsonListFile::Write(const QJsonArray& entries) const {
    return ui::WriteWholeFile(m_path, QJsonDocument(entries).toJson().toStdString()).isEmpty();
}

}  // namespace ta::terminal
