#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>
#include <vector>

namespace Ui {
class MXExportTAParameter;
}

/// Asks for which of some studies parameters shall be exported. Modal; after DoModal gave kIdOk the
/// caller takes the names with vGetCheckBoxStatus. Nothing is stored.
class TADIALOGS_EXPORT MXExportTAParameter : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// A row is a study: its Chinese name, then its English name, in the code page; what a row has
    /// behind them is not shown. The rows are copied.
    explicit MXExportTAParameter(const std::vector<std::vector<CString>>& rows,
                                 QWidget* parent = nullptr);
    ~MXExportTAParameter() override;

    /// Replaces `names` by the first string of each row that was checked at OK, in the order of the
    /// list. None before OK and after Cancel.
    void vGetCheckBoxStatus(std::vector<CString>& names) const;

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void vFillItem();
    int NameWidth(int column) const;
    void vGetCheckedName();
    bool AreAllChecked() const;
    void OnSelectAll();
    void ShowWhatSelectDoes();

    std::vector<std::vector<CString>> m_rows;
    std::vector<CString> m_checkedNames;
    std::unique_ptr<Ui::MXExportTAParameter> m_ui;
};
