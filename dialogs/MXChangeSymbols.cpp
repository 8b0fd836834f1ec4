#include "dialogs/MXChangeSymbols.h"

#include "dialogs/ChoiceList.h"
#include "dialogs/CompareSetsDlg.h"
#include "dialogs/ComparisonText.h"
#include "dialogs/MXSetHistData.h"
#include "dialogs/SymbolTreeModel.h"
#include "platform/QuoteInterface.h"
#include "platform/SyncInfo.h"
#include "platform/ui/ComponentFont.h"
#include "platform/ui/DateBridge.h"
#include "platform/ui/Guard.h"
#include "platform/ui/TextBridge.h"
#include "ui_MXChangeSymbols.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFontMetrics>
#include <QHeaderView>
#include <QMenu>
#include <QShortcut>

#include <algorithm>
#include <array>
#include <cmath>

using namespace ta::compare;
using namespace ta::ui;
using ta::dialogs::SymbolTreeModel;

namespace {

constexpr unsigned kDateAndTime = 1;
constexpr unsigned kDateAlone = 2;
const QDate kFirstBaseDate(1970, 1, 2);  // day 0 stands for no base date
const QDate kLastBaseDate(2069, 12, 31);

const BKQuoteInterface& Quotes() {
    return BKQuoteInterface::GetBKInterface();
}

ta::ComparisonSets* Sets() {
    return CSyncInfo::GetSettingCFG().GetServices().comparisonSets;
}

ta::history::Values ValuesOf(const ta::ComparedHistory& history) {
    return {history.dataType, history.minutes, history.readMode, history.recordCount,
            history.startDate};
}

QStringList ToQStrings(const std::vector<CString>& texts) {
    QStringList result;
    std::ranges::transform(texts, std::back_inserter(result), ToQString);
    return result;
}

/// As many as a message has room for, and how many more there are.
QString ListText(const QStringList& texts) {
    constexpr qsizetype kMost = 12;
    const QString text = texts.mid(0, kMost).join(", ");
    return texts.size() <= kMost ? text
                                 : LangText("IDS_TADIALOGS-COMPARE_CODES_MORE", text,
                                            QString::number(texts.size() - kMost));
}

/// How wide characters are, by their first bytes; all Chinese ones are alike.
std::array<int, 256> WidthsIn(const QFontMetrics& font) {
    std::array<int, 256> widths;
    widths.fill(font.horizontalAdvance(QChar(u'\u570B')));
    for (char16_t ascii = 0; ascii < 0x80; ++ascii) {
        widths[ascii] = font.horizontalAdvance(QChar(ascii));
    }
    return widths;
}

/// A base date that the pickers can show.
double Showable(double baseDate) {
    return std::isfinite(baseDate) ? std::clamp(baseDate, 0.0, 1e6) : 0.0;
}

}  // namespace

struct MXChangeSymbols::Parts {
    Parts(int limit, ChoiceList::TextOf textOf) : chosen({}, limit, std::move(textOf)) {}

    MarketTable markets;
    SymbolTreeModel tree;
    ChoiceList chosen;
    QMenu recent;
};

MXChangeSymbols::MXChangeSymbols(const std::vector<Symbol>& symbols, int limit,
                                 const HisDataType& history, unsigned baseDateMode, double baseDate,
                                 QWidget* parent)
    : DialogBase(parent),
      m_history(history),
      m_baseDateMode(baseDateMode),
      m_baseDate(Showable(baseDate)),
      m_ui(std::make_unique<Ui::MXChangeSymbols>()) {
    m_parts =
        std::make_unique<Parts>(limit, [this](const Symbol& symbol) { return TextOf(symbol); });
    m_parts->chosen.SetSymbols(symbols);
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_ui->symbolTree->setModel(&m_parts->tree);
    m_ui->recentButton->setMenu(&m_parts->recent);
    m_ui->baseDate->setDateRange(kFirstBaseDate, kLastBaseDate);
    ConnectControls();
    ConnectKeys();
}

