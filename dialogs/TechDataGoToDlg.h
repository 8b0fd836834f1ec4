#pragma once

#include "dialogs/TechDataTable.h"
#include "platform/ui/DialogBase.h"

#include <cstddef>
#include <memory>

namespace Ui {
class TechDataGoToDlg;
}

namespace ta::techdata {

/// The user chooses a date of a table. Modal; DoModal gives kIdOk, with the row of the date in Row,
/// or kIdCancel. A date outside of the table is told, and the dialog stays.
class TechDataGoToDlg : public ui::DialogBase {
    Q_OBJECT

public:
    /// `table` outlives this and has rows, or rows to come. The date of row `current` is the first
    /// one shown; that of the last row without one, as with -1.
    TechDataGoToDlg(const TechDataTable& table, int current, QWidget* parent);
    ~TechDataGoToDlg() override;

    /// After kIdOk; a row that may still have to come.
    std::size_t Row() const { return m_row; }

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    QString RangeText() const;

    const TechDataTable& m_table;
    int m_current;
    std::size_t m_row = 0;
    std::unique_ptr<Ui::TechDataGoToDlg> m_ui;
};

}  // namespace ta::techdata
