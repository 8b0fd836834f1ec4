#include "terminal/frame/openers/TrendLineListDialog.h"

#include "platform/ui/Prompts.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Session.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMainWindow>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace ta::terminal {
namespace {

constexpr QSize kFirstSize(860, 420);

}  // namespace

TrendLineListDialog::TrendLineListDialog(const Frame& frame)
    : QDialog(&frame.window),
      m_frame(frame),
      m_model(new LineListModel(frame.session.Markets(), this)),
      m_table(new QTableView(this)),
      m_total(new QLabel(this)),
      m_open(new QPushButton(Tr("IDS_TERMINAL-FRAME_LINES_OPEN"), this)),
      m_delete(new QPushButton(Tr("IDS_TERMINAL-FRAME_LINES_DELETE"), this)),
      m_deleteAction(new QAction(Tr("IDS_TERMINAL-FRAME_LINES_DELETE"), m_table)) {
    setWindowTitle(Tr("IDS_TERMINAL-FRAME_LINES_TITLE"));
    resize(kFirstSize);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(m_total);
    MakeTable();
    MakeButtons();
    Repository().AddTechViewPtr(this);
    Fill();
    m_table->setFocus();
}

TrendLineListDialog::~TrendLineListDialog() {
    Repository().RemoveTechViewPtr(this);
}

void TrendLineListDialog::MakeTable() {
    m_table->setModel(m_model);
    m_table->setAccessibleName(windowTitle());
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setAlternatingRowColors(true);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    const int em = fontMetrics().height();
    m_table->setIconSize({em * 2, em});
    QHeaderView& header = *m_table->horizontalHeader();
    header.setHighlightSections(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(LineListModel::kPlace, QHeaderView::Stretch);
    m_deleteAction->setShortcut(Qt::Key_Delete);
    m_deleteAction->setShortcutContext(Qt::WidgetShortcut);
    auto* open = new QAction(m_open->text(), m_table);
    m_table->addActions({open, m_deleteAction});
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(open, &QAction::triggered, this, &QDialog::accept);
    connect(m_deleteAction, &QAction::triggered, this, &TrendLineListDialog::DeleteSelected);
    connect(m_table, &QTableView::doubleClicked, this, &QDialog::accept);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TrendLineListDialog::Refresh);
}

void TrendLineListDialog::MakeButtons() {
    auto* buttons = new QDialogButtonBox(this);
    auto* close = new QPushButton(Tr("IDS_TERMINAL-FRAME_LINES_CLOSE"), this);
    buttons->addButton(m_open, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_delete, QDialogButtonBox::ResetRole);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    m_open->setDefault(true);
    m_open->setObjectName("openButton");
    m_delete->setObjectName("deleteButton");
    layout()->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_delete, &QPushButton::clicked, this, &TrendLineListDialog::DeleteSelected);
}

std::intptr_t TrendLineListDialog::WindowProc(unsigned message, std::uintptr_t wParam,
                                              std::intptr_t lParam) {
    if (message == kTrendLineChangeMessage) {
        Fill();
        return 1;
    }
    return CView::WindowProc(message, wParam, lParam);
}

// ---- What is shown ----

std::optional<ListedTrendLine> TrendLineListDialog::Chosen() const {
    const int row = m_table->currentIndex().row();
    return row < 0 ? std::nullopt
                   : std::optional(m_model->Rows()[static_cast<std::size_t>(row)].line);
}

std::vector<TrendLineListDialog::Row> TrendLineListDialog::SelectedRows() const {
    std::vector<Row> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows()) {
        rows.push_back(m_model->Rows()[static_cast<std::size_t>(index.row())]);
    }
    return rows;
}

void TrendLineListDialog::Fill() {
    const auto chosen = Chosen();
    const int before = std::max(m_table->currentIndex().row(), 0);
    std::vector<ListedTrendLine> selected;
    for (const Row& row : SelectedRows()) {
        selected.push_back(row.line);
    }
    m_model->Fill();
    const int found = chosen ? m_model->RowOf(*chosen) : -1;
    Select(selected, found >= 0 ? found : std::min(before, m_model->rowCount() - 1));
    Refresh();
}

