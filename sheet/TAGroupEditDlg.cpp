#include "sheet/TAGroupEditDlg.h"

#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "ui_TAGroupEditDlg.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QValidator>

#include <vector>

using namespace ta::ui;

namespace {

constexpr std::size_t kMaxNameBytes = 30;

constexpr std::pair<int, const char*> kTitleKeys[] = {
    {CTAGroupEditDlg::kAdd, "IDS_OPTIONAL-SHEET_GROUP_DIALOG_ADD_TITLE"},
    {CTAGroupEditDlg::kModify, "IDS_OPTIONAL-SHEET_GROUP_DIALOG_MODIFY_TITLE"},
    {CTAGroupEditDlg::kReplace, "IDS_TECHVIEW-STRING_GROUPSETTING_GROUP_CHK_REPLACE2"},
};

/// Turns what is entered into what can be stored, with the caret behind the same character.
class CodePageValidator : public QValidator {
public:
    /// `lacking` gets the characters that the code page lacks; it is not cleared.
    CodePageValidator(QString& lacking, QObject* parent) : QValidator(parent), m_lacking(lacking) {}

    State validate(QString& input, int& caret) const override {
        const QString stored = AsStored(input);
        if (stored != input) {
            m_lacking = Lacking(input);
        }
        caret = static_cast<int>(AsStored(input.left(caret)).size());
        input = stored;
        return Acceptable;
    }

private:
    static QString AsStored(const QString& text) { return ToQString(FromQString(text)); }
    static QString Lacking(const QString& text) {
        QString lacking;
        for (const char32_t code : text.toStdU32String()) {
            const QString character = QString::fromUcs4(&code, 1);
            if (AsStored(character) == "?" && !lacking.contains(character)) {
                lacking += character;
            }
        }
        return lacking.remove('?');
    }

    QString& m_lacking;
};

}  // namespace

CTAGroupEditDlg::CTAGroupEditDlg(QWidget* parent)
    : DialogBase(parent), m_ui(std::make_unique<Ui::TAGroupEditDlg>()) {
    m_ui->setupUi(this);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_ui->nameEdit->setValidator(new CodePageValidator(m_lacking, m_ui->nameEdit));
    Handle(m_ui->nameEdit, &QLineEdit::textEdited, [this] { ShowLacking(); });
}

CTAGroupEditDlg::~CTAGroupEditDlg() = default;

bool CTAGroupEditDlg::OnInitDialog() {
    for (const auto& [mode, key] : kTitleKeys) {
        if (mode == m_mode) {
            SetTextKey(*this, key, "windowTitle");
        }
    }
    if (m_mode == kAdd || m_mode == kModify) {
        ShowEdit();
    } else if (m_mode == kReplace) {
        ShowGroups();
    }
    return true;
}

void CTAGroupEditDlg::setVisible(bool visible) {
    DialogBase::setVisible(visible);
    if (visible) {
        // A dialog that comes up selects the text of the box with the focus.
        m_ui->nameEdit->end(false);
    }
}

void CTAGroupEditDlg::ShowEdit() {
    m_ui->groupCombo->hide();
    m_ui->nameEdit->show();
    m_ui->nameEdit->setText(ToQString(m_name));
    m_ui->nameEdit->setFocus();
}

void CTAGroupEditDlg::ShowLacking() {
    const QString lacking = std::exchange(m_lacking, {});
    m_ui->faultLabel->setText(
        lacking.isEmpty() ? QString() : LangText("IDS_TADIALOGS-SHEET_NOT_IN_CODE_PAGE", lacking));
    m_ui->nameEdit->setAccessibleDescription(m_ui->faultLabel->text());
}

void CTAGroupEditDlg::ShowGroups() {
    const std::vector<CString> names = ta::GroupNames();
    QComboBox& combo = *m_ui->groupCombo;
    m_ui->nameEdit->hide();
    combo.show();
    m_ui->nameLabel->setBuddy(&combo);
    combo.setUpdatesEnabled(false);
    combo.clear();
    for (const CString& name : names) {
        combo.addItem(ToQString(name), QByteArray::fromStdString(name));
    }
    combo.setCurrentIndex(names.empty() ? -1 : 0);
    combo.setUpdatesEnabled(true);
    combo.setFocus();
}

CString CTAGroupEditDlg::EnteredName() const {
    return m_mode == kReplace ? m_ui->groupCombo->currentData().toByteArray().toStdString()
                              : FromQString(m_ui->nameEdit->text());
}

void CTAGroupEditDlg::OnOK() {
    const CString name = EnteredName();
    if (name.empty()) {
        TellKey("IDS_OPTIONAL-SHEET_MSG_MIN");
    } else if (name.size() > kMaxNameBytes) {
        TellKey("IDS_OPTIONAL-SHEET_MSG_MAX");
    } else {
        m_name = name;
        DialogBase::OnOK();
    }
}

void CTAGroupEditDlg::closeEvent(QCloseEvent* event) {
    event->ignore();
}
