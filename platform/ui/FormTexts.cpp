#include "platform/ui/FormTexts.h"

#include "platform/ui/LangText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QHash>
#include <QMetaProperty>

#include <algorithm>

namespace ta::ui {
namespace {

constexpr const char* kProperties[] = {
    "windowTitle",     "text",   "title",  "toolTip", "accessibleName", "accessibleDescription",
    "placeholderText", "prefix", "suffix",
};

QString TextOf(const QString& key) {
    return IsLangKey(key) ? LangText(key.toStdString()) : key;
}

/// The properties in which controls of a class show texts; not the one that the user edits, as a
/// line edit's text is.
QList<QMetaProperty> TextProperties(const QMetaObject& type) {
    QList<QMetaProperty> properties;
    for (const char* name : kProperties) {
        const QMetaProperty property = type.property(type.indexOfProperty(name));
        if (property.isValid() && !property.isUser()) {
            properties.append(property);
        }
    }
    return properties;
}

/// The same, looked up by name once a class.
const QList<QMetaProperty>& TextPropertiesOf(const QWidget& control) {
    static QHash<const QMetaObject*, QList<QMetaProperty>> known;
    QList<QMetaProperty>& properties = known[control.metaObject()];
    if (properties.isEmpty()) {
        properties = TextProperties(*control.metaObject());
    }
    return properties;
}

bool BelongsTo(const QWidget& control, const QWidget& form) {
    const QWidget* parent = control.parentWidget();
    while (parent != nullptr && parent != &form &&
           qobject_cast<const QDialog*>(parent) == nullptr) {
        parent = parent->parentWidget();
    }
    return parent == &form && qobject_cast<const QDialog*>(&control) == nullptr;
}

}  // namespace

void FormTexts::Collect(QWidget& form) {
    if (std::exchange(m_collected, true)) {
        return;
    }
    CollectControl(form);
    for (QWidget* control : form.findChildren<QWidget*>()) {
        if (BelongsTo(*control, form)) {
            CollectControl(*control);
        }
    }
}

void FormTexts::CollectPart(QWidget& part) {
    for (QWidget* control : part.findChildren<QWidget*>()) {
        CollectControl(*control);
    }
}

void FormTexts::CollectControl(QWidget& control) {
    for (const QMetaProperty& property : TextPropertiesOf(control)) {
        const QString key = property.read(&control).toString();
        if (IsLangKey(key)) {
            Keep(control, property.name(), key);
        }
    }
    if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        for (int row = 0; row < combo->count(); ++row) {
            if (IsLangKey(combo->itemText(row))) {
                KeepEntry(*combo, row, combo->itemText(row));
            }
        }
    } else if (auto* view = qobject_cast<QAbstractItemView*>(&control)) {
        CollectHeads(*view);
    }
}

void FormTexts::CollectHeads(QAbstractItemView& view) {
    const int columns = view.model() == nullptr ? 0 : view.model()->columnCount();
    for (int column = 0; column < columns; ++column) {
        const QString key = view.model()->headerData(column, Qt::Horizontal).toString();
        if (IsLangKey(key)) {
            KeepHead(view, column, key);
        }
    }
}

void FormTexts::Keep(QWidget& control, const char* property, const QString& key) {
    Add({&control, property, key,
         [&control, property](const QString& text) { control.setProperty(property, text); }});
}

void FormTexts::KeepEntry(QComboBox& combo, int row, const QString& key) {
    const QPersistentModelIndex entry = combo.model()->index(row, combo.modelColumn());
    Add({&combo, {}, key, [&combo, entry](const QString& text) {
             if (entry.isValid()) {
                 combo.setItemText(entry.row(), text);
             }
         }});
}

void FormTexts::KeepHead(QAbstractItemView& view, int column, const QString& key) {
    Add({&view, QString::number(column), key, [&view, column](const QString& text) {
             view.model()->setHeaderData(column, Qt::Horizontal, text);
         }});
}

void FormTexts::Add(Place place) {
    place.set(TextOf(place.key));
    const auto same = std::ranges::find_if(m_places, [&](const Place& each) {
        return !each.name.isEmpty() && each.control == place.control && each.name == place.name;
    });
    if (same == m_places.end()) {
        m_places.push_back(std::move(place));
    } else {
        *same = std::move(place);
    }
}

void FormTexts::Apply() const {
    for (const Place& place : m_places) {
        if (place.control != nullptr) {
            place.set(TextOf(place.key));
        }
    }
}

}  // namespace ta::ui
