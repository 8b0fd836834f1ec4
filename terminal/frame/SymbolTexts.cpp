#include "terminal/frame/SymbolTexts.h"

#include "platform/ui/TextBridge.h"
#include "terminal/quotes/MarketData.h"

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr std::size_t kMostHits = 30;

QString MarketName(const MarketData& markets, std::uint8_t id) {
    const auto found = std::ranges::find(markets.Markets(), id, &Market::id);
    return found == markets.Markets().end() ? QString() : ui::ToQString(NameOf(*found));
}

}  // namespace

std::vector<SymbolHit> FindHits(const MarketData& markets, const QString& text) {
    std::vector<SymbolHit> hits;
    for (const Symbol* symbol : markets.Search(ui::FromQString(text), kMostHits)) {
        hits.push_back(
            {symbol->market, symbol->id,
             QString("%1  (%2)")
                 .arg(ui::ToQString(TitleOf(*symbol)), MarketName(markets, symbol->market))});
    }
    return hits;
}

}  // namespace ta::terminal