MXChangeSymbols::~MXChangeSymbols() = default;

void MXChangeSymbols::ConnectControls() {
    using Page = MXChangeSymbols;
    const std::pair<QAbstractButton*, void (Page::*)()> buttons[] = {
        {m_ui->addButton, &Page::OnAdd},           {m_ui->deleteButton, &Page::OnDel},
        {m_ui->deleteAllButton, &Page::OnDelall},  {m_ui->moveUpButton, &Page::OnMoveUp},
        {m_ui->moveDownButton, &Page::OnMoveDown}, {m_ui->settingButton, &Page::OnSetting},
        {m_ui->setsButton, &Page::OnSets}};
    for (const auto& [button, handler] : buttons) {
        Handle(button, &QAbstractButton::clicked,
               [this, handler = handler] { (this->*handler)(); });
    }
    Handle(m_ui->symbolTree, &QTreeView::doubleClicked, [this] { OnDblclkTreeAllsymbols(); });
    Handle(m_ui->searchEdit, &QLineEdit::textChanged, [this] { OnChangeEditSymbolsSearch(); });
    Handle(m_ui->chosenList, &QListWidget::itemDoubleClicked, [this] { OnDblclkSetSymbols(); });
    Handle(m_ui->chosenList, &DragListBox::dragEnded, [this] { OnRowDragged(); });
    Handle(&m_parts->recent, &QMenu::aboutToShow, [this] { FillRecentMenu(); });
}

void MXChangeSymbols::ConnectKeys() {
    const auto key = [this](QWidget* where, const QKeySequence& keys, auto handler) {
        auto* shortcut = new QShortcut(keys, where);
        shortcut->setContext(where == this ? Qt::WindowShortcut : Qt::WidgetShortcut);
        Handle(shortcut, &QShortcut::activated, handler);
    };
    key(this, Qt::Key_F3, [this] { FindNext(1); });
    key(this, Qt::SHIFT | Qt::Key_F3, [this] { FindNext(-1); });
    key(m_ui->chosenList, Qt::Key_Delete, [this] { OnDel(); });
    auto* paste = new QAction(this);
    paste->setShortcut(QKeySequence::Paste);
    paste->setShortcutContext(Qt::WidgetShortcut);
    Handle(paste, &QAction::triggered, [this] { PasteCodes(); });
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->symbolTree), static_cast<QWidget*>(m_ui->chosenList)}) {
        control->addAction(paste);
        control->setContextMenuPolicy(Qt::ActionsContextMenu);
    }
    m_ui->searchEdit->SetTree(*m_ui->symbolTree);
}

bool MXChangeSymbols::OnInitDialog() {
    ShowBaseDate();
    m_ui->symbolTree->setFont(CComponentComFont::GetComponentComFont());
    m_ui->chosenList->setFont(CComponentComFont::GetComponentComFont());
    m_ui->setsButton->setVisible(Sets() != nullptr);
    m_ui->searchEdit->setFocus();
    return true;
}

// Everything here is in the back-end's language, the names of symbols as well.
void MXChangeSymbols::vLoadLanguageString() {
    LoadLanguageStrings();
    for (QAction* action : m_ui->chosenList->actions()) {
        action->setText(LangText("IDS_TADIALOGS-COMPARE_PASTE"));
    }
    m_parts->markets = MarketTable(Quotes());
    vFillLeftTreeCtrl();
    m_parts->chosen.WriteTexts();
    FillChosenList(SelectedRow());
    setDataDescription();
}

