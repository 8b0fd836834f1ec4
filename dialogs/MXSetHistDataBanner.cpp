#include "dialogs/MXSetHistDataBanner.h"

#include "dialogs/DigitsValidator.h"
#include "dialogs/HistoryRules.h"
#include "platform/ui/FormTexts.h"
#include "platform/ui/Guard.h"
#include "platform/ui/RadioTable.h"
#include "ui_MXSetHistDataBanner.h"

#include <QEvent>

#include <algorithm>

using namespace ta::history;
using ta::ui::GuardFor;
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

AllowedPeriods Among(const std::vector<int>& dataTypes, AllowedPeriods periods) {
    bool* const byType[] = {&periods.daily, &periods.weekly, &periods.monthly, &periods.minute,
                            &periods.second};
    for (int type = kDaily; !dataTypes.empty() && type <= kSeconds; ++type) {
        *byType[type] = *byType[type] && std::ranges::find(dataTypes, type) != dataTypes.end();
    }
    return periods;
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
    const auto handle = [this](auto* sender, auto signal, auto handler) {
        connect(sender, signal, this, [this, handler](const auto&... arguments) -> void {
            GuardFor(this, [&] { handler(arguments...); });
        });
    };
    handle(&m_parts->buttons, &RadioTable::chosen, [this](int type) { Choose(type); });
    handle(m_ui->countCombo, &QComboBox::activated,
           [this](int row) { ChooseCount(m_ui->countCombo->itemData(row).toInt()); });
    const QLineEdit* edit = m_ui->countCombo->lineEdit();
    handle(edit, &QLineEdit::returnPressed, [this] { TakeCount(); });
    handle(edit, &QLineEdit::editingFinished, [this, edit] {
        if (edit->isModified()) {
            TakeCount();
        }
    });
    handle(edit, &QLineEdit::textEdited, [this](const QString& text) {
        ShowFavourite(text.isEmpty() ? CountInBox() : MinutesOfText(text.toStdString()));
    });
    handle(m_ui->favouriteButton, &QToolButton::clicked, [this](bool) { ToggleFavourite(); });
    FillCounts();
    SetState(market, symbol, dataType, count);
}

MXSetHistDataBanner::~MXSetHistDataBanner() {
    m_ui->countCombo->lineEdit()->disconnect(this);  // it loses the focus when it goes
    m_ui->countCombo->disconnect(this);
}

void MXSetHistDataBanner::SetState(std::uint8_t market, const CString& symbol, int dataType,
                                   int count, const std::vector<int>& only) {
    GuardFor(this, [&] {
        m_parts->allowed = Among(only, PeriodsOf(market, symbol));
        m_parts->buttons.EnableRows([this](int type) { return IsOffered(m_parts->allowed, type); });
        m_parts->buttons.SetValue(dataType);
        m_dataType = dataType;
        const bool isCounted = dataType == kMinutes || dataType == kSeconds;
        if (isCounted && count >= 1 && count <= kMaxMinutes) {
            (dataType == kSeconds ? m_seconds : m_minutes) = count;
        }
        const bool isCountable = m_parts->allowed.minute || m_parts->allowed.second;
        m_ui->countCombo->setEnabled(isCountable);
        m_ui->favouriteButton->setEnabled(isCountable);
        ShowCount();
    });
}

int MXSetHistDataBanner::GetCount() const {
    return m_dataType == kMinutes ? m_minutes : m_dataType == kSeconds ? m_seconds : 0;
}

/// Whether the box counts seconds: where there are some, in a chart of seconds or without minutes.
bool MXSetHistDataBanner::IsSeconds() const {
    return m_parts->allowed.second && (m_dataType == kSeconds || !m_parts->allowed.minute);
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
    const int count = CountInBox();
    const QString text = QString::number(count);
    // The box takes a text for chosen that is another row's than its current one.
    const int row = m_ui->countCombo->findText(text, Qt::MatchExactly);
    m_ui->countCombo->setCurrentIndex(row >= 0 ? row : m_ui->countCombo->findData(count));
    m_ui->countCombo->setEditText(text);
    ShowFavourite(count);
}

void MXSetHistDataBanner::ShowFavourite(int count) {
    m_ui->favouriteButton->setChecked(std::ranges::find(m_favourites, count) != m_favourites.end());
}

void MXSetHistDataBanner::SetFavourites(const std::vector<int>& favourites) {
    GuardFor(this, [&] {
        m_favourites.clear();
        for (const int count : favourites) {
            if (count >= 1 && count <= kMaxMinutes &&
                std::ranges::find(m_favourites, count) == m_favourites.end()) {
                m_favourites.push_back(count);
            }
        }
        FillCounts();
        ShowCount();
    });
}

void MXSetHistDataBanner::ToggleFavourite() {
    if (m_ui->countCombo->lineEdit()->isModified()) {
        TakeCount();  // the star leaves the box its focus
    }
    const int count = CountInBox();
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
        GuardFor(this, [this] { m_parts->texts.Apply(); });
    }
}
