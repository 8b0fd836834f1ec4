#include "dialogs/TechDataExportDlg.h"

#include "platform/NumberText.h"
#include "platform/SyncInfo.h"
#include "platform/ui/TextBridge.h"
#include "ui_TechDataExportDlg.h"

#include <algorithm>

namespace ta::techdata {
namespace {

constexpr std::size_t kPreviewLines = 5;
constexpr int kCodePages[] = {950, 936, 932, 949, 1252};

/// The file's bytes as a person sees them.
QString Decoded(const std::string& bytes, const TextForm& form) {
    switch (form.encoding) {
        case TextForm::Encoding::UserCodePage:
            return ui::ToQString(bytes);
        case TextForm::Encoding::CodePage: {
            return QString::fromStdU16String(text::ToUtf16(bytes, form.codePage));
        }
        default: {
            QString text = QString::fromStdString(bytes);
            return text.startsWith(QChar::ByteOrderMark) ? text.mid(1) : text;
        }
    }
}

}  // namespace

TechDataExportDlg::TechDataExportDlg(const TechDataModel& model, const CString& title,
                                     std::vector<RowRange> selected, QWidget* parent)
    : DialogBase(parent),
      m_model(model),
      m_table(model.Table()),
      m_title(title),
      m_selected(std::move(selected)),
      m_ui(std::make_unique<Ui::TechDataExportDlg>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    Handle(m_ui->profileCombo, &QComboBox::currentIndexChanged, [this] { OnProfileChosen(); });
    Handle(m_ui->keepButton, &QPushButton::clicked, [this] { OnKeep(); });
    Handle(m_ui->deleteButton, &QPushButton::clicked, [this] { OnDelete(); });
    for (QComboBox* combo : {m_ui->formCombo, m_ui->codePageCombo, m_ui->decimalsCombo}) {
        Handle(combo, &QComboBox::currentIndexChanged, [this] { OnChanged(); });
    }
    Handle(m_ui->selectedCheckBox, &QCheckBox::toggled, [this] { OnChanged(); });
    Handle(m_ui->columnsList, &QListWidget::itemChanged, [this] { OnChanged(); });
}

TechDataExportDlg::~TechDataExportDlg() = default;

bool TechDataExportDlg::OnInitDialog() {
    m_isShowing = true;
    for (const HeaderInfo& header : m_table.GetHeaders()) {
        auto* const item = new QListWidgetItem(ui::ToQString(header.name), m_ui->columnsList);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    }
    FillCombos();
    ExportProfiles* const kept = CSyncInfo::GetSettingCFG().GetServices().exportProfiles;
    m_areReadable = kept == nullptr || kept->bLoadExportProfiles(m_profiles);
    if (!m_areReadable) {
        // When the dialog is there: its owner may take it away while the user reads.
        const auto tell = [this] { TellKey("IDS_TADIALOGS-TECHDATA_PROFILES_UNREADABLE"); };
        QMetaObject::invokeMethod(
            this, [this, tell] { Guard(tell); }, Qt::QueuedConnection);
    }
    FillProfiles();
    ShowProfile({});
    return true;
}

void TechDataExportDlg::FillCombos() {
    AddTextEntry(*m_ui->codePageCombo, "IDS_TADIALOGS-TECHDATA_CODE_PAGE_OWN", 0);
    for (const int codePage : kCodePages) {
        m_ui->codePageCombo->addItem(QString::number(codePage), codePage);
    }
    AddTextEntry(*m_ui->decimalsCombo, "IDS_TADIALOGS-TECHDATA_DECIMALS_SHOWN", -1);
    for (int decimals = 0; decimals <= kMostDecimals; ++decimals) {
        m_ui->decimalsCombo->addItem(QString::number(decimals), decimals);
    }
    AddTextEntry(*m_ui->profileCombo, "IDS_TADIALOGS-TECHDATA_PROFILE_NONE");
}

void TechDataExportDlg::vLoadLanguageString() {
    LoadLanguageStrings();
    OnChanged();
}

void TechDataExportDlg::FillProfiles() {
    const QSignalBlocker blocker(m_ui->profileCombo);
    while (m_ui->profileCombo->count() > 1) {
        m_ui->profileCombo->removeItem(1);
    }
    for (const ExportProfile& profile : m_profiles) {
        m_ui->profileCombo->addItem(ui::ToQString(profile.name));
    }
}

// ---- The controls ----

ExportProfile TechDataExportDlg::Profile() const {
    ExportProfile profile;
    profile.name = text::Trim(ui::FromQString(m_ui->nameEdit->text()));
    profile.form = static_cast<ExportForm>(std::max(m_ui->formCombo->currentIndex(), 0));
    if (profile.form == ExportForm::Fixed) {
        return profile;
    }
    profile.codePage = m_ui->codePageCombo->currentData().toInt();
    profile.decimals = m_ui->decimalsCombo->currentData().toInt();
    profile.selectedRows = m_ui->selectedCheckBox->isChecked();
    const Headers& headers = m_table.GetHeaders();
    const auto count =
        std::min(static_cast<std::size_t>(m_ui->columnsList->count()), headers.size());
    for (std::size_t column = 0; column < count; ++column) {
        if (m_ui->columnsList->item(static_cast<int>(column))->checkState() == Qt::Checked) {
            profile.columns.push_back(ColumnKey(headers, column));
        }
    }
    if (profile.columns.size() == count) {
        profile.columns.clear();
    }
    return profile;
}

void TechDataExportDlg::ShowProfile(const ExportProfile& profile) {
    m_isShowing = true;
    m_ui->nameEdit->setText(ui::ToQString(profile.name));
    m_ui->formCombo->setCurrentIndex(static_cast<int>(profile.form));
    m_ui->codePageCombo->setCurrentIndex(m_ui->codePageCombo->findData(profile.codePage));
    m_ui->decimalsCombo->setCurrentIndex(m_ui->decimalsCombo->findData(profile.decimals));
    m_ui->selectedCheckBox->setChecked(profile.selectedRows);
    const std::vector<std::size_t> columns = ColumnsOf(profile, m_table.GetHeaders());
    for (int row = 0; row < m_ui->columnsList->count(); ++row) {
        const bool isChosen =
            std::ranges::find(columns, static_cast<std::size_t>(row)) != columns.end();
        m_ui->columnsList->item(row)->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
    }
    m_isShowing = false;
    OnChanged();
}

void TechDataExportDlg::OnChanged() {
    if (m_isShowing) {
        return;
    }
    EnableControls();
    const ExportProfile profile = Profile();
    // Without a column nothing is saved; to a profile that would be all of them.
    const bool isAny = m_ui->okButton->isEnabled();
    m_ui->previewEdit->setPlainText(isAny ? PreviewText(profile) : QString());
    QStringList notes{LostText(profile), TooLongText(profile)};
    notes.removeAll({});
    m_ui->noteLabel->setText(notes.join('\n'));
}

void TechDataExportDlg::EnableControls() {
    const auto form = static_cast<ExportForm>(m_ui->formCombo->currentIndex());
    const bool isFree = form != ExportForm::Fixed;
    m_ui->codePageCombo->setEnabled(form == ExportForm::CodePage);
    m_ui->decimalsCombo->setEnabled(isFree && form != ExportForm::Analysis);
    m_ui->selectedCheckBox->setEnabled(isFree && !m_selected.empty());
    m_ui->columnsList->setEnabled(isFree);
    m_ui->deleteButton->setEnabled(m_areReadable && m_ui->profileCombo->currentIndex() > 0);
    const int columns = m_ui->columnsList->count();
    bool isAny = !isFree || columns == 0;
    for (int row = 0; row < columns && !isAny; ++row) {
        isAny = m_ui->columnsList->item(row)->checkState() == Qt::Checked;
    }
    m_ui->okButton->setEnabled(isAny);
    m_ui->keepButton->setEnabled(m_areReadable && isAny);
}

// ---- What the choice gives ----

std::vector<RowRange> TechDataExportDlg::Rows(const ExportProfile& profile) const {
    return profile.selectedRows && !m_selected.empty()
               ? m_selected
               : std::vector<RowRange>{{0, m_table.RowCount()}};
}

QString TechDataExportDlg::PreviewText(const ExportProfile& profile) const {
    // No more rows than can be seen.
    std::vector<RowRange> rows = Rows(profile);
    rows.resize(std::min(rows.size(), kPreviewLines));
    for (RowRange& range : rows) {
        range.last = std::min(range.last, range.first + kPreviewLines);
    }
    const TextForm form = FormOf(profile);
    TableWriter writer(m_table, m_model.Cells(), form, m_title,
                       ColumnsOf(profile, m_table.GetHeaders()), rows);
    std::string piece;
    writer.Next(piece);
    const QStringList lines = Decoded(piece, form).split("\r\n");
    return lines.mid(0, static_cast<qsizetype>(kPreviewLines)).join('\n');
}

QString TechDataExportDlg::LostText(const ExportProfile& profile) const {
    const std::u16string lost =
        LostCharacters(FormOf(profile), m_table.GetHeaders(),
                       ColumnsOf(profile, m_table.GetHeaders()), m_model.Cells().HasTimeOfDay());
    return lost.empty()
               ? QString()
               : ui::LangText("IDS_TADIALOGS-TECHDATA_LOST", QString::fromStdU16String(lost));
}

QString TechDataExportDlg::TooLongText(const ExportProfile& profile) const {
    const bool isForSpreadsheet =
        profile.form == ExportForm::Spreadsheet || profile.form == ExportForm::CodePage;
    std::size_t lines = 1;
    for (const RowRange& range : Rows(profile)) {
        lines += range.last - range.first;
    }
    return !isForSpreadsheet || lines <= kSpreadsheetLines
               ? QString()
               : ui::LangText("IDS_TADIALOGS-TECHDATA_TOO_LONG", QString::number(lines),
                              QString::number(kSpreadsheetLines));
}

void TechDataExportDlg::OnOK() {
    if (!m_ui->okButton->isEnabled()) {
        return;
    }
    const ExportProfile profile = Profile();
    for (const QString& note : {LostText(profile), TooLongText(profile)}) {
        const bool isRefused =
            !note.isEmpty() &&
            Ask(note + '\n' + ui::LangText("IDS_TADIALOGS-TECHDATA_ASK_ANYWAY")) != ui::Answer::Yes;
        if (isRefused) {
            return;
        }
    }
    DialogBase::OnOK();
}

// ---- Kept profiles ----

void TechDataExportDlg::OnProfileChosen() {
    const int index = m_ui->profileCombo->currentIndex();
    ShowProfile(index > 0 ? m_profiles[static_cast<std::size_t>(index) - 1] : ExportProfile());
}

void TechDataExportDlg::OnKeep() {
    const ExportProfile profile = Profile();
    if (profile.name.empty()) {
        Refuse(*m_ui->nameEdit, ui::LangText("IDS_TADIALOGS-TECHDATA_NAME_EMPTY"));
        return;
    }
    std::vector<ExportProfile> profiles = m_profiles;
    auto found = std::ranges::find(profiles, profile.name, &ExportProfile::name);
    if (found == profiles.end()) {
        found = profiles.insert(found, profile);
    } else if (Ask(ui::LangText("IDS_TADIALOGS-TECHDATA_ASK_REPLACE",
                                ui::ToQString(profile.name))) != ui::Answer::Yes) {
        return;
    }
    *found = profile;
    const auto row = static_cast<int>(found - profiles.begin()) + 1;
    if (Store(profiles)) {
        m_ui->profileCombo->setCurrentIndex(row);
    }
}

void TechDataExportDlg::OnDelete() {
    std::vector<ExportProfile> profiles = m_profiles;
    profiles.erase(profiles.begin() + m_ui->profileCombo->currentIndex() - 1);
    if (Store(profiles)) {
        ShowProfile({});
    }
}

bool TechDataExportDlg::Store(const std::vector<ExportProfile>& profiles) {
    ExportProfiles* const kept = CSyncInfo::GetSettingCFG().GetServices().exportProfiles;
    if (kept != nullptr && !kept->bSaveExportProfiles(profiles)) {
        TellKey("IDS_TADIALOGS-TECHDATA_PROFILES_UNWRITABLE");
        return false;
    }
    m_profiles = profiles;
    FillProfiles();
    return true;
}

}  // namespace ta::techdata