void MXChangeSymbols::ShowBaseDate() {
    m_shownMode = m_baseDate == 0.0 ? 0 : m_baseDateMode;
    if (m_baseDate == 0.0) {
        m_ui->baseDate->setDate(DateOfDay(ta::history::Today()));
    } else {
        m_ui->baseDate->setDate(DateOfDay(static_cast<long>(m_baseDate)));
        m_ui->baseTime->setTime(TimeOfFraction(m_baseDate));
    }
    const bool showsDate = m_shownMode == kDateAndTime || m_shownMode == kDateAlone;
    m_ui->baseDateLabel->setVisible(showsDate);
    m_ui->baseDate->setVisible(showsDate);
    m_ui->baseTime->setVisible(m_shownMode == kDateAndTime);
}

void MXChangeSymbols::setDataDescription() {
    m_ui->descriptionLabel->setText(ToQString(DataDescription(ValuesOf(m_history))));
}

// ---- Symbols and markets ----

const std::vector<MXChangeSymbols::Symbol>& MXChangeSymbols::GetSymbols() const {
    return m_parts->chosen.Symbols();
}

void MXChangeSymbols::vFillLeftTreeCtrl() {
    Guard([this] {
        m_parts->tree.SetTree(SymbolTree(Quotes()));
        const SymbolTree& tree = m_parts->tree.Tree();
        QTreeView& view = *m_ui->symbolTree;
        const QFontMetrics font = view.fontMetrics();
        const int widest = tree.WidestNode(WidthsIn(font));
        const int width = widest == SymbolTree::kNone
                              ? 0
                              : font.horizontalAdvance(ToQString(CString(tree.Text(widest))));
        view.header()->setMinimumSectionSize(width + 4 * view.indentation());
    });
}

bool MXChangeSymbols::bGetSymbolItem(CString& symbolText, CString& nameText, unsigned char market,
                                     const CString& code) {
    return NothingOnFailure(
        [&] { return SymbolFields(Quotes(), market, code, symbolText, nameText); });
}

CString MXChangeSymbols::TextOf(const Symbol& symbol) const {
    return ChosenText(Quotes(), m_parts->markets, symbol.market, symbol.code);
}

CString MXChangeSymbols::getSetSymbolString(std::uint8_t market, const CString& code) const {
    return NothingOnFailure([&] { return TextOf({market, code}); });
}

std::uint8_t MXChangeSymbols::marketNameToId(const char* label) const {
    return m_parts->markets.Id(label);
}

CString MXChangeSymbols::cszMarketIDToName(std::uint8_t market) const {
    return NothingOnFailure([&] { return m_parts->markets.Label(market); });
}

// ---- The tree and its search ----

void MXChangeSymbols::OnAdd() {
    std::vector<int> leaves;
    for (const QModelIndex& index : m_ui->symbolTree->selectionModel()->selectedIndexes()) {
        leaves.push_back(SymbolTreeModel::NodeOf(index));
    }
    std::ranges::sort(leaves);
    AddLeaves(leaves);
}

void MXChangeSymbols::OnDblclkTreeAllsymbols() {
    AddLeaves({SymbolTreeModel::NodeOf(m_ui->symbolTree->currentIndex())});
}

void MXChangeSymbols::AddLeaves(const std::vector<int>& leaves) {
    const SymbolTree& tree = m_parts->tree.Tree();
    for (const int leaf : leaves) {
        if (leaf == SymbolTree::kNone || tree.ItemData(leaf) <= 0) {
            continue;
        }
        const CString id = IdOfLeafText(CString(tree.Text(leaf)));
        if (!AddSymbol(
                {static_cast<std::uint8_t>(tree.ItemData(leaf)), SymbolOfTreeId(Quotes(), id)})) {
            return;
        }
    }
}

bool MXChangeSymbols::AddSymbol(const Symbol& symbol) {
    ChoiceList& chosen = m_parts->chosen;
    const ChoiceList::Added added = chosen.Add(symbol);
    if (added == ChoiceList::Added::Full) {
        TellKey("IDC_CHANGESYM-CHANGESYM_COMPARE_SYMBOL_LIMIT");
    } else if (added == ChoiceList::Added::Yes) {
        FillChosenList(SelectedRow());
        m_ui->addButton->setEnabled(!chosen.IsFull());
        RememberSymbol(Sets(), symbol);
    }
    return added != ChoiceList::Added::Full;
}

