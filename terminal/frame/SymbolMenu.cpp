#include "terminal/frame/SymbolMenu.h"

#include "platform/ui/LangText.h"
#include "platform/ui/TextBridge.h"
#include "terminal/quotes/MarketData.h"

namespace ta::terminal {
namespace {

template <class Named>
QMenu& AddMenu(QMenu& menu, const Named& named) {
    return *menu.addMenu(ui::WithBareAmpersands(ui::ToQString(NameOf(named))));
}

}  // namespace

SymbolMenu::SymbolMenu(QMenu& menu, const MarketData& markets, QObject* parent)
    : QObject(parent), m_menu(menu), m_markets(markets) {
    connect(&m_menu, &QMenu::aboutToShow, this, &SymbolMenu::Fill);
}

void SymbolMenu::Fill() {
    m_menu.clear();
    for (const Market& market : m_markets.Markets()) {
        QMenu& ofMarket = AddMenu(m_menu, market);
        const std::vector<const Commodity*> commodities = m_markets.CommoditiesOf(market.id);
        for (const Commodity* commodity : commodities) {
            AddSymbols(AddMenu(ofMarket, *commodity),
                       m_markets.SymbolsOf(market.id, commodity->id));
        }
        if (commodities.empty()) {
            AddSymbols(ofMarket, m_markets.SymbolsOf(market.id));
        }
        ofMarket.setEnabled(!ofMarket.isEmpty());
    }
}

void SymbolMenu::AddSymbols(QMenu& menu, const std::vector<const Symbol*>& symbols) {
    for (const Symbol* symbol : symbols) {
        QAction* action = menu.addAction(ui::WithBareAmpersands(ui::ToQString(TitleOf(*symbol))));
        connect(action, &QAction::triggered, this,
                [this, market = symbol->market, id = symbol->id] { emit chosen(market, id); });
    }
}

}  // namespace ta::terminal
