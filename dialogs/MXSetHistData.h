#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <QDate>

#include <cstdint>
#include <memory>

namespace Ui {
class MXSetHistData;
}

/// The data period of a chart and how much history it loads. Modal: construct it with the chart's
/// values, run DoModal, and after kIdOk read them back; after kIdCancel they mean nothing.
class TADIALOGS_EXPORT MXSetHistData : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// Offers the periods that the symbol has; `market` 0 or an empty `symbol`: all of them.
    /// `dataType`: 0 daily, 1 weekly, 2 monthly, 3 minutes; a period that the symbol lacks gives
    /// way to the first one it has, any other number comes back as it is while the user chooses
    /// none. `minutes`: of a bar, for type 3. `readMode`: 0 the last `recordCount` records, 1
    /// everything since `startDate`, in days since 1970-01-01. Impossible values are repaired:
    /// minutes below 1 become 5, a count below 1 becomes 1440, a start date below 1 becomes 1, a
    /// mode but 0 and 1 becomes 1. `flag` comes back unchanged. `parent` may be null.
    MXSetHistData(std::uint8_t market, const CString& symbol, int dataType, int minutes,
                  int readMode, long recordCount, long startDate, bool flag,
                  QWidget* parent = nullptr);
    ~MXSetHistData() override;

    int GetDataType() const { return m_dataType; }
    /// 1 to 999 when the user had a say in it, else as given.
    int GetMinutes() const { return m_minutes; }
    int GetReadMode() const { return m_readMode; }
    /// 50 to 4000 in read mode 0; else what stands in the edit, 0 for nothing.
    long GetRecordCount() const { return m_recordCount; }
    /// Days since 1970-01-01; as given when the picker's year is outside 1970 to 2069.
    long GetStartDate() const { return m_startDate; }
    bool GetFlag() const { return m_flag; }

    /// What history there is of a symbol, and whether its prices can be adjusted for dividends. For
    /// market 0 or an empty symbol every period, and no dividends; nothing at all when memory is
    /// short. Needs no dialog.
    static void vCheckSymbolAllowTA(std::uint8_t market, const CString& symbol, bool& allowDaily,
                                    bool& allowWeekly, bool& allowMonthly, bool& allowMinute,
                                    bool& allowSecond, bool& supportDividend);

    /// Takes a start date that was chosen in the picker. False when it is before 1970-01-02, after
    /// today, or within the last 30 days: the user is told, and the controls return to what was
    /// taken last, the picker to its date. An invalid date is not compared.
    bool bChangeDate(const QDate& date);

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;

private:
    void vSetDataType(int dataType, int minutes);
    void vSetFirstAllowTA();
    void OnDataType(int dataType);
    void OnReadMode(int readMode);
    void OnSelchangeComboMinutes();
    void OnKillfocusComboMinutes();
    void OnDateTimeChange();
    /// Takes what stands in the controls; false when their date is refused.
    bool TakeControls();
    void ReadControls();
    void ShowFields();
    /// False, and the user is told, when the count had to be changed.
    bool LimitCount();

    struct TADIALOGS_HIDDEN Parts;

    int m_dataType;
    int m_minutes;
    int m_readMode;
    long m_startDate;
    bool m_flag;
    long m_recordCount = 0;
    QDate m_start;  ///< the last date that was taken
    std::unique_ptr<Parts> m_parts;
    std::unique_ptr<Ui::MXSetHistData> m_ui;
};
