#include "dialogs/MXTechDataDlg.h"
#include "dialogs/TechDataExportDlg.h"
#include "dialogs/TechDataModel.h"
#include "dialogs/TechDataWriter.h"
#include "platform/ui/Chosen.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/LongWork.h"
#include "platform/ui/TextBridge.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QTableView>
#include <QUuid>

#include <algorithm>

using namespace ta::techdata;
using namespace ta::ui;

namespace {

constexpr const char* kTokenFormat = "application/x-tadialogs-token";

/// The pieces of a text while the list's rows stay what they were; `end` tells why they ended.
class Pieces {
public:
    Pieces(MXTechDataDlg& window, const TechDataModel& model, TableWriter& writer,
           const CString& textKey)
        : m_table(model.Table()),
          m_generation(m_table.Generation()),
          m_writer(writer),
          m_work(window, LangText(textKey)) {}

    /// Nothing at the end; false when the user has cancelled or the rows are others now.
    bool Next(std::string& piece) {
        if (!m_work.GoOn(m_writer.RowsDone(), m_writer.RowsInAll())) {
            m_isCancelled = true;
            return false;
        }
        if (m_table.Generation() != m_generation) {
            return false;
        }
        m_writer.Next(piece);
        return true;
    }
    bool IsCancelled() const { return m_isCancelled; }
    bool IsWindowGone() const { return m_work.IsWindowGone(); }
    bool IsChanged() const { return m_table.Generation() != m_generation; }

private:
    const TechDataTable& m_table;
    unsigned m_generation;
    TableWriter& m_writer;
    LongWork m_work;
    bool m_isCancelled = false;
};

void AppendText(QString& out, const std::string& piece) {
    const bool isAscii = std::ranges::all_of(piece, [](char c) { return (c & '\x80') == 0; });
    if (isAscii) {
        out += QLatin1String(piece.data(), static_cast<qsizetype>(piece.size()));
    } else {
        out += ToQString(piece);
    }
}

/// false when the clipboard did not take the text: another program has it. What it has after the
/// call is told from a number of our own that goes with the text.
bool PutOnClipboard(const QString& text) {
    const QByteArray token = QUuid::createUuid().toByteArray();
    auto* const data = new QMimeData;
    data->setText(text);
    data->setData(kTokenFormat, token);
    QClipboard& clipboard = *QApplication::clipboard();
    clipboard.setMimeData(data);
    const QMimeData* const there = clipboard.mimeData();
    return there != nullptr && there->data(kTokenFormat) == token;
}

}  // namespace

std::vector<RowRange> MXTechDataDlg::AllRows() const {
    return {{0, m_model->Table().RowCount()}};
}

std::vector<RowRange> MXTechDataDlg::SelectedRows() const {
    std::vector<RowRange> rows;
    if (m_list == nullptr) {
        return rows;
    }
    for (const QItemSelectionRange& range : m_list->selectionModel()->selection()) {
        rows.push_back(
            {static_cast<std::size_t>(range.top()), static_cast<std::size_t>(range.bottom()) + 1});
    }
    std::ranges::sort(rows, {}, &RowRange::first);
    return rows;
}

bool MXTechDataDlg::CopyRows(const TextForm& form, const std::vector<RowRange>& rows) {
    m_model->RefreshCells();
    const CellTexts cells = m_model->Cells();  // the model's go with a change of the language
    TableWriter writer(m_model->Table(), cells, form, m_title,
                       AllColumns(m_model->Table().GetHeaders()), rows);
    Pieces pieces(*this, *m_model, writer, "IDS_TADIALOGS-TECHDATA_COPYING");
    QString text;
    for (std::string piece;;) {
        if (!pieces.Next(piece)) {
            break;
        }
        if (piece.empty()) {
            const bool isTaken = PutOnClipboard(text);
            if (!isTaken) {
                TellKey("IDS_TADIALOGS-TECHDATA_CLIPBOARD_HELD");
            }
            return isTaken;
        }
        AppendText(text, piece);
    }
    if (!pieces.IsCancelled()) {
        TellKey("IDS_TADIALOGS-TECHDATA_CHANGED");
    }
    return false;
}

void MXTechDataDlg::OnCopy2clipboard() {
    Guard([this] {
        if (CopyRows(ClipboardForm(), AllRows())) {
            TellKey("IDS_DIALOG-TECHDATA_COPY2CLIPBOARD_SUCCESS", PromptIcon::None);
        }
    });
}

void MXTechDataDlg::OnCopyRows(bool withHeadings) {
    Guard([&] {
        if (m_list != nullptr && m_list->selectionModel()->hasSelection()) {
            CopyRows(RowsForm(withHeadings), SelectedRows());
        }
    });
}

void MXTechDataDlg::OnCopy2csv() {
    Guard([this] { AskPathAndSave({}, {}, m_model->Table().Generation()); });
}

void MXTechDataDlg::AskPathAndSave(const ta::ExportProfile& profile,
                                   const std::vector<RowRange>& rows, unsigned generation) {
    const QPointer<MXTechDataDlg> self(this);
    const QString path = AskSaveFile(
        this, {.title = windowTitle(),
               .name = FileNameOf(ToQString(m_symbol.empty() ? m_title : m_symbol)) + ".csv",
               .filter = "*.CSV",
               .suffix = "CSV",
               .asksCreate = true,
               .asksReplace = false});
    if (self == nullptr || path.isEmpty()) {
        return;
    }
    if (generation != m_model->Table().Generation() || m_model->Table().IsFilling()) {
        TellKey("IDS_TADIALOGS-TECHDATA_CHANGED");
    } else if (Save(path, profile, rows)) {
        Tell(QDir::toNativeSeparators(path) + "\r\n" +
                 LangText("IDS_DIALOG-TECHDATA_SAVE2CSV_SUCCESS"),
             PromptIcon::None);
    }
}

bool MXTechDataDlg::Save(const QString& path, const ta::ExportProfile& profile,
                         const std::vector<RowRange>& rows) {
    m_model->RefreshCells();
    const CellTexts cells = m_model->Cells();  // the model's go with a change of the language
    const TechDataTable& table = m_model->Table();
    TableWriter writer(table, cells, FormOf(profile), m_title,
                       ColumnsOf(profile, table.GetHeaders()), rows.empty() ? AllRows() : rows);
    Pieces pieces(*this, *m_model, writer, "IDS_TADIALOGS-TECHDATA_SAVING");
    const QString fault =
        WriteWholeFile(path, [&pieces](std::string& piece) { return pieces.Next(piece); });
    if (pieces.IsWindowGone() || pieces.IsCancelled()) {
        return false;
    }
    const bool isChanged = pieces.IsChanged();  // the window may go while the user reads
    if (!fault.isEmpty()) {
        Tell(fault);
    } else if (isChanged) {
        TellKey("IDS_TADIALOGS-TECHDATA_CHANGED");
    }
    return fault.isEmpty() && !isChanged;
}

void MXTechDataDlg::OnExport() {
    Guard([this] { AskProfileAndSave(); });
}

void MXTechDataDlg::AskProfileAndSave() {
    // Those that the user sees: a bar that comes in meanwhile is the selected row then.
    const std::vector<RowRange> selected = SelectedRows();
    const unsigned generation = m_model->Table().Generation();
    const auto profile = Chosen(new TechDataExportDlg(*m_model, m_title, selected, this),
                                [](const TechDataExportDlg& dialog) { return dialog.Profile(); });
    if (profile) {
        AskPathAndSave(*profile, profile->selectedRows ? selected : std::vector<RowRange>(),
                       generation);
    }
}
