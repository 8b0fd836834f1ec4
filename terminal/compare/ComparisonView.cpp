#include "terminal/compare/ComparisonView.h"

#include "platform/Rounding.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/compare/ComparisonModel.h"
#include "terminal/compare/ComparisonTable.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

HistoryDepth DepthOf(const ComparedHistory& history) {
    return {history.readMode, history.recordCount, history.startDate};
}

void SetDepth(ComparedHistory& history, const HistoryDepth& depth) {
    history.readMode = depth.readMode;
    history.recordCount = static_cast<std::int32_t>(depth.recordCount);
    history.startDate = static_cast<std::int32_t>(depth.startDay);
}

ComparisonSource SourceOf(const MarketData& markets, const ComparedSymbol& symbol,
                          const ComparedHistory& history) {
    ComparisonSource source;
    source.name = ui::ToQString(symbol.code) + " ???";
    if (const Symbol* known = markets.FindSymbol(symbol.market, symbol.code)) {
        source.name = ui::ToQString(NameOf(*known));
        source.priceDecimals = DecimalsOfStep(known->priceStep);
    }
    const int count = history.dataType == kMinutes ? history.minutes : 0;
    const auto all =
        markets.LoadBars({symbol.market, symbol.code, history.dataType, count}, &source.note);
    if (all) {
        source.note = ShortfallText(*all, DepthOf(history));
        source.bars = PartOf(all, DepthOf(history));
    }
    return source;
}

bool HasBars(const ComparisonSource& source) {
    return source.bars && !source.bars->empty();
}

QString NotedName(const ComparisonSource& source) {
    return source.note.isEmpty() ? source.name
                                 : Tr("IDS_TERMINAL-COMPARE_NOTE").arg(source.name, source.note);
}

/// What can be shown of a choice that may come from a damaged file.
ComparisonSet Usable(ComparisonSet set) {
    set.symbols.resize(std::min<std::size_t>(set.symbols.size(), kMostCompared));
    if (set.history.dataType < kDaily || set.history.dataType > kMinutes) {
        set.history.dataType = kDaily;
    }
    set.history.minutes = std::clamp(set.history.minutes, 1, 999);
    if (!std::isfinite(set.baseDate)) {
        set.baseDate = 0;
    }
    return set;
}

}  // namespace

ComparisonView::ComparisonView(const MarketData& markets, QWidget* parent)
    : ComparisonView(markets, std::make_shared<ComparisonModel>(), parent) {}

ComparisonView::ComparisonView(const MarketData& markets,
                               const std::shared_ptr<ComparisonModel>& model, QWidget* parent)
    : ChartPage(model, parent), m_markets(markets), m_model(model) {
    if (Language* language = Language::Instance()) {
        connect(language, &Language::changed, this, &ComparisonView::LoadAgain);
    }
    Load();
}

// ---- What is compared ----

void ComparisonView::Compare(const ComparisonSet& set) {
    m_set = Usable(set);
    Load();
    m_depths[{m_shown.period, m_shown.count}] = Depth();
    ShowAll();
    TellMissing();
    emit symbolChanged();
}

void ComparisonView::Show(const BarsKey& history, const HistoryDepth& depth) {
    m_depths[{history.period, history.count}] = depth;
    SwitchPeriod(history.period, history.count);
}

void ComparisonView::SwitchPeriod(int period, int count) {
    if (period <= kMinutes) {
        m_set.history.dataType = period;
        m_set.history.minutes = period == kMinutes ? count : m_set.history.minutes;
        m_set = Usable(m_set);
        const auto depth = m_depths.find({period, count});
        SetDepth(m_set.history, depth == m_depths.end() ? HistoryDepth() : depth->second);
        Load();
        TellMissing();
    }
    emit symbolChanged();
}

HistoryDepth ComparisonView::Depth() const {
    return DepthOf(m_set.history);
}

ChartTable ComparisonView::Table() const {
    return ComparisonTable(*m_model);
}

