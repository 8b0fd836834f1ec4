#pragma once

#include "sheet/StudyRows.h"

#include <vector>

class QGridLayout;
class QLabel;
class QToolButton;

namespace ta::sheet {

class ValueEdit;

/// The mark of a row that differs from its default, and the button that brings the default back.
/// The widgets belong to `parent`.
struct RevertControls {
    RevertControls(const QString& tip, QWidget& parent);

    void SetDiffers(bool differs);

    QLabel* mark;
    QToolButton* button;
};

/// The controls of one parameter, in two rows of a grid: the second one is for the fault.
class ParamEditRow : public QObject {
    Q_OBJECT

public:
    static constexpr int kGridRows = 2;

    /// The heads of the columns, in the first row of the grid.
    static void AddHeads(QGridLayout& grid);
    /// The controls belong to the grid's widget, and so does this.
    ParamEditRow(const ParamRow& row, QGridLayout& grid, int gridRow);

    void SetFault(const QString& reason);
    QWidget& Field() const;
    std::vector<QWidget*> TabStops() const;

signals:
    void edited(const QString& text);

private:
    void OnEdited(const QString& text);
    void Revert();

    StudyParamInfo m_info;
    QString m_description;
    ValueEdit* m_value;
    RevertControls m_revert;
    QLabel* m_faultIcon;
    QLabel* m_fault;
};

}  // namespace ta::sheet
