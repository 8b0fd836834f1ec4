#pragma once

#include "platform/Export.h"

#include <QHash>
#include <QStaticText>
#include <QStyledItemDelegate>

class QAbstractItemView;

namespace ta::ui {

/// Paints the rows of a list or tree that are short plain texts, the most of them. The toolkit's
/// own delegate lays out the text of a row anew for its size, for cutting it and for drawing it, at
/// each painting; this one does so once a text and font for all views, also for those of a dialog
/// that is opened again, which is shown alike, and makes all rows equally high. Rows that have more
/// (a selection, an icon, a check box, a colour or font of their own, a text that must be cut) are
/// the toolkit's as before.
class TADIALOGS_EXPORT PlainRows : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// Becomes the delegate and a child of `view`.
    explicit PlainRows(QAbstractItemView& view);

    /// In pixels of the view's font, without margins.
    int WidthOf(const QString& text) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    using Texts = QHash<QString, QStaticText>;

    static Texts& TextsIn(const QFont& font);
    const QStaticText& LaidOut(const QString& text, const QFont& font) const;

    mutable Texts* m_texts = nullptr;  ///< those in the font
    mutable QFont m_font;
    mutable int m_height = 0;  ///< of a row; 0: not known yet
};

}  // namespace ta::ui
