#include "sheet/StudyPicker.h"

#include "sheet/StudyFacts.h"
#include "ui_StudyPicker.h"

#include <QHeaderView>

#include <array>

namespace ta::sheet {
namespace {

using ui::LangText;

enum Column { kName, kAbbreviation, kOtherName, kColumnCount };

constexpr int kTypeRole = Qt::UserRole;
constexpr int kSearchTextRole = Qt::UserRole + 1;

constexpr std::array kCategories{
    std::pair{StudyCategory::Price, "IDS_TADIALOGS-SHEET_CATEGORY_PRICE"},
    std::pair{StudyCategory::Volume, "IDS_TADIALOGS-SHEET_CATEGORY_VOLUME"},
    std::pair{StudyCategory::Oscillator, "IDS_TADIALOGS-SHEET_CATEGORY_OSCILLATOR"},
    std::pair{StudyCategory::TrendAndVolatility, "IDS_TADIALOGS-SHEET_CATEGORY_TREND"},
};

}  // namespace

StudyPicker::StudyPicker(QWidget* parent)
    : DialogBase(parent), m_ui(std::make_unique<Ui::StudyPicker>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_ui->searchEdit->SetTree(*m_ui->studyList);
    Handle(m_ui->searchEdit, &QLineEdit::textChanged,
           [this](const QString& text) { Search(text); });
    Handle(m_ui->studyList, &QTreeWidget::currentItemChanged, [this] { ShowState(); });
    Handle(m_ui->studyList, &QTreeWidget::itemDoubleClicked, [this] { OnOK(); });
}

StudyPicker::~StudyPicker() = default;

bool StudyPicker::OnInitDialog() {
    LoadLanguageStrings();
    for (const auto& [category, key] : kCategories) {
        AddCategory(key, UsableStudies(category));
    }
    m_ui->studyList->expandAll();
    for (int column = kName; column < kColumnCount; ++column) {
        m_ui->studyList->resizeColumnToContents(column);
    }
    Search({});
    m_ui->searchEdit->setFocus();
    return true;
}

void StudyPicker::AddCategory(const char* textKey, const std::vector<StudyFacts>& studies) {
    auto* heading = new QTreeWidgetItem(m_ui->studyList, {LangText(textKey)});
    heading->setFlags(Qt::ItemIsEnabled);
    heading->setFirstColumnSpanned(true);
    QFont bold;
    bold.setBold(true);
    heading->setFont(kName, bold.resolve(m_ui->studyList->font()));
    for (const StudyFacts& study : studies) {
        const QStringList texts{study.name, study.abbreviation, study.otherName};
        auto* item = new QTreeWidgetItem(heading, texts);
        item->setData(0, kTypeRole, study.type);
        item->setData(0, kSearchTextRole, ui::FoldForSearch(texts.join('\n')));
    }
}

void StudyPicker::Search(const QString& text) {
    const QString wanted = ui::FoldForSearch(text);
    QTreeWidget& list = *m_ui->studyList;
    QTreeWidgetItem* first = nullptr;
    for (int i = 0; i < list.topLevelItemCount(); ++i) {
        QTreeWidgetItem& heading = *list.topLevelItem(i);
        bool anyHere = false;
        for (int j = 0; j < heading.childCount(); ++j) {
            QTreeWidgetItem& item = *heading.child(j);
            const bool hit = item.data(0, kSearchTextRole).toString().contains(wanted);
            item.setHidden(!hit);
            anyHere = anyHere || hit;
            first = first == nullptr && hit ? &item : first;
        }
        heading.setHidden(!anyHere);
    }
    m_found = first != nullptr;
    list.setCurrentItem(first);
    list.scrollToTop();
    ShowState();
}

void StudyPicker::ShowState() {
    const QTreeWidgetItem* item = m_ui->studyList->currentItem();
    m_ui->okButton->setEnabled(item != nullptr && item->parent() != nullptr && !item->isHidden());
    m_ui->nothingLabel->setText(
        m_found ? QString()
                : LangText("IDS_TADIALOGS-SHEET_NOTHING_FOUND", m_ui->searchEdit->text()));
}

void StudyPicker::OnOK() {
    const QTreeWidgetItem* item = m_ui->studyList->currentItem();
    if (m_ui->okButton->isEnabled() && item != nullptr && item->parent() != nullptr) {
        m_chosen = item->data(0, kTypeRole).toInt();
        DialogBase::OnOK();
    }
}

}  // namespace ta::sheet
