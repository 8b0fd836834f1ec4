#include "terminal/frame/openers/TrendLineListDialog.h"

#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QVBoxLayout>

#include <algorithm>

namespace ta::terminal {
namespace {

enum Column { kSymbol, kCount, kKinds, kDate, kClass, kColumnCount };

constexpr QSize kFirstSize(720, 360);

QString KindsText(const TrendLineSymbol& symbol) {
    QStringList texts;
    for (const auto& [kind, count] : symbol.kinds) {
        texts << QStringLiteral("%1 %2").arg(TrendLineKindName(kind)).arg(count);
    }
    if (symbol.unreadable > 0) {
        texts << QStringLiteral("%1 %2")
                     .arg(Tr("IDS_TERMINAL-FRAME_LINES_UNREADABLE"))
                     .arg(symbol.unreadable);
    }
    return texts.join(Tr("IDS_TERMINAL-FRAME_LINES_COMMA"));
}

bool IsSame(const TrendLineSymbol& one, const TrendLineSymbol& other) {
    return one.chartClass == other.chartClass && one.market == other.market &&
           one.symbol == other.symbol;
}

}  // namespace

TrendLineListDialog::TrendLineListDialog(const MarketData& markets, QWidget* parent)
    : QDialog(parent),
      m_markets(markets),
      m_table(new QTableWidget(this)),
      m_total(new QLabel(this)),
      m_open(new QPushButton(Tr("IDS_TERMINAL-FRAME_LINES_OPEN"), this)),
      m_clear(new QPushButton(Tr("IDS_TERMINAL-FRAME_LINES_CLEAR"), this)) {
    setWindowTitle(Tr("IDS_TERMINAL-FRAME_LINES_TITLE"));
    resize(kFirstSize);
    MakeTable();
    auto* buttons = new QDialogButtonBox(this);
    auto* close = new QPushButton(Tr("IDS_TERMINAL-FRAME_LINES_CLOSE"), this);
    buttons->addButton(m_open, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_clear, QDialogButtonBox::ResetRole);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    m_open->setDefault(true);
    m_open->setObjectName("openButton");
    m_clear->setObjectName("clearButton");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(m_total);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_clear, &QPushButton::clicked, this, &TrendLineListDialog::ClearClass);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, &QDialog::accept);
    Repository().AddTechViewPtr(this);
    Fill();
    m_table->setFocus();
}

TrendLineListDialog::~TrendLineListDialog() {
    Repository().RemoveTechViewPtr(this);
}

void TrendLineListDialog::MakeTable() {
    m_table->setColumnCount(kColumnCount);
    m_table->setHorizontalHeaderLabels(
        {Tr("IDS_TERMINAL-FRAME_LINES_SYMBOL"), Tr("IDS_TERMINAL-FRAME_LINES_COUNT"),
         Tr("IDS_TERMINAL-FRAME_LINES_KINDS"), Tr("IDS_TERMINAL-FRAME_LINES_DATE"),
         Tr("IDS_TERMINAL-FRAME_LINES_CLASS")});
    m_table->setAccessibleName(windowTitle());
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    QHeaderView& header = *m_table->horizontalHeader();
    header.setHighlightSections(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(kKinds, QHeaderView::Stretch);
}

std::intptr_t TrendLineListDialog::WindowProc(unsigned message, std::uintptr_t wParam,
                                              std::intptr_t lParam) {
    if (message == kTrendLineChangeMessage) {
        Fill();
        return 1;
    }
    return CView::WindowProc(message, wParam, lParam);
}

std::optional<TrendLineSymbol> TrendLineListDialog::Chosen() const {
    const int row = m_table->currentRow();
    return row < 0 ? std::nullopt : std::optional(m_symbols[static_cast<std::size_t>(row)]);
}

void TrendLineListDialog::Fill() {
    const auto chosen = Chosen();
    m_symbols = ListTrendLineSymbols();
    const int rows = static_cast<int>(m_symbols.size());
    m_table->setRowCount(rows);
    int current = rows > 0 ? 0 : -1;
    int lines = 0;
    for (int row = 0; row < rows; ++row) {
        const TrendLineSymbol& symbol = m_symbols[static_cast<std::size_t>(row)];
        ShowRow(row, symbol);
        lines += symbol.count;
        if (chosen && IsSame(*chosen, symbol)) {
            current = row;
        }
    }
    m_table->setCurrentCell(current, kSymbol);
    m_total->setText(rows > 0 ? Tr("IDS_TERMINAL-FRAME_LINES_TOTAL").arg(rows).arg(lines)
                              : Tr("IDS_TERMINAL-FRAME_LINES_NONE"));
    m_open->setEnabled(rows > 0);
    m_clear->setEnabled(rows > 0);
}

void TrendLineListDialog::ShowRow(int row, const TrendLineSymbol& symbol) {
    const auto show = [&](Column column, const QString& text, Qt::Alignment alignment) {
        auto* item = new QTableWidgetItem(text);
        item->setTextAlignment(alignment | Qt::AlignVCenter);
        item->setToolTip(text);
        m_table->setItem(row, column, item);
    };
    show(kSymbol, SymbolText(symbol), Qt::AlignLeft);
    show(kCount, QString::number(symbol.count), Qt::AlignRight);
    show(kKinds, KindsText(symbol), Qt::AlignLeft);
    show(kDate, ui::ToQString(symbol.date), Qt::AlignLeft);
    show(kClass, ui::ToQString(symbol.chartClass), Qt::AlignLeft);
}

QString TrendLineListDialog::SymbolText(const TrendLineSymbol& symbol) const {
    const QString id = ui::ToQString(symbol.symbol);
    const Symbol* known = m_markets.FindSymbol(symbol.market, symbol.symbol);
    return known ? id + ' ' + ui::ToQString(NameOf(*known)) : id;
}

void TrendLineListDialog::ClearClass() {
    const auto chosen = Chosen();
    if (!chosen) {
        return;
    }
    const CString chartClass = chosen->chartClass;
    int symbols = 0;
    int lines = 0;
    for (const TrendLineSymbol& symbol : m_symbols) {
        symbols += symbol.chartClass == chartClass ? 1 : 0;
        lines += symbol.chartClass == chartClass ? symbol.count : 0;
    }
    if (ui::CurrentPrompts().AskYesNo(this, ui::PromptIcon::Question,
                                      Tr("IDS_TERMINAL-FRAME_TITLE"),
                                      Tr("IDS_TERMINAL-FRAME_LINES_ASK_CLEAR")
                                          .arg(ui::ToQString(chartClass))
                                          .arg(symbols)
                                          .arg(lines)) == ui::Answer::Yes) {
        ClearTrendLineClass(chartClass);
    }
}

}  // namespace ta::terminal
