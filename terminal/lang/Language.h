#pragma once

#include <QObject>
#include <QString>
#include <QTranslator>

namespace ta::terminal {

/// The text of a language key in the language in use; a key without a text gives itself.
inline QString Tr(const char* key) {
    return qtTrId(key);
}

/// The terminal's language. One object, made after the QApplication and before any window; windows
/// set their texts again on changed().
class Language : public QObject {
    Q_OBJECT

public:
    enum Id { TraditionalChinese, English };

    /// Starts in Traditional Chinese.
    explicit Language(QObject* parent = nullptr);
    ~Language() override;

    Id Current() const { return m_current; }
    /// Switches, and emits changed() when that is another language than before.
    void Select(Id id);

    /// The object in use; null before it is made.
    static Language* Instance();

signals:
    void changed();

private:
    void Install(Id id);

    Id m_current = TraditionalChinese;
    QTranslator m_translator;
};

}  // namespace ta::terminal
