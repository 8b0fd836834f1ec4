#pragma once

#include "platform/Export.h"

#include <QAbstractButton>
#include <QButtonGroup>

#include <functional>
#include <optional>
#include <vector>

namespace ta::ui {

/// Radio buttons as a table: which value each one stands for and which controls it switches on. A
/// dialog has one as a member for each group of its radios:
///
///     m_readMode.SetRows({{0, m_ui->lastRadio, {m_ui->countEdit}},
///                         {1, m_ui->sinceRadio, {m_ui->startDate}, true}});
///     m_readMode.SetValue(mode);
///     Handle(&m_readMode, &RadioTable::chosen, [this](int mode) { m_nReadMode = mode; });
///
/// The radios of one table exclude each other wherever they stand in the form.
class TADIALOGS_EXPORT RadioTable : public QObject {
    Q_OBJECT

public:
    struct Row {
        int value;
        QAbstractButton* button;
        /// Enabled while this radio is checked and disabled otherwise; several rows may name the
        /// same control.
        std::vector<QWidget*> enables = {};
        bool fallback = false;  ///< checked for a value that no row has; one row at most
    };

    RadioTable();
    ~RadioTable() override;

    /// Once, after the form is there. The controls stay the form's.
    void SetRows(std::vector<Row> rows);

    /// Checks the radio of the value, or the fallback's; without a fallback none. Does not emit
    /// `chosen`. A disabled radio is checked all the same.
    void SetValue(int value);
    /// The value of the checked radio; `none` when none is checked.
    int GetValue(int none = -1) const;
    /// The radio of a value, or null.
    QAbstractButton* GetButton(int value) const;
    /// Gives the focus to the checked radio, for the arrow keys to begin there; false when none is
    /// checked or it is disabled. For a dialog that opens on its radios.
    bool FocusChecked();
    /// Enables exactly the radios whose values are allowed. What is checked stays checked.
    void EnableRows(const std::function<bool(int value)>& allowed);

signals:
    /// The user has chosen another value than the one shown, with the mouse or with the keys; for a
    /// value that no row has, by a click on the fallback too.
    void chosen(int value);

private:
    void OnToggled(int row, bool checked);
    void Choose(int row);
    void EnableControls();

    std::vector<Row> m_rows;
    QButtonGroup m_group;
    std::optional<int> m_value;  ///< set or chosen last; a row need not have it
    bool m_setting = false;
};

}  // namespace ta::ui
