#include "dialogs/CompareSetsDlg.h"

#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "ui_CompareSetsDlg.h"

#include <QSignalBlocker>

#include <algorithm>

using namespace ta::ui;

CompareSetsDlg::CompareSetsDlg(ta::ComparisonSets& sets, ta::ComparisonSet current, QWidget* parent)
    : DialogBase(parent),
      m_sets(sets),
      m_current(std::move(current)),
      m_ui(std::make_unique<Ui::CompareSetsDlg>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    Handle(m_ui->keepButton, &QPushButton::clicked, [this] { OnKeep(); });
    Handle(m_ui->removeButton, &QPushButton::clicked, [this] { OnRemove(); });
    Handle(m_ui->nameEdit, &QLineEdit::textChanged, [this] { OnNameTyped(); });
    Handle(m_ui->setList, &QListWidget::itemSelectionChanged, [this] { OnSelected(); });
    Handle(m_ui->setList, &QListWidget::itemDoubleClicked, [this] { OnOK(); });
}

CompareSetsDlg::~CompareSetsDlg() = default;

bool CompareSetsDlg::OnInitDialog() {
    FillList({});
    m_ui->nameEdit->setFocus();
    return true;
}

void CompareSetsDlg::FillList(const CString& selected) {
    m_ui->setList->clear();
    for (const CString& name : m_sets.Names()) {
        auto* row = new QListWidgetItem(ToQString(name), m_ui->setList);
        row->setData(Qt::UserRole, QByteArray::fromStdString(name));
        if (name == selected) {
            m_ui->setList->setCurrentItem(row);
        }
    }
    Enable();
}

void CompareSetsDlg::FillWithoutLost(const CString& name) {
    FillList(name);
    if (SelectedName().empty()) {
        m_ui->nameEdit->clear();  // else Enter would keep the current choice under it
    }
}

CString CompareSetsDlg::SelectedName() const {
    const QList<QListWidgetItem*> rows = m_ui->setList->selectedItems();
    return rows.empty() ? CString() : rows.front()->data(Qt::UserRole).toByteArray().toStdString();
}

void CompareSetsDlg::Enable() {
    m_ui->removeButton->setEnabled(!SelectedName().empty());
}

void CompareSetsDlg::OnSelected() {
    if (!SelectedName().empty()) {
        const QSignalBlocker quiet(m_ui->nameEdit);
        m_ui->nameEdit->setText(ToQString(SelectedName()));
    }
    Enable();
}

void CompareSetsDlg::OnNameTyped() {
    const QSignalBlocker quiet(m_ui->setList);
    const auto rows = m_ui->setList->findItems(m_ui->nameEdit->text().trimmed(),
                                               Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_ui->setList->setCurrentItem(rows.empty() ? nullptr : rows.front());
    Enable();
}

void CompareSetsDlg::OnKeep() {
    const CString name(ta::text::Trim(FromQString(m_ui->nameEdit->text())));
    if (name.empty()) {
        Refuse(*m_ui->nameEdit, LangText("IDS_TADIALOGS-COMPARE_SETS_NAMELESS"));
        return;
    }
    const std::vector<CString> names = m_sets.Names();
    const bool exists = std::ranges::find(names, name) != names.end();
    if (exists &&
        Ask(LangText("IDS_TADIALOGS-COMPARE_SETS_ASK_REPLACE", ToQString(name))) != Answer::Yes) {
        return;
    }
    if (!m_sets.Save(name, m_current)) {
        Tell(LangText("IDS_TADIALOGS-COMPARE_SETS_NOT_KEPT", ToQString(name)));
    }
    FillList(name);
}

void CompareSetsDlg::OnRemove() {
    const CString name = SelectedName();
    if (name.empty() ||
        Ask(LangText("IDS_TADIALOGS-COMPARE_SETS_ASK_REMOVE", ToQString(name))) != Answer::Yes) {
        return;
    }
    if (!m_sets.Remove(name)) {
        Tell(LangText("IDS_TADIALOGS-COMPARE_SETS_NOT_REMOVED", ToQString(name)));
    }
    FillWithoutLost(name);
}

void CompareSetsDlg::OnOK() {
    const CString name = SelectedName();
    if (name.empty()) {
        OnKeep();
    } else if (m_sets.Load(name, m_chosen)) {
        DialogBase::OnOK();
    } else {
        Tell(LangText("IDS_TADIALOGS-COMPARE_SETS_NOT_READ", ToQString(name)));
        FillWithoutLost(name);
    }
}
