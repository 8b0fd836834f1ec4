#include "dialogs/MXTechDataDlg.h"

#include "dialogs/TechDataGoToDlg.h"
#include "dialogs/TechDataModel.h"
#include "dialogs/TechDataWriter.h"
#include "platform/ui/Chosen.h"
#include "platform/ui/TextBridge.h"
#include "ui_MXTechDataDlg.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QShortcut>

#include <algorithm>

using namespace ta::techdata;
using namespace ta::ui;

namespace {

constexpr int kFirstPeriod = 100;
constexpr int kPeriod = 1000;
constexpr int kBatch = 300;
constexpr double kEarlyShare = 0.1;

CString TextOf(const char* text) {
    return text == nullptr ? CString() : CString(text);
}

/// The text with the widest digit of the font in the place of every digit.
QString WithWidestDigits(QString text, const QFontMetrics& metrics) {
    QChar widest = u'0';
    for (QChar digit = u'1'; digit <= u'9'; digit = QChar(digit.unicode() + 1)) {
        if (metrics.horizontalAdvance(digit) > metrics.horizontalAdvance(widest)) {
            widest = digit;
        }
    }
    for (QChar& character : text) {
        character = character >= u'0' && character <= u'9' ? widest : character;
    }
    return text;
}

}  // namespace

MXTechDataDlg::MXTechDataDlg(const char* title, const char* secondName, int dataType,
                             std::vector<HeaderInfo>& headers, std::vector<OneRecord>& records,
                             unsigned ownerMessage, unsigned closeMessage, unsigned eraseMessage,
                             unsigned char market, const CString& symbol, int dataParam,
                             int dataTypeParam, CWnd* owner, QWidget* parent)
    : ModelessDialog(owner, parent),
      m_secondName(TextOf(secondName)),
      m_dataType(dataType),
      m_ownerMessage(ownerMessage),
      m_closeMessage(closeMessage),
      m_eraseMessage(eraseMessage),
      m_market(market),
      m_symbol(symbol),
      m_dataParam(dataParam),
      m_dataTypeParam(dataTypeParam),
      m_model(new TechDataModel(headers, records, this)),
      m_ui(std::make_unique<Ui::MXTechDataDlg>()),
      m_menu(new QMenu(this)) {
    m_ui->setupUi(this);
    m_list = m_ui->dataTable;
    m_list->setModel(m_model);
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->verticalHeader()->setDefaultSectionSize(m_list->verticalHeader()->minimumSectionSize());
    SetTitle(title);
    SetCancelButton(*m_ui->closeButton);
    MakeActions();
    Handle(m_ui->copyButton, &QPushButton::clicked, [this] { OnCopy2clipboard(); });
    Handle(m_ui->saveButton, &QPushButton::clicked, [this] { OnCopy2csv(); });
    Handle(m_ui->profileButton, &QPushButton::clicked, [this] { OnExport(); });
    Handle(m_ui->dataTable, &QTableView::doubleClicked, [this] { ActivateRow(); });
    for (const int enter : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const shortcut = new QShortcut(enter, m_list, nullptr, nullptr, Qt::WidgetShortcut);
        Handle(shortcut, &QShortcut::activated, [this] { ActivateRow(); });
    }
}

MXTechDataDlg::~MXTechDataDlg() = default;

bool MXTechDataDlg::OnInitDialog() {
    m_model->SetSource(m_market, m_symbol, m_dataType);
    m_model->Restart();
    SetTimer(kFillTimer, kFirstPeriod);
    return true;
}

void MXTechDataDlg::vLoadLanguageString() {
    LoadLanguageStrings();
    for (const MenuEntry& entry : m_entries) {
        entry.action->setText(LangText(entry.key));
    }
    m_model->RefreshCells();
}

void MXTechDataDlg::SetTitle(const char* title) {
    CString text = TextOf(title);
    if (text == m_title) {
        return;
    }
    m_title = std::move(text);
    m_isViewData = m_title.starts_with(BKQuoteInterface::GetBKInterface().LangGetLangString(
        "IDC_TECHVIEW-STRING_TECHDATA_VIEW_DATA"));
    m_ui->titleLabel->setText(ToQString(m_title).simplified());
}

// ---- What the owner asks and says ----

void MXTechDataDlg::GetSymbolInfo(unsigned char& market, CString& symbol) const {
    market = m_market;
    symbol = m_symbol;
}

void MXTechDataDlg::reInitializeList(const char* title, int dataType, int dataParam,
                                     int dataTypeParam) {
    reInitializeList(title, dataType, dataParam, dataTypeParam, m_market, m_symbol);
}

