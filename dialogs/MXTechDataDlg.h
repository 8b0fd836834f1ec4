#pragma once

#include "dialogs/TechData.h"
#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/ModelessDialog.h"

#include <QPointer>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

class QAction;
class QMenu;
class QTableView;

namespace Ui {
class MXTechDataDlg;
}

namespace ta {
struct ExportProfile;
}
namespace ta::techdata {
class TechDataModel;
struct RowRange;
struct TextForm;
}  // namespace ta::techdata

/// The numbers behind a chart: a table with one row a bar and one column a value. Modeless; rows
/// come in by batches from a timer, over the owner's vectors, of which nothing is copied.
///
/// The vectors stay the owner's and live as long as the window, or until SetHeaderList and
/// SetDataList name others. He may change them at any time between two events; rows that he takes
/// away show empty cells, and new headers show after reInitializeList. Messages are posted to him:
/// none of his functions is called from within the window's.
class TADIALOGS_EXPORT MXTechDataDlg : public ta::ui::ModelessDialog {
    Q_OBJECT

public:
    using HeaderInfo = ta::techdata::HeaderInfo;

    // The template ids of the controls; the close button is kIdCancel.
    static constexpr int kIdList = 1001;
    static constexpr int kIdCopy = 1002;
    static constexpr int kIdSaveCsv = 1003;
    static constexpr int kIdExport = 1004;
    /// The timer that fills the list.
    static constexpr int kFillTimer = 10003;

    /// `title` and `secondName` are in the user's code page; null is empty. `dataType` 1: bars of a
    /// day or longer, without a time of day. Of the messages, the second is posted when the user
    /// closes the window, the third when he has erased the rows; the first is the owner's. The two
    /// parameters are his too, handed back by GetTADataParam and GetTADataType. `owner` may be
    /// null: nobody is told. `parent` as for every dialog.
    MXTechDataDlg(const char* title, const char* secondName, int dataType,
                  std::vector<HeaderInfo>& headers, std::vector<OneRecord>& records,
                  unsigned ownerMessage, unsigned closeMessage, unsigned eraseMessage,
                  unsigned char market, const CString& symbol, int dataParam, int dataTypeParam,
                  CWnd* owner, QWidget* parent = nullptr);
    ~MXTechDataDlg() override;

    void GetSymbolInfo(unsigned char& market, CString& symbol) const;
    int GetTADataParam() const { return m_dataParam; }
    int GetTADataType() const { return m_dataTypeParam; }
    const CString& GetSecondName() const { return m_secondName; }
    unsigned GetOwnerMessage() const { return m_ownerMessage; }
    /// The owner's note whether the window is to be seen; it shows and hides nothing.
    bool bIsShow() const { return m_isShow; }
    void vSetIsShow(bool isShow) { m_isShow = isShow; }
    /// 0: columns fit headings and data, 1: the data alone.
    int GetColumnWidthMode() const { return m_widthMode; }

    /// Empties the table, gives it the columns of the headers as they are now and fills it again,
    /// a batch a second. The width mode stays; the exports wait for the end of the fill.
    void reInitializeList(const char* title, int dataType, int dataParam, int dataTypeParam);
    /// The same for another symbol.
    void reInitializeList(const char* title, int dataType, int dataParam, int dataTypeParam,
                          unsigned char market, const CString& symbol);
    /// The table stands over another vector from now on; its rows and columns stay until
    /// reInitializeList.
    void SetHeaderList(std::vector<HeaderInfo>& headers);
    void SetDataList(std::vector<OneRecord>& records);

    /// Puts a record into the owner's vector, and shows it where the table has the row. false, and
    /// nothing changes, for a row beyond the vector or a record that does not fit the headers.
    bool SetDataValue(std::size_t row, const OneRecord& record);
    /// Shows a new last row and selects it, whether or not the owner has appended it to his vector;
    /// while the table is filling, at the end of the fill. Appended ones are to be inserted one by
    /// one, in their order. An owner who drops records for the new ones has as many rows as before,
    /// each with the record that he has there now.
    void vInsertOneData(const OneRecord& record);