void MXChangeSymbols::OnChangeEditSymbolsSearch() {
    const int node = m_parts->tree.Tree().FindBeginning(FromQString(m_ui->searchEdit->text()));
    node == SymbolTree::kNone ? ShowNoLeaf() : ShowLeaf(node);
}

void MXChangeSymbols::FindNext(int step) {
    const SymbolTree& tree = m_parts->tree.Tree();
    const int current = SymbolTreeModel::NodeOf(m_ui->symbolTree->currentIndex());
    const int node = tree.FindHolding(FromQString(m_ui->searchEdit->text()), current, step);
    node == SymbolTree::kNone ? QApplication::beep() : ShowLeaf(node);
}

void MXChangeSymbols::ShowLeaf(int node) {
    QTreeView& view = *m_ui->symbolTree;
    const QModelIndex index = m_parts->tree.IndexOf(node);
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        view.expand(above);
    }
    // The view's own way looks at the keys, and Ctrl+V into the search would add to the selection.
    view.selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    view.scrollTo(view.indexAbove(index), QAbstractItemView::PositionAtTop);
}

void MXChangeSymbols::ShowNoLeaf() {
    QTreeView& view = *m_ui->symbolTree;
    for (int row = 0; row < m_parts->tree.rowCount(); ++row) {
        view.collapse(m_parts->tree.index(row, 0));
    }
    view.scrollToTop();
    view.setCurrentIndex({});
    view.clearSelection();
}

void MXChangeSymbols::PasteCodes() {
    const std::vector<CString> codes = CodesOfText(FromQString(QApplication::clipboard()->text()));
    const std::vector<int> nodes = m_parts->tree.Tree().FindCodes(codes);
    std::vector<CString> unknown;
    for (std::size_t i = 0; i < codes.size(); ++i) {
        if (nodes[i] == SymbolTree::kNone) {
            unknown.push_back(codes[i]);
        }
    }
    AddLeaves(nodes);
    if (!unknown.empty()) {
        Tell(LangText("IDS_TADIALOGS-COMPARE_CODES_NOT_FOUND", ListText(ToQStrings(unknown))));
    }
}

void MXChangeSymbols::FillRecentMenu() {
    m_parts->recent.clear();
    for (const Symbol& symbol : RecentSymbols(Sets())) {
        const QString text = ToQString(TextOf(symbol));
        QAction* action = m_parts->recent.addAction(WithBareAmpersands(text));
        Handle(action, &QAction::triggered, [this, symbol] { AddSymbol(symbol); });
    }
    if (m_parts->recent.isEmpty()) {
        m_parts->recent.addAction(LangText("IDS_TADIALOGS-COMPARE_NO_RECENT"))->setEnabled(false);
    }
}

// ---- The list of chosen symbols ----

void MXChangeSymbols::FillChosenList(int selectedRow) {
    QListWidget& list = *m_ui->chosenList;
    list.clear();
    list.addItems(ToQStrings(m_parts->chosen.Texts()));
    for (int row = 0; row < list.count(); ++row) {
        list.item(row)->setData(Qt::UserRole, row);  // where a dragged row came from
    }
    list.setCurrentRow(selectedRow);
    OnSetfocusSetSymbols();
}

/// -1 for none. The list's current row is another one when Tab has led into it.
int MXChangeSymbols::SelectedRow() const {
    const QList<QListWidgetItem*> rows = m_ui->chosenList->selectedItems();
    return rows.empty() ? -1 : m_ui->chosenList->row(rows.front());
}

void MXChangeSymbols::OnSetfocusSetSymbols() {
    m_ui->moveUpButton->setEnabled(m_parts->chosen.Count() >= 2);
    m_ui->moveDownButton->setEnabled(m_parts->chosen.Count() >= 2);
}

