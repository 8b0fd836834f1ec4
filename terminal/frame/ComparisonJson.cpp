#include "terminal/frame/ComparisonJson.h"

#include "platform/ui/TextBridge.h"

namespace ta::terminal {
QJsonArray ToJson(const std::vector<ComparedSymbol>& symbols) {
    QJsonArray json;
    for (const ComparedSymbol& symbol : symbols) {
        json.append(QJsonObject{{"market", symbol.market}, {"code", ui::ToQString(symbol.code)}});
    }
    return json;
}

std::vector<ComparedSymbol> SymbolsFromJson(const QJsonArray& json) {
    std::vector<ComparedSymbol> symbols;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const int market = json[i]["market"].toInt(-1);
        const CString code = ui::FromQString(json[i]["code"].toString());
        if (market >= 0 && market <= 255 && !code.empty()) {
            symbols.push_back({static_cast<std::uint8_t>(market), code});
        }
    }
    return symbols;
}

QJsonObject ToJson(const ComparisonSet& set) {
    const ComparedHistory& history = set.history;
    return {{"symbols", ToJson(set.symbols)},
            {"dataType", history.dataType},
            {"minutes", history.minutes},
            {"readMode", history.readMode},
            {"recordCount", history.recordCount},
            {"startDate", history.startDate},
            {"flag", history.flag},
            {"baseDate", set.baseDate}};
}

ComparisonSet SetFromJson(const QJsonObject& json) {
    const ComparedHistory known;
    ComparisonSet set;
    set.symbols = SymbolsFromJson(json["symbols"].toArray());
    set.history.dataType = json["dataType"].toInt(known.dataType);
    set.history.minutes = json["minutes"].toInt(known.minutes);
    set.history.readMode = json["readMode"].toInt(known.readMode);
    set.history.recordCount = json["recordCount"].toInt(known.recordCount);
    set.history.startDate = json["startDate"].toInt(known.startDate);
    set.history.flag = static_cast<std::uint8_t>(json["flag"].toInt(known.flag));
    set.baseDate = json["baseDate"].toDouble();
    return set;
}

}  // namespace ta::terminal