/// Those of the lines that are there, and the current row; that alone when none is.
void TrendLineListDialog::Select(const std::vector<ListedTrendLine>& lines, int current) {
    QItemSelection selection;
    for (const ListedTrendLine& line : lines) {
        if (const int row = m_model->RowOf(line); row >= 0) {
            const QModelIndex index = m_model->index(row, 0);
            selection.select(index, index);
        }
    }
    QItemSelectionModel& model = *m_table->selectionModel();
    const QModelIndex index = m_model->index(current, 0);
    model.setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (selection.isEmpty() && index.isValid()) {
        selection.select(index, index);
    }
    model.select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TrendLineListDialog::Refresh() {
    const int rows = m_model->rowCount();
    m_total->setText(
        rows > 0 ? Tr("IDS_TERMINAL-FRAME_LINES_TOTAL").arg(m_model->SymbolCount()).arg(rows)
                 : Tr("IDS_TERMINAL-FRAME_LINES_NONE"));
    const bool any = m_table->selectionModel()->hasSelection();
    m_open->setEnabled(any);
    m_delete->setEnabled(any);
    m_deleteAction->setEnabled(any);
}

// ---- Deleting ----

/// The board that shows the line, of the chart in front if there are more; null when there is none.
DrawingBoard* TrendLineListDialog::BoardOf(const ListedTrendLine& line) const {
    const ChartView* chart = line.scale == kPriceLines ? m_frame.tabs.ChartOf(line.chart) : nullptr;
    return chart ? &chart->Drawings() : nullptr;
}

QString TrendLineListDialog::Question(const std::vector<Row>& rows) const {
    const auto count = std::ssize(rows);
    const auto undoable = std::ranges::count_if(
        rows, [this](const Row& row) { return BoardOf(row.line) != nullptr; });
    const auto locked = std::ranges::count(rows, true, &Row::locked);
    QStringList text{Tr("IDS_TERMINAL-FRAME_LINES_ASK_DELETE").arg(count)};
    if (locked > 0) {
        text << Tr("IDS_TERMINAL-FRAME_LINES_ASK_LOCKED").arg(locked);
    }
    if (undoable == 0) {
        text << Tr("IDS_TERMINAL-FRAME_LINES_ASK_NO_UNDO");
    } else if (undoable == count) {
        text << Tr("IDS_TERMINAL-FRAME_LINES_ASK_UNDO");
    } else {
        text << Tr("IDS_TERMINAL-FRAME_LINES_ASK_UNDO_SOME").arg(undoable);
    }
    return text.join('\n');
}

void TrendLineListDialog::DeleteSelected() {
    const std::vector<Row> rows = SelectedRows();
    if (rows.empty() || ui::CurrentPrompts().AskYesNo(this, ui::PromptIcon::Question,
                                                      Tr("IDS_TERMINAL-FRAME_LINES_TITLE"),
                                                      Question(rows)) != ui::Answer::Yes) {
        return;
    }
    std::vector<CString> all;
    std::map<std::pair<BarsKey, CString>, std::vector<CString>> byChart;
    for (const Row& row : rows) {
        all.push_back(row.line.data);
        byChart[{row.line.chart, row.line.scale}].push_back(row.line.data);
    }
    int missing = 0;
    for (const auto& [where, lines] : byChart) {
        const auto& [chart, scale] = where;
        DrawingBoard* board = BoardOf({chart, scale, {}, {}});
        missing += board ? board->DeleteLines(chart, lines)
                         : EditTrendLines(chart, Removing(lines), scale).missing;
    }
    if (missing > 0) {
        m_frame.Notice(DrawingBoard::MissingText(all, missing));
    }
}

}  // namespace ta::terminal
