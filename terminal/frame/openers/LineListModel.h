#pragma once

#include "terminal/lines/TrendLineStore.h"

#include <QAbstractTableModel>

#include <optional>
#include <vector>

namespace ta::terminal {

class MarketData;

/// The user's lines on every chart as rows, in the language in use.
class LineListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { kSymbol, kPeriod, kKind, kPlace, kLock, kDate, kColumnCount };

    struct Row {
        ListedTrendLine line;
        std::optional<TrendLine> drawn;  ///< nothing when the terminal does not draw it
        int kind = 0;                    ///< the kind's number; 0: not readable
        bool locked = false;
    };

    /// `markets` knows the names; it stays the caller's.
    LineListModel(const MarketData& markets, QObject* parent);

    /// Reads the lines again.
    void Fill();
    const std::vector<Row>& Rows() const { return m_rows; }
    /// -1: it is not there.
    int RowOf(const ListedTrendLine& line) const;
    int SymbolCount() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Text(const Row& row, int column) const;
    QString SymbolText(const BarsKey& chart) const;
    QString PlaceText(const Row& row) const;

    const MarketData& m_markets;
    std::vector<Row> m_rows;
};

}  // namespace ta::terminal