void MXTechDataDlg::reInitializeList(const char* title, int dataType, int dataParam,
                                     int dataTypeParam, unsigned char market,
                                     const CString& symbol) {
    Guard([&] {
        SetTitle(title);
        m_dataType = dataType;
        m_dataParam = dataParam;
        m_dataTypeParam = dataTypeParam;
        m_market = market;
        m_symbol = symbol;
        m_selectAtEnd = false;
        m_goneTo.reset();
        EnableExports(false);
        m_model->SetSource(market, symbol, dataType);
        m_model->Restart();
        SetTimer(kFillTimer, kPeriod);
    });
}

void MXTechDataDlg::SetHeaderList(std::vector<HeaderInfo>& headers) {
    Guard([&] { m_model->SetHeaders(headers); });
}

void MXTechDataDlg::SetDataList(std::vector<OneRecord>& records) {
    Guard([&] { m_model->SetRecords(records); });
}

bool MXTechDataDlg::SetDataValue(std::size_t row, const OneRecord& record) {
    bool isSet = false;
    Guard([&] { isSet = m_model->Replace(row, record); });
    return isSet;
}

void MXTechDataDlg::vInsertOneData(const OneRecord& record) {
    Guard([&] {
        const int row = m_model->Insert(record);
        if (row < 0) {
            m_selectAtEnd = true;
        } else {
            MarkRow();
            SelectRow(row);
        }
    });
}

const char* MXTechDataDlg::timeToString(double fraction) {
    return ta::techdata::timeToString(fraction);
}

// ---- The fill ----

void MXTechDataDlg::OnTimer(int id) {
    if (id == kFillTimer) {
        ShowData();
    }
    ModelessDialog::OnTimer(id);
}

void MXTechDataDlg::ShowData() {
    Guard([this] {
        if (m_list == nullptr) {
            KillTimer(kFillTimer);
        } else if (m_model->Table().Missing() > 0) {
            FillBatch();
        } else {
            EndFill();
        }
    });
}

void MXTechDataDlg::FillBatch() {
    const int page = m_list->viewport()->height() / m_list->verticalHeader()->defaultSectionSize();
    const std::size_t first = m_model->Table().RowCount();
    const std::size_t count =
        std::min(m_model->Table().Missing(), static_cast<std::size_t>(std::max(kBatch, page)));
    const auto records = static_cast<double>(m_model->Table().GetRecords().size());
    const auto early = static_cast<std::size_t>(records * kEarlyShare);
    std::size_t noted = first;
    if (early >= first && early < first + count) {
        m_model->NoteRows(first, early);
        noted = early;
        TuneColWidth();
    }
    m_model->NoteRows(noted, first + count);
    m_model->Append(count);
    MarkRow();
    if (m_goneTo >= first && m_goneTo < first + count) {
        SelectRow(static_cast<int>(*m_goneTo));
    }
}

void MXTechDataDlg::EndFill() {
    KillTimer(kFillTimer);
    m_model->EndFill();
    MarkRow();
    EnableExports(true);
    m_list->setFocus();
    m_list->scrollToBottom();
    if (std::exchange(m_selectAtEnd, false)) {
        SelectRow(m_model->rowCount() - 1);
    }
    if (std::exchange(m_goneTo, {})) {
        m_list->scrollTo(m_list->currentIndex());
    }
    TuneColWidth();
}

void MXTechDataDlg::EnableExports(bool enabled) {
    for (QPushButton* button : {m_ui->copyButton, m_ui->saveButton, m_ui->profileButton}) {
        button->setEnabled(enabled);
    }
}

