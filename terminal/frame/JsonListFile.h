#pragma once

#include <QJsonArray>
#include <QString>

#include <utility>

namespace ta::terminal {

/// A file of the user's that holds a list in JSON.
class JsonListFile {
public:
    explicit JsonListFile(QString path) : m_path(std::move(path)) {}

    /// The list; an empty one without a file. false, and nothing in `entries`, when the file cannot
    /// be read or holds no list: who writes then would lose what is in it.
    bool Read(QJsonArray& entries) const;
    /// The file as a whole or not at all.
    bool Write(const QJsonArray& entries) const;

private:
    QString m_path;
};

}  // namespace ta::terminal
