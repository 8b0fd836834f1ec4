#include "terminal/frame/DataViewer.h"

#include "terminal/chart/ChartPage.h"
#include "terminal/chart/ChartTable.h"
#include "terminal/plot/PlotModel.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace ta::terminal {
namespace {

using techdata::Records;

unsigned MessageOf(const char* name) {
    return window::RegisterWindowMessageA(name);
}

unsigned CloseMessage() {
    return MessageOf("MXMSG_TERMINAL_TECHDATA_CLOSE");
}

unsigned EraseMessage() {
    return MessageOf("MXMSG_TERMINAL_TECHDATA_ERASE");
}

int DataTypeOf(const BarsKey& shown) {
    constexpr int kMonthly = 2;
    return shown.period <= kMonthly ? techdata::kDailyData : 0;
}

bool SameNumber(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// Whether `records` are the bars of `before`, perhaps with other values, and what follows them.
bool StartWith(const Records& records, const Records& before) {
    return records.size() >= before.size() &&
           std::equal(before.begin(), before.end(), records.begin(),
                      [](const auto& left, const auto& right) { return left.time == right.time; });
}

bool SameColumn(const techdata::HeaderInfo& left, const techdata::HeaderInfo& right) {
    return left.name == right.name && left.displayCode == right.displayCode;
}

}  // namespace

DataViewer& DataViewer::Of(ChartPage& chart) {
    auto* const viewer = chart.findChild<DataViewer*>({}, Qt::FindDirectChildrenOnly);
    return viewer != nullptr ? *viewer : *new DataViewer(chart);
}

DataViewer::DataViewer(ChartPage& chart) : QObject(&chart), m_chart(chart) {
    connect(&chart, &ChartPage::dataChanged, this, &DataViewer::Follow);
    connect(&chart, &ChartPage::cursorMoved, this, &DataViewer::MarkCursor);
}

DataViewer::~DataViewer() {
    delete m_window;
}

void DataViewer::Open() {
    if (m_window == nullptr) {
        MakeWindow();
    }
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void DataViewer::MakeWindow() {
    m_shown = m_chart.Shown();
    ChartTable table = m_chart.Table();
    m_headers = std::move(table.headers);
    m_records = std::move(table.records);
    m_window =
        new MXTechDataDlg(table.caption.c_str(), table.group.c_str(), DataTypeOf(m_shown),
                          m_headers, m_records, 0, CloseMessage(), EraseMessage(), m_shown.market,
                          m_shown.symbol, m_shown.period, m_shown.count, this, m_chart.window());
    connect(m_window, &MXTechDataDlg::timeActivated, this, &DataViewer::GoTo);
    m_window->Create();
    if (!m_geometry.isEmpty()) {
        m_window->restoreGeometry(m_geometry);
    }
    MarkCursor();
}

std::intptr_t DataViewer::WindowProc(unsigned message, std::uintptr_t wParam,
                                     std::intptr_t lParam) {
    if (message == CloseMessage()) {
        Close();
    } else if (message == EraseMessage()) {
        std::ranges::move(m_records, std::back_inserter(m_erased));
        m_records.clear();
    }
    return CWnd::WindowProc(message, wParam, lParam);
}

void DataViewer::Close() {
    if (m_window != nullptr) {
        m_geometry = m_window->saveGeometry();
        delete m_window;
        m_records.clear();
        m_erased.clear();
    }
}

void DataViewer::Follow() {
    if (m_window == nullptr) {
        return;
    }
    ChartTable table = m_chart.Table();
    LeaveErased(table.records);
    if (Continues(table)) {
        Amend(table.records);
    } else {
        Fill(std::move(table));
    }
    MarkCursor();  // a chart that is loaded again has no cursor line any more
}

/// Takes the erased bars out of the chart's, or forgets them when the chart has others.
void DataViewer::LeaveErased(Records& records) {
    if (m_chart.Shown() != m_shown || !StartWith(records, m_erased)) {
        m_erased.clear();
    }
    records.erase(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(m_erased.size()));
}

/// Whether they are the bars of before, with other values or new bars behind them.
bool DataViewer::Continues(const ChartTable& table) const {
    return m_chart.Shown() == m_shown && std::ranges::equal(table.headers, m_headers, SameColumn) &&
           !(m_records.empty() && m_erased.empty()) && StartWith(table.records, m_records);
}

void DataViewer::Amend(const Records& records) {
    const std::size_t before = m_records.size();
    for (std::size_t row = 0; row < before; ++row) {
        if (!std::ranges::equal(records[row].values, m_records[row].values, SameNumber)) {
            m_window->SetDataValue(row, records[row]);
        }
    }
    for (std::size_t row = before; row < records.size(); ++row) {
        m_records.push_back(records[row]);
        m_window->vInsertOneData(records[row]);
    }
}

void DataViewer::Fill(ChartTable table) {
    m_shown = m_chart.Shown();
    m_headers = std::move(table.headers);
    m_records = std::move(table.records);
    m_window->reInitializeList(table.caption.c_str(), DataTypeOf(m_shown), m_shown.period,
                               m_shown.count, m_shown.market, m_shown.symbol);
}

void DataViewer::MarkCursor() {
    const int bar = m_chart.CursorBar();
    const BarSeries& bars = m_chart.Model().Bars();
    const bool isThere = bar >= 0 && static_cast<std::size_t>(bar) < bars.size();
    if (m_window != nullptr) {
        m_window->MarkTime(isThere ? bars[static_cast<std::size_t>(bar)].time : NAN);
    }
}

void DataViewer::GoTo(double time) {
    const BarSeries& bars = m_chart.Model().Bars();
    const auto found = std::ranges::lower_bound(bars, time, {}, &Bar::time);
    if (found != bars.end()) {
        m_chart.SetCursorBar(static_cast<int>(found - bars.begin()));
    }
}

}  // namespace ta::terminal
