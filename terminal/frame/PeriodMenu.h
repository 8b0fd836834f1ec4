#pragma once

#include "terminal/frame/Periods.h"

#include <QMenu>

namespace ta::terminal {

/// The menu of the data periods, in step with the chart in front.
class PeriodMenu : public QObject {
    Q_OBJECT

public:
    /// Fills `menu`, which lives as long as this.
    explicit PeriodMenu(QMenu& menu, QObject* parent = nullptr);

    /// Periods that are not `available` are greyed. `current` -1: none.
    void Show(const PeriodSet& available, int current);
    void Retranslate();

signals:
    /// Position in kPeriods.
    void chosen(int index);

private:
    std::array<QAction*, kPeriods.size()> m_actions{};
};

}  // namespace ta::terminal
