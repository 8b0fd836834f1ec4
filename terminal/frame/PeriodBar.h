#pragma once

#include "terminal/frame/Periods.h"

#include <QList>
#include <QToolBar>

class MXSetHistDataBanner;

namespace ta::terminal {

class ChartPage;

/// The bar over the chart that switches its data period. Setting what is shown emits nothing.
class PeriodBar : public QToolBar {
    Q_OBJECT

public:
    explicit PeriodBar(QWidget* parent = nullptr);

    /// Shows the chart's data period and what its symbol has; of a chart that is not of one symbol
    /// `available`.
    void Show(const ChartPage& chart, const PeriodSet& available);
    /// Bar lengths that the user keeps at the top of the box.
    QList<int> Favourites() const;
    void SetFavourites(const QList<int>& favourites);
    void Retranslate();

signals:
    /// A period code and, for minutes and seconds, how many.
    void periodChosen(int period, int count);

private:
    MXSetHistDataBanner* m_banner;
};

}  // namespace ta::terminal
