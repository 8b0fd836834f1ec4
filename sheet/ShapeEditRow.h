#pragma once

#include "sheet/ParamEditRow.h"
#include "sheet/StudyRows.h"

#include <vector>

class QCheckBox;
class QComboBox;
class QPushButton;
class QSpinBox;

namespace ta::sheet {

/// The controls of one shape, in a row of a grid.
class ShapeEditRow : public QObject {
    Q_OBJECT

public:
    /// The heads of the columns, in the first row of the grid.
    static void AddHeads(QGridLayout& grid);
    /// The controls belong to the grid's widget, and so does this.
    ShapeEditRow(const ShapeRow& row, QGridLayout& grid, int gridRow);

    std::vector<QWidget*> TabStops() const;

signals:
    void edited(const StudyShape& shape);

private:
    void MakeControls(QWidget& parent);
    void NameControls();
    void ConnectControls();
    void ShowShape();
    void Edit(const StudyShape& shape);
    void ChooseColour();

    ShapeRow m_row;
    QCheckBox* m_visible = nullptr;
    QPushButton* m_colour = nullptr;
    QSpinBox* m_width = nullptr;
    QComboBox* m_style = nullptr;
    RevertControls m_revert;
};

}  // namespace ta::sheet