void ComparisonView::SetMode(ComparisonMode mode) {
    m_mode = mode;
    Recount();
}

void ComparisonView::SetBaseDate(double baseDate) {
    m_set.baseDate = baseDate;
    m_set = Usable(m_set);
    Recount();
}

void ComparisonView::TakeBaseFromCursor() {
    const int bar = LastCursorBar() >= 0 ? LastCursorBar() : VisibleBars().first;
    if (bar >= 0) {
        const double time = Model().Bars()[static_cast<std::size_t>(bar)].time;
        // A bar of midnight is a moment, not its day.
        SetBaseDate(m_shown.period == kMinutes ? std::nextafter(time, HUGE_VAL) : time);
    }
}

void ComparisonView::Reload() {
    LoadAgain();
    TellMissing();
}

void ComparisonView::LoadAgain() {
    const PlotRange before = Scene().Range();
    const PlotCursor cursor = Cursor();
    const double time = LastCursorTime();
    Load();
    if (before.BarCount() == BarCount()) {
        Scene().Range() = before;
        Draw();
    }
    PutCursorBack(cursor, time);
}

void ComparisonView::Load() {
    const ComparedHistory& history = m_set.history;
    m_shown = {0, {}, history.dataType, history.dataType == kMinutes ? history.minutes : 0};
    std::vector<ComparisonSource> sources;
    for (const ComparedSymbol& symbol : m_set.symbols) {
        sources.push_back(SourceOf(m_markets, symbol, history));
    }
    m_model->SetSources(std::move(sources), MakeTitle());
    TakeBars();
    Recount();
}

void ComparisonView::Recount() {
    m_model->SetBase(m_set.baseDate, m_mode);
    Rebuild();
    emit dataChanged();
    emit cursorMoved(CursorText());
}

// ---- What is said ----

CString ComparisonView::HistoryKey() const {
    CString key = ChartPage::HistoryKey();
    for (const ComparedSymbol& symbol : m_set.symbols) {
        key += '/' + std::to_string(symbol.market) + '/' + symbol.code;
    }
    return key;
}

QString ComparisonView::Name() const {
    QStringList codes;
    for (const ComparedSymbol& symbol : m_set.symbols) {
        codes << ui::ToQString(symbol.code);
    }
    return Tr("IDS_TERMINAL-COMPARE_TITLE").arg(codes.join(", "));
}

ChartTitle ComparisonView::MakeTitle() const {
    ChartTitle title;
    title.symbol = Name();
    title.periodCode = m_shown.period;
    const CString period = Repository().PackTADataTypeString(m_shown.period, m_shown.count);
    title.period = Tr("IDS_TERMINAL-CHART_PERIOD").arg(ui::ToQString(period));
    return title;
}

void ComparisonView::TellMissing() {
    QStringList missing;
    QStringList fewer;
    for (const ComparisonSource& source : m_model->Sources()) {
        if (!HasBars(source)) {
            missing << NotedName(source);
        } else if (!source.note.isEmpty()) {
            fewer << NotedName(source);
        }
    }
    const QString shortfall = fewer.join(", ");
    if (!missing.isEmpty()) {
        const QString text = Tr("IDS_TERMINAL-COMPARE_MISSING").arg(missing.join(", "));
        emit loadFailed(fewer.isEmpty() ? text : text + "  " + shortfall);
    } else if (!fewer.isEmpty() || m_hasTold) {
        emit historyShort(shortfall);
    }
    m_hasTold = !missing.isEmpty() || !fewer.isEmpty();
}

QString ComparisonView::Message() const {
    return BarCount() > 0 ? QString() : Tr("IDS_TERMINAL-COMPARE_NOTHING");
}

QString ComparisonView::SpokenName() const {
    return Tr("IDS_TERMINAL-CHART_ACCESSIBLE").arg(Model().Title().symbol, Model().Title().period);
}

}  // namespace ta::terminal