void MXChangeSymbols::OnDel() {
    const int row = SelectedRow();
    if (row >= 0) {
        FillChosenList(m_parts->chosen.Remove(row));
        m_ui->addButton->setEnabled(true);
    }
}

void MXChangeSymbols::OnDblclkSetSymbols() {
    OnDel();
}

void MXChangeSymbols::OnDelall() {
    m_parts->chosen.SetSymbols({});
    FillChosenList(-1);
    m_ui->addButton->setEnabled(true);
}

void MXChangeSymbols::OnMoveUp() {
    MoveSelected(-1);
}

void MXChangeSymbols::OnMoveDown() {
    MoveSelected(1);
}

void MXChangeSymbols::MoveSelected(int step) {
    const int row = SelectedRow();
    if (m_parts->chosen.Move(row, row + step)) {
        FillChosenList(row + step);
    }
}

void MXChangeSymbols::OnRowDragged() {
    const int row = m_ui->chosenList->currentRow();
    m_parts->chosen.Move(m_ui->chosenList->item(row)->data(Qt::UserRole).toInt(), row);
    FillChosenList(row);
}

// ---- The history, the base date, OK ----

void MXChangeSymbols::OnSetting() {
    MXSetHistData dialog(0, "", m_history.dataType, m_history.minutes, m_history.readMode,
                         m_history.recordCount, m_history.startDate, m_history.flag != 0, this);
    if (dialog.DoModal() != kIdOk) {
        return;
    }
    m_history.dataType = dialog.GetDataType();
    m_history.minutes = dialog.GetMinutes();
    m_history.readMode = dialog.GetReadMode();
    m_history.recordCount = static_cast<std::int32_t>(dialog.GetRecordCount());
    m_history.startDate = static_cast<std::int32_t>(dialog.GetStartDate());
    setDataDescription();
}

void MXChangeSymbols::OnSets() {
    m_ui->baseDate->interpretText();
    const double day = static_cast<double>(DayOfDate(m_ui->baseDate->date()).value_or(0));
    CompareSetsDlg dialog(*Sets(), {GetSymbols(), m_history, HasBaseDate() ? day : 0.0}, this);
    if (dialog.DoModal() == kIdOk) {
        UseSet(dialog.Chosen());
    }
}

void MXChangeSymbols::UseSet(const ta::ComparisonSet& set) {
    m_parts->chosen.SetSymbols(set.symbols);
    FillChosenList(-1);
    m_ui->addButton->setEnabled(!m_parts->chosen.IsFull());
    const std::uint8_t flag = m_history.flag;
    m_history = set.history;
    m_history.flag = flag;
    setDataDescription();
    m_baseDate = Showable(set.baseDate);
    ShowBaseDate();
}

bool MXChangeSymbols::TakeBaseDate() {
    const long today = ta::history::Today();
    m_ui->baseDate->interpretText();
    const long picked = DayOfDate(m_ui->baseDate->date()).value_or(0);
    if (today < picked) {
        TellKey("IDC_CHANGESYM-CHANGESYM_COMPARE_DATE_ERROR");
        m_ui->baseDate->setDate(DateOfDay(today));
        m_ui->baseDate->setFocus();
        return false;
    }
    // The time of day is cut off: a base date is a day, whatever the time picker shows.
    m_baseDate = static_cast<double>(picked);
    return true;
}

void MXChangeSymbols::OnOK() {
    if (!TakeBaseDate()) {
        return;
    }
    if (m_parts->chosen.IsOverLimit()) {
        TellKey("IDC_CHANGESYM-CHANGESYM_COMPARE_SYMBOL_LIMIT");
    } else if (m_parts->chosen.Count() < 2) {
        TellKey("IDC_CHANGESYM-CHANGESYM_COMPARE_SYMBOL_MINIMUM");
    } else {
        DialogBase::OnOK();
    }
}
