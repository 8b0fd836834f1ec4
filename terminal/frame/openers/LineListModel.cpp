#include "terminal/frame/openers/LineListModel.h"

#include "platform/Rounding.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/frame/Periods.h"
#include "terminal/frame/SymbolTexts.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/LinePens.h"
#include "terminal/plot/PlotNumbers.h"
#include "terminal/plot/TimeAxis.h"
#include "terminal/quotes/MarketData.h"

#include <QGuiApplication>

#include <algorithm>
#include <set>

namespace ta::terminal {
namespace {

constexpr const char* kHeads[LineListModel::kColumnCount] = {
    "IDS_TERMINAL-FRAME_LINES_SYMBOL", "IDS_TERMINAL-FRAME_LINES_PERIOD",
    "IDS_TERMINAL-FRAME_LINES_KIND",   "IDS_TERMINAL-FRAME_LINES_PLACE",
    "IDS_TERMINAL-FRAME_LINES_LOCK",   "IDS_TERMINAL-FRAME_LINES_DATE"};

LineListModel::Row MakeRow(const ListedTrendLine& line) {
    LineListModel::Row row{line, DecodeTrendLine(line.data)};
    CString name;
    if (Repository().DecodeTrendLineData(line.data, row.kind, name, row.locked) == 0) {
        row.kind = 0;
    }
    return row;
}

}  // namespace

LineListModel::LineListModel(const MarketData& markets, QObject* parent)
    : QAbstractTableModel(parent), m_markets(markets) {}

void LineListModel::Fill() {
    beginResetModel();
    m_rows.clear();
    for (const ListedTrendLine& line : ListTrendLines()) {
        m_rows.push_back(MakeRow(line));
    }
    endResetModel();
}

int LineListModel::RowOf(const ListedTrendLine& line) const {
    const auto found = std::ranges::find(m_rows, line, &Row::line);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

int LineListModel::SymbolCount() const {
    std::set<std::pair<unsigned char, CString>> symbols;
    for (const Row& row : m_rows) {
        symbols.emplace(row.line.chart.market, row.line.chart.symbol);
    }
    return static_cast<int>(symbols.size());
}

int LineListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int LineListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumnCount;
}

QVariant LineListModel::data(const QModelIndex& index, int role) const {
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
        return Text(row, index.column());
    }
    if (role == Qt::DecorationRole && index.column() == kKind && row.drawn) {
        return LinePenIcon(row.drawn->pen, QGuiApplication::palette());
    }
    return {};
}

QVariant LineListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? Tr(kHeads[section])
                                                                    : QVariant();
}

QString LineListModel::Text(const Row& row, int column) const {
    const BarsKey& chart = row.line.chart;
    switch (column) {
        case kSymbol:
            return SymbolText(chart);
        case kPeriod:
            return PeriodText(chart.period, chart.count);
        case kKind:
            return row.kind > 0 ? TrendLineKindName(row.kind)
                                : Tr("IDS_TERMINAL-FRAME_LINES_UNREADABLE");
        case kPlace:
            return PlaceText(row);
        case kLock:
            return row.locked ? Tr("IDS_TERMINAL-FRAME_LINES_LOCKED") : QString();
        case kDate:
            return ui::ToQString(row.line.date).replace('-', '/');  // as the other dates
        default:
            return {};
    }
}

QString LineListModel::SymbolText(const BarsKey& chart) const {
    const Symbol* known = m_markets.FindSymbol(chart.market, chart.symbol);
    return ui::ToQString(known ? TitleOf(*known) : chart.symbol);
}

/// Dates and prices of the ends; of a horizontal line the price.
QString LineListModel::PlaceText(const Row& row) const {
    if (!row.drawn) {
        return {};
    }
    const BarsKey& chart = row.line.chart;
    const Symbol* symbol = m_markets.FindSymbol(chart.market, chart.symbol);
    const int decimals = symbol ? DecimalsOfStep(symbol->priceStep) : 2;
    const std::vector<LineAnchor>& anchors = row.drawn->anchors;
    const auto price = [&](const LineAnchor& anchor) {
        return NumberText(anchor.price, NumberKind::Price, decimals);
    };
    const auto end = [&](const LineAnchor& anchor) {
        return TimeText(anchor.time, chart.period) + "  " + price(anchor);
    };
    return anchors.size() == 1 ? price(anchors[0])
                               : end(anchors[0]) + QString::fromUtf8("  →  ") + end(anchors[1]);
}

}  // namespace ta::terminal
