#pragma once

#include "platform/Types.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QAbstractItemView;
class QComboBox;

namespace ta::ui {

/// The language keys of a form and where their texts go. The keys are kept, so that the texts can
/// be set again in another language.
class FormTexts {
public:
    /// Keeps the keys that the form's controls carry: window title, texts, titles, tool tips,
    /// accessible names and descriptions, placeholders, prefixes and suffixes, entries of combo
    /// boxes, heads of tables and trees. What the user can edit is never taken for a key, and the
    /// controls of a dialog within the form are that dialog's own. The first call only.
    void Collect(QWidget& form);

    /// From now on the property ("text") of the control holds the text of `key`, or `key` itself
    /// when it is no language key. Sets it at once.
    void Keep(QWidget& control, const char* property, const QString& key);
    /// The same for an entry of a combo box, by its row.
    void KeepEntry(QComboBox& combo, int row, const QString& key);
    /// The same for a head of a table or tree, by its column.
    void KeepHead(QAbstractItemView& view, int column, const QString& key);

    /// Sets the texts of all keys in the language in use.
    void Apply() const;

private:
    struct Place {
        QPointer<QWidget> control;
        QString name;  ///< which of the control's texts
        QString key;
        std::function<void(const QString& text)> set;
    };

    void CollectControl(QWidget& control);
    void CollectHeads(QAbstractItemView& view);
    void Add(Place place);

    std::vector<Place> m_places;
    bool m_collected = false;
};

}  // namespace ta::ui
