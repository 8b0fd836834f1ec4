#include "terminal/frame/PeriodMenu.h"

#include "terminal/lang/Language.h"

#include <QActionGroup>

namespace ta::terminal {

PeriodMenu::PeriodMenu(QMenu& menu, QObject* parent) : QObject(parent) {
    auto* exclusive = new QActionGroup(this);
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_actions[i] = menu.addAction(QString());
        m_actions[i]->setShortcut(QKeySequence(kPeriods[i].shortcut));
        m_actions[i]->setCheckable(true);
        exclusive->addAction(m_actions[i]);
        connect(m_actions[i], &QAction::triggered, this,
                [this, index = static_cast<int>(i)] { emit chosen(index); });
    }
}

void PeriodMenu::Show(const PeriodSet& available, int current) {
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_actions[i]->setEnabled(available[i]);
        m_actions[i]->setChecked(static_cast<int>(i) == current);
    }
}

void PeriodMenu::Retranslate() {
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_actions[i]->setText(Tr(kPeriods[i].textKey));
    }
}

}  // namespace ta::terminal
