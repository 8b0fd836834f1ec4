#pragma once

#include "dialogs/MXTechDataDlg.h"
#include "platform/TaData.h"
#include "platform/Window.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>

namespace ta::terminal {

class ChartPage;
struct ChartTable;

/// The data viewer of one chart window, a comparison too, and the owner of its vectors: follows the
/// chart's symbol, period, group and bars, marks the row of the bar under the cursor line, and
/// brings the chart to the bar of a row. Rows that the user erases stay away until the window is
/// opened again or the chart shows other bars. Belongs to the chart and goes with it.
class DataViewer : public QObject, public CWnd {
    Q_OBJECT

public:
    /// The viewer of a chart, made by the first call.
    static DataViewer& Of(ChartPage& chart);
    ~DataViewer() override;

    /// Shows the window where it was last, or brings it to the front.
    void Open();
    /// Null when it is closed.
    MXTechDataDlg* Window() const { return m_window; }

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

private:
    explicit DataViewer(ChartPage& chart);
    void MakeWindow();
    void Close();
    void Follow();
    void Fill(ChartTable table);
    void Amend(const techdata::Records& records);
    bool Continues(const ChartTable& table) const;
    void LeaveErased(techdata::Records& records);
    void MarkCursor();
    void GoTo(double time);

    ChartPage& m_chart;
    BarsKey m_shown;
    techdata::Headers m_headers;
    techdata::Records m_records;
    techdata::Records m_erased;  ///< the first bars of the chart, which the user has erased
    QByteArray m_geometry;
    QPointer<MXTechDataDlg> m_window;
};

}  // namespace ta::terminal
