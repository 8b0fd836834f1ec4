#pragma once

#include "platform/Export.h"

#include <QLineEdit>
#include <QTreeWidget>

namespace ta::ui {

/// For comparing what the user types with what a list shows: full-width letters as plain ones, case
/// folded, blanks at the ends and double ones left out.
TADIALOGS_EXPORT QString FoldForSearch(const QString& text);

/// A search box above a list or tree: the user types here and moves in the list with Up, Down, Page
/// Up and Page Down without leaving the box. Rows that cannot be selected (a category's heading)
/// are passed over, also when the keys are pressed in the list itself. What the search does is the
/// dialog's, on textChanged.
class TADIALOGS_EXPORT SearchEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchEdit(QWidget* parent = nullptr);

    /// Once. The tree stays the form's.
    void SetTree(QTreeWidget& tree);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void PassHeading(bool down);

    QTreeWidget* m_tree = nullptr;
    bool m_moving = false;  ///< a key is being handed to the tree
};

}  // namespace ta::ui
