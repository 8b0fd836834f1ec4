#pragma once

#include "platform/Export.h"

#include <QStringList>
#include <QTableWidget>

#include <vector>

namespace ta::ui {

/// Outlines the check boxes of a column so that they are seen on a dark list as well.
TADIALOGS_EXPORT void OutlineCheckBoxes(QAbstractItemView& view, int column);

/// A list of rows with a check box in front, which is clicked, or checked with the space bar
/// wherever in its row the user stands. In a form it is promoted from QTableWidget; its columns are
/// the form's, the first one for the check boxes, without a head of its own.
class TADIALOGS_EXPORT CheckList : public QTableWidget {
    Q_OBJECT

public:
    explicit CheckList(QWidget* parent = nullptr);

    /// Replaces the rows, all unchecked; each has the texts of the columns behind the check box.
    /// Further texts than there are columns are left out.
    void SetRows(const std::vector<QStringList>& rows);
    void CheckAll(bool checked);

    /// false for a row that is not there.
    bool IsChecked(int row) const;
    /// The checked rows, from the top; 0 is the first one.
    std::vector<int> CheckedRows() const;
};

}  // namespace ta::ui
