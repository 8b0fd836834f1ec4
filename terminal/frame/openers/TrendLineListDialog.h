#pragma once

#include "platform/Window.h"
#include "terminal/frame/openers/LineListModel.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include <optional>
#include <vector>

namespace ta::terminal {

class DrawingBoard;
struct Frame;

/// The user's lines on every chart, with symbol, data period and kind; in step with the settings
/// repository while it is open. Deletes the selected ones after a question, which says what of it
/// can be undone: the lines of charts that are open, there. Accepted with a line chosen: its chart
/// is wanted.
class TrendLineListDialog : public QDialog, public CView {
    Q_OBJECT

public:
    explicit TrendLineListDialog(const Frame& frame);
    ~TrendLineListDialog() override;

    /// The line of the current row; nothing when the list is empty.
    std::optional<ListedTrendLine> Chosen() const;

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

private:
    using Row = LineListModel::Row;

    void MakeTable();
    void MakeButtons();
    void Fill();
    void Select(const std::vector<ListedTrendLine>& lines, int current);
    std::vector<Row> SelectedRows() const;
    void Refresh();
    void DeleteSelected();
    QString Question(const std::vector<Row>& rows) const;
    DrawingBoard* BoardOf(const ListedTrendLine& line) const;

    const Frame& m_frame;
    LineListModel* m_model;
    QTableView* m_table;
    QLabel* m_total;
    QPushButton* m_open;
    QPushButton* m_delete;
    QAction* m_deleteAction;
};

}  // namespace ta::terminal
