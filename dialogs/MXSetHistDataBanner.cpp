#include "dialogs/MXSetHistDataBanner.h"

#include "dialogs/DigitsValidator.h"
#include "dialogs/HistoryRules.h"
#include "platform/ui/FormTexts.h"
#include "platform/ui/RadioTable.h"
#include "ui_MXSetHistDataBanner.h"

#include <QEvent>

#include <algorithm>

using namespace ta::history;
using ta::ui::RadioTable;

struct MXSetHistDataBanner::Parts {
    AllowedPeriods allowed;
    RadioTable buttons;
    ta::ui::FormTexts texts;
};

namespace {

constexpr int kSeconds = 4;

bool IsOffered(const AllowedPeriods& allowed, int dataType) {
    return dataType == kSeconds ? allowed.second : IsAllowed(allowed, dataType);
}

}  // namespace

MXSetHistDataBanner::MXSetHistDataBanner(std::uint8_t market, const CString& symbol, int dataType,
                                         int count, QWidget* parent)
    : QWidget(parent),
      m_minutes(kDefaultMinutes),
      m_seconds(kDefaultMinutes),
      m_parts(std::make_unique<Parts>()),
      m_ui(std::make_unique<Ui::MXSetHistDataBanner>()) {
    m_ui->setupUi(this);
    m_parts->texts.Collect(*this);
    m_parts->texts.Apply();
    m_parts->buttons.SetRows({{kDaily, m_ui->dailyButton},
                              {kWeekly, m_ui->weeklyButton},
                              {kMonthly, m_ui->monthlyButton},
                              {kMinutes, m_ui->minutesButton},
                              {kSeconds, m_ui->secondsButton}});
    m_ui->countCombo->setCompleter(nullptr);
    m_ui->countCombo->setValidator(new ta::dialogs::DigitsValidator(this));
    connect(&m_parts->buttons, &RadioTable::chosen, this, &MXSetHistDataBanner::Choose);
    connect(m_ui->countCombo, &QComboBox::activated, this,
            [this](int row) { ChooseCount(m_ui->countCombo->itemData(row).toInt()); });
    const QLineEdit* edit = m_ui->countCombo->lineEdit();
    connect(edit, &QLineEdit::returnPressed, this, [this] { TakeCount(); });
    connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
        if (edit->isModified()) {
            TakeCount();
        }
    });
    connect(m_ui->favouriteButton, &QToolButton::clicked, this,
            &MXSetHistDataBanner::ToggleFavourite);
    FillCounts();
    SetState(market, symbol, dataType, count);
}

MXSetHistDataBanner::~MXSetHistDataBanner() {
    m_ui->countCombo->lineEdit()->disconnect(this);  // it loses the focus when it goes
    m_ui->countCombo->disconnect(this);
}

void MXSetHistDataBanner::SetState(std::uint8_t market, const CString& symbol, int dataType,
                                   int count) {
    m_parts->allowed = PeriodsOf(market, symbol);
    m_parts->buttons.EnableRows([this](int type) { return IsOffered(m_parts->allowed, type); });
    m_parts->buttons.SetValue(dataType);
    m_dataType = dataType;
    const bool isCounted = dataType == kMinutes || dataType == kSeconds;
    if (isCounted && count >= 1 && count <= kMaxMinutes) {
        (IsSeconds() ? m_seconds : m_minutes) = count;
    }
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->countCombo), static_cast<QWidget*>(m_ui->favouriteButton)}) {
        control->setEnabled(m_parts->allowed.minute || m_parts->allowed.second);
    }
    ShowCount();
}

int MXSetHistDataBanner::GetCount() const {
    return m_dataType == kMinutes ? m_minutes : IsSeconds() ? m_seconds : 0;
}

/// Whether the box counts seconds: in a chart of seconds, or when there are no minutes.
bool MXSetHistDataBanner::IsSeconds() const {
    return m_dataType == kSeconds || (!m_parts->allowed.minute && m_parts->allowed.second);
}

void MXSetHistDataBanner::Choose(int dataType) {
    m_dataType = dataType;
    ShowCount();
    emit periodChosen(m_dataType, GetCount());
}

void MXSetHistDataBanner::TakeCount() {
    const QString text = m_ui->countCombo->currentText();
    text.isEmpty() ? ShowCount() : ChooseCount(MinutesOfText(text.toStdString()));
}

void MXSetHistDataBanner::ChooseCount(int count) {
    const int dataType = IsSeconds() ? kSeconds : kMinutes;
    int& shown = IsSeconds() ? m_seconds : m_minutes;
    const bool isNew = dataType != m_dataType || count != shown;
    shown = count;
    if (isNew) {
        m_parts->buttons.SetValue(dataType);
        Choose(dataType);
    } else {
        ShowCount();
    }
}

// ---- The box of bar lengths ----

void MXSetHistDataBanner::FillCounts() {
    QComboBox& combo = *m_ui->countCombo;
    combo.clear();
    for (const int favourite : m_favourites) {
        combo.addItem(QString::fromUtf8("★ %1").arg(favourite), favourite);
    }
    for (const int length : kBarLengths) {
        combo.addItem(QString::number(length), length);
    }
}

void MXSetHistDataBanner::ShowCount() {
    const int count = IsSeconds() ? m_seconds : m_minutes;
    const QString text = QString::number(count);
    // The box takes a text for chosen that is another row's than its current one.
    const int row = m_ui->countCombo->findText(text, Qt::MatchExactly);
    m_ui->countCombo->setCurrentIndex(row >= 0 ? row : m_ui->countCombo->findData(count));
    m_ui->countCombo->setEditText(text);
    m_ui->favouriteButton->setChecked(std::ranges::find(m_favourites, count) != m_favourites.end());
}

void MXSetHistDataBanner::SetFavourites(const std::vector<int>& favourites) {
    m_favourites.clear();
    for (const int count : favourites) {
        if (count >= 1 && count <= kMaxMinutes &&
            std::ranges::find(m_favourites, count) == m_favourites.end()) {
            m_favourites.push_back(count);
        }
    }
    FillCounts();
    ShowCount();
}

void MXSetHistDataBanner::ToggleFavourite() {
    const int count = IsSeconds() ? m_seconds : m_minutes;
    if (std::erase(m_favourites, count) == 0) {
        m_favourites.push_back(count);
    }
    FillCounts();
    ShowCount();
    emit favouritesChanged();
}

void MXSetHistDataBanner::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        m_parts->texts.Apply();
    }
}
