#include "terminal/frame/TabMenu.h"

#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Commands.h"

#include <QTabBar>

namespace ta::terminal {

void AddTabMenu(ChartTabs& tabs, const Commands& commands) {
    QTabBar* bar = tabs.tabBar();
    auto* menu = new QMenu(bar);
    menu->setObjectName("tabMenu");
    for (const Command command : {Command::ChooseLayout, Command::NewTab, Command::CloseTab}) {
        menu->addAction(&commands.At(command));
    }
    bar->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(bar, &QWidget::customContextMenuRequested, menu,
                     [&tabs, bar, menu](const QPoint& position) {
                         const int tab = bar->tabAt(position);
                         if (tab >= 0) {  // not for the menu key
                             tabs.setCurrentIndex(tab);
                         }
                         menu->popup(bar->mapToGlobal(position));
                     });
}

}  // namespace ta::terminal
