#include "platform/ui/RadioTable.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace ta::ui {

RadioTable::RadioTable() {
    connect(&m_group, &QButtonGroup::idToggled, this, &RadioTable::OnToggled);
    connect(&m_group, &QButtonGroup::idClicked, this, &RadioTable::Choose);
}

RadioTable::~RadioTable() {
    m_group.disconnect(this);
}

void RadioTable::SetRows(std::vector<Row> rows) {
    m_rows = std::move(rows);
    for (int row = 0; row < static_cast<int>(m_rows.size()); ++row) {
        m_group.addButton(m_rows[static_cast<std::size_t>(row)].button, row);
    }
    EnableControls();
}

void RadioTable::SetValue(int value) {
    const QScopedValueRollback setting(m_setting, true);
    m_value = value;
    auto found = std::ranges::find(m_rows, value, &Row::value);
    if (found == m_rows.end()) {
        found = std::ranges::find(m_rows, true, &Row::fallback);
    }
    m_group.setExclusive(false);  // else none could be unchecked
    for (const Row& row : m_rows) {
        row.button->setChecked(found != m_rows.end() && row.button == found->button);
    }
    m_group.setExclusive(true);
    EnableControls();
}

int RadioTable::GetValue(int none) const {
    const int row = m_group.checkedId();
    return row < 0 ? none : m_rows[static_cast<std::size_t>(row)].value;
}

QAbstractButton* RadioTable::GetButton(int value) const {
    const auto found = std::ranges::find(m_rows, value, &Row::value);
    return found == m_rows.end() ? nullptr : found->button;
}

bool RadioTable::FocusChecked() {
    QAbstractButton* checked = m_group.checkedButton();
    if (checked == nullptr || !checked->isEnabled()) {
        return false;
    }
    checked->setFocus();
    return true;
}

void RadioTable::EnableRows(const std::function<bool(int value)>& allowed) {
    for (const Row& row : m_rows) {
        row.button->setEnabled(allowed(row.value));
    }
}

void RadioTable::OnToggled(int row, bool checked) {
    if (!m_setting && checked) {
        Choose(row);
    }
}

/// A radio that stands for an unknown value is checked before the user clicks on it.
void RadioTable::Choose(int row) {
    const int value = m_rows[static_cast<std::size_t>(row)].value;
    EnableControls();
    if (std::exchange(m_value, value) != value) {
        emit chosen(value);
    }
}

void RadioTable::EnableControls() {
    for (const Row& row : m_rows) {
        for (QWidget* control : row.enables) {
            control->setEnabled(std::ranges::any_of(m_rows, [control](const Row& other) {
                return other.button->isChecked() &&
                       std::ranges::find(other.enables, control) != other.enables.end();
            }));
        }
    }
}

}  // namespace ta::ui
