#include "terminal/frame/openers/CsvOpener.h"

#include "platform/ui/Prompts.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/CsvImportJob.h"
#include "terminal/quotes/UserMarket.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QProgressDialog>

#include <algorithm>

namespace ta::terminal {
namespace {

/// A message box grows with its text; more lines than these do not fit on a small screen.
constexpr std::size_t kRowsListed = 12;

QString ListRows(const CsvImportResult& result) {
    const std::size_t listed = std::min(kRowsListed, result.badRows.size());
    QStringList lines;
    for (std::size_t i = 0; i < listed; ++i) {
        const CsvBadRow& row = result.badRows[i];
        lines.append(Tr("IDS_TERMINAL-FRAME_CSV_BAD_ROW").arg(row.line).arg(FaultText(row.fault)));
    }
    if (result.badRowCount > listed) {
        lines.append(Tr("IDS_TERMINAL-FRAME_CSV_MORE_BAD_ROWS").arg(result.badRowCount - listed));
    }
    return lines.join('\n');
}

}  // namespace

const Symbol* CsvOpener::Open(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const CsvImportResult result = Read(path);
    if (result.cancelled) {
        return nullptr;
    }
    if (!result.error.isEmpty()) {
        TellFailure(name, result.error);
        return nullptr;
    }
    if (result.badRowCount > 0 && !AskSkip(name, result)) {
        return nullptr;
    }
    QString error;
    const Symbol* symbol = m_market.Add(name, result.bars, result.priceStep, &error);
    if (symbol == nullptr) {
        TellFailure(name, error);
    }
    return symbol;
}

CsvImportResult CsvOpener::Read(const QString& path) const {
    QProgressDialog dialog(m_parent);
    dialog.setObjectName("csvProgress");
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setWindowTitle(Tr("IDS_TERMINAL-FRAME_OPEN_CSV_TITLE"));
    dialog.setLabelText(Tr("IDS_TERMINAL-FRAME_CSV_LOADING").arg(QFileInfo(path).fileName()));
    dialog.setCancelButtonText(Tr("IDS_TERMINAL-FRAME_CSV_CANCEL"));
    dialog.setRange(0, 1000);
    dialog.setMinimumDuration(300);
    dialog.setAutoReset(false);
    dialog.setAutoClose(false);
    dialog.setValue(0);

    CsvImportJob job(path);
    QEventLoop loop;
    bool finished = false;
    QObject::connect(&job, &CsvImportJob::progressed, &dialog, &QProgressDialog::setValue);
    QObject::connect(&dialog, &QProgressDialog::canceled, &job, [&job] { job.Cancel(); });
    QObject::connect(&job, &CsvImportJob::finished, &loop, [&] {
        finished = true;
        loop.quit();
    });
    job.Start();
    loop.exec();
    if (!finished) {  // the program ends
        CsvImportResult none;
        none.cancelled = true;
        return none;
    }
    return std::move(job.Result());
}

bool CsvOpener::AskSkip(const QString& name, const CsvImportResult& result) const {
    const QString text = Tr("IDS_TERMINAL-FRAME_CSV_BAD_ROWS")
                             .arg(name, QString::number(result.badRowCount), ListRows(result),
                                  QString::number(result.bars.size()));
    if (result.bars.empty()) {
        ui::CurrentPrompts().Message(m_parent, ui::PromptIcon::Warning,
                                     Tr("IDS_TERMINAL-FRAME_TITLE"), text);
        return false;
    }
    constexpr int kSkip = 0;
    return ui::CurrentPrompts().AskChoice(
               m_parent, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"), text,
               {Tr("IDS_TERMINAL-FRAME_CSV_SKIP"), Tr("IDS_TERMINAL-FRAME_CSV_ABANDON")}) == kSkip;
}

void CsvOpener::TellFailure(const QString& name, const QString& reason) const {
    ui::CurrentPrompts().Message(m_parent, ui::PromptIcon::Error, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                 Tr("IDS_TERMINAL-FRAME_CSV_FAILED").arg(name, reason));
}

}  // namespace ta::terminal