    /// One batch: the larger of 300 rows and a page. Columns are fitted when a tenth of the rows is
    /// in. When the table is as long as the vector, or longer, the timer stops, the exports are
    /// enabled, the table has the focus, its last row in view, and columns are fitted again.
    void ShowData();
    /// Fits the columns to the widest texts that have come in, and to headings in mode 0.
    void TuneColWidth();

    /// Takes all rows away and posts the erase message; ends the fill. The owner's vector is his.
    void OnEraseAll();
    /// Width mode 0, and everything is filled again.
    void OnSetColumn();
    /// Width mode 1, at once.
    void OnSetColumnByDataOnly();
    /// Title, headings and rows as text with TABs to the clipboard; a message when it is done.
    void OnCopy2clipboard();
    /// Asks for a file and writes the table as it is shown, separated by commas; messages tell what
    /// came of it. The file is named for the symbol, without one for the title. An existing file is
    /// replaced unasked, as a whole or not at all.
    void OnCopy2csv();
    /// Opens the export profiles and writes the file.
    void OnExport();
    /// The selected rows to the clipboard; nothing when none is selected.
    void OnCopyRows(bool withHeadings);
    /// Asks for a date; selects and shows its first row, or the last one before it, and lets
    /// timeActivated follow. A row that is still to come is shown when the fill brings it, and
    /// stays in view at its end.
    void OnGoToDate();

    /// Marks the row of a time and brings it into view; no row when the table has none of it, until
    /// the fill brings it. NaN: none at all. The records are in the order of their times.
    void MarkTime(double time);

    /// The time of day of a fraction of a day: "13:05", "13:05:07". One buffer, which the next call
    /// overwrites.
    static const char* timeToString(double fraction);

signals:
    /// The user has double-clicked a row, or pressed Enter on it, or gone to a date. It comes from
    /// the event loop, as the messages do: the owner may delete the window.
    void timeActivated(double time);

protected:
    bool OnInitDialog() override;
    void vLoadLanguageString() override;
    /// Posts the close message: 0 when the title says that data are viewed, else 1. The window
    /// stays until the owner takes it away.
    void OnCancel() override;
    void OnTimer(int id) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void MakeActions();
    void AddEntry(const char* key, const QKeySequence& shortcut,
                  const std::function<void()>& operation);
    void SetTitle(const char* title);
    void FillBatch();
    void EndFill();
    void EnableExports(bool enabled);
    void SelectRow(int row);
    void GoToRow(std::size_t row);
    /// Marks the row of the time that MarkTime got last; the row, or -1.
    int MarkRow();
    void ActivateRow();
    void PostActivated(double time);
    int ContentsWidth(int column) const;
    std::vector<ta::techdata::RowRange> SelectedRows() const;
    std::vector<ta::techdata::RowRange> AllRows() const;
    bool CopyRows(const ta::techdata::TextForm& form,
                  const std::vector<ta::techdata::RowRange>& rows);
    void AskProfileAndSave();
    /// `rows` are those that the user has decided on, of that `generation`; none: all there are.
    void AskPathAndSave(const ta::ExportProfile& profile,
                        const std::vector<ta::techdata::RowRange>& rows, unsigned generation);
    bool Save(const QString& path, const ta::ExportProfile& profile,
              const std::vector<ta::techdata::RowRange>& rows);

    CString m_title;
    bool m_isViewData = false;  ///< the title began so in the language in which it was made
    CString m_secondName;
    int m_dataType;
    unsigned m_ownerMessage;
    unsigned m_closeMessage;
    unsigned m_eraseMessage;
    unsigned char m_market;
    CString m_symbol;
    int m_dataParam;
    int m_dataTypeParam;
    bool m_isShow = true;
    int m_widthMode = 0;
    double m_markedTime = std::numeric_limits<double>::quiet_NaN();
    bool m_selectAtEnd = false;           ///< a row was inserted while the table was filling
    std::optional<std::size_t> m_goneTo;  ///< the row that the user has gone to during the fill
    ta::techdata::TechDataModel* m_model;
    std::unique_ptr<Ui::MXTechDataDlg> m_ui;
    QPointer<QTableView> m_list;
    QMenu* m_menu;
    struct MenuEntry {
        QAction* action;
        const char* key;
    };
    std::vector<MenuEntry> m_entries;
};