void MXTechDataDlg::SelectRow(int row) {
    if (m_list != nullptr) {
        const QModelIndex index = m_model->index(row, 0);
        // Whatever keys the user holds down.
        m_list->selectionModel()->setCurrentIndex(
            index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_list->scrollTo(index);
    }
}

int MXTechDataDlg::ContentsWidth(int column) const {
    const QFontMetrics metrics = m_list->fontMetrics();
    const CString& widest = m_model->Widest().At(static_cast<std::size_t>(column));
    QStyleOptionViewItem cell;
    cell.initFrom(m_list);
    cell.font = m_list->font();
    cell.features = QStyleOptionViewItem::HasDisplay;
    cell.text = WithWidestDigits(ToQString(widest), metrics);
    constexpr int kGridLine = 1;
    return m_list->style()->sizeFromContents(QStyle::CT_ItemViewItem, &cell, {}, m_list).width() +
           kGridLine;
}

void MXTechDataDlg::TuneColWidth() {
    if (m_list == nullptr) {
        return;
    }
    Guard([this] {
        // One column more than there are, which the table passes over.
        const int last = static_cast<int>(m_model->Table().GetHeaders().size());
        const QHeaderView& heads = *m_list->horizontalHeader();
        for (int column = 0; column <= last; ++column) {
            const int heading = m_widthMode == 0 ? heads.sectionSizeHint(column) : 0;
            m_list->setColumnWidth(column, std::max(ContentsWidth(column), heading));
        }
    });
}

// ---- What the user does ----

void MXTechDataDlg::MakeActions() {
    AddEntry("IDS_CHANGESYM-TECHDATADLG_DELALL", Qt::CTRL | Qt::Key_Delete,
             [this] { OnEraseAll(); });
    AddEntry("IDS_CHANGESYM-TECHDATADLG_SET_COLUMN_BY_DATA", Qt::CTRL | Qt::Key_1,
             [this] { OnSetColumn(); });
    AddEntry("IDS_TADIALOGS-TECHDATA_FIT_DATA", Qt::CTRL | Qt::Key_2,
             [this] { OnSetColumnByDataOnly(); });
    m_menu->addSeparator();
    AddEntry("IDS_TADIALOGS-TECHDATA_GOTO", Qt::CTRL | Qt::Key_G, [this] { OnGoToDate(); });
    m_menu->addSeparator();
    AddEntry("IDS_TADIALOGS-TECHDATA_COPY_ROWS", QKeySequence::Copy, [this] { OnCopyRows(false); });
    AddEntry("IDS_TADIALOGS-TECHDATA_COPY_ROWS_HEADED", Qt::CTRL | Qt::SHIFT | Qt::Key_C,
             [this] { OnCopyRows(true); });
}

void MXTechDataDlg::AddEntry(const char* key, const QKeySequence& shortcut,
                             const std::function<void()>& operation) {
    auto* const action = new QAction(this);
    action->setShortcut(shortcut);
    Handle(action, &QAction::triggered, [operation] { operation(); });
    addAction(action);
    m_menu->addAction(action);
    m_entries.push_back({action, key});
}

void MXTechDataDlg::contextMenuEvent(QContextMenuEvent* event) {
    // The keyboard has the entries' shortcuts.
    if (event->reason() != QContextMenuEvent::Keyboard && event->globalPos() != QPoint(-1, -1)) {
        m_menu->popup(event->globalPos());
    }
}

void MXTechDataDlg::OnCancel() {
    PostToOwner(m_closeMessage, m_isViewData ? 0 : 1, 0);
}

void MXTechDataDlg::OnEraseAll() {
    Guard([this] {
        KillTimer(kFillTimer);
        m_selectAtEnd = false;
        m_goneTo.reset();
        m_model->Erase();
        EnableExports(true);
        PostToOwner(m_eraseMessage, 0, 0);
    });
}

void MXTechDataDlg::OnSetColumn() {
    m_widthMode = 0;
    reInitializeList(m_title.c_str(), m_dataType, m_dataParam, m_dataTypeParam);
}

void MXTechDataDlg::OnSetColumnByDataOnly() {
    m_widthMode = 1;
    TuneColWidth();
}

void MXTechDataDlg::ActivateRow() {
    const int row = m_list->currentIndex().row();
    const OneRecord* const record =
        row < 0 ? nullptr : m_model->Table().Record(static_cast<std::size_t>(row));
    if (record != nullptr) {
        PostActivated(record->time);
    }
}

void MXTechDataDlg::PostActivated(double time) {
    // From the event loop, where nothing of the window's is under way: the owner may delete it.
    const auto tell = [self = QPointer(this), time] {
        if (self != nullptr) {
            emit self->timeActivated(time);
        }
    };
    QMetaObject::invokeMethod(qApp, tell, Qt::QueuedConnection);
}

void MXTechDataDlg::MarkTime(double time) {
    Guard([&] {
        m_markedTime = time;
        if (const int row = MarkRow(); row >= 0 && m_list != nullptr) {
            m_list->scrollTo(m_model->index(row, 0));
        }
    });
}

int MXTechDataDlg::MarkRow() {
    const std::size_t first = m_model->Table().RowFrom(m_markedTime);
    const OneRecord* const found = m_model->Table().Record(first);
    const bool isThere = found != nullptr && found->time == m_markedTime;
    const int row = isThere ? static_cast<int>(first) : -1;
    m_model->Mark(row);
    return row;
}

void MXTechDataDlg::OnGoToDate() {
    Guard([this] {
        if (m_model->Table().RecordToCome(0) == nullptr) {
            TellKey("IDS_TADIALOGS-TECHDATA_GOTO_NONE");
            return;
        }
        const auto row =
            Chosen(new TechDataGoToDlg(m_model->Table(), m_list->currentIndex().row(), this),
                   [](const TechDataGoToDlg& dialog) { return dialog.Row(); });
        if (row) {
            GoToRow(*row);
        }
    });
}

void MXTechDataDlg::GoToRow(std::size_t row) {
    const OneRecord* const record = m_model->Table().RecordToCome(row);
    if (record == nullptr) {
        return;  // the owner has taken it away since the user chose
    }
    const double time = record->time;
    if (m_model->Table().IsFilling()) {
        m_goneTo = row;
    }
    if (row < m_model->Table().RowCount()) {
        SelectRow(static_cast<int>(row));
    }
    PostActivated(time);
}
