// The compare dialog's tree with a hundred thousand symbols, beside the toolkit's own tree; the
// comparison chart beside plain graphs of the plotter.

#include "bench/SideBySide.h"
#include "dialogs/MXChangeSymbols.h"
#include "dialogs/SymbolTreeModel.h"
#include "platform/Text.h"
#include "platform/ui/TextBridge.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/compare/ComparisonModel.h"
#include "tests/support/MemoryQuotes.h"

#include <QApplication>
#include <QLineEdit>
#include <QTreeView>
#include <QTreeWidget>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <malloc.h>

#include <cmath>

namespace {

using ta::dialogs::SymbolTreeModel;

constexpr int kMarkets = 10;
constexpr int kSymbols = 100'000;

/// Ten markets of ten thousand symbols, and the first one with all of them when `together`.
ta::test::MemoryQuotes MakeQuotes(bool together = false) {
    ta::test::MemoryQuotes quotes;
    const CString name = ta::text::FromUtf8("模擬股票");
    for (int market = 0; market < kMarkets; ++market) {
        const auto id = static_cast<std::uint8_t>(20 + market);
        quotes.markets.emplace_back(id, fmt::format("Market {}", market));
        quotes.dailyItems[{id, ""}] = {1};
        auto& listing = quotes.symbols[{id, ""}];
        const int count = together ? (market == 0 ? kSymbols : 0) : kSymbols / kMarkets;
        for (int i = 0; i < count; ++i) {
            const int number = 100'000 + market * count + i;
            listing.ids.push_back(fmt::format("S{}", number));
            listing.names.push_back(fmt::format("{}{}", name, number));
        }
    }
    return quotes;
}

/// Hands its lists over, once each, so that what a back-end needs to make them is not measured.
class GivingQuotes : public ta::test::MemoryQuotes {
public:
    explicit GivingQuotes(ta::test::MemoryQuotes quotes) : MemoryQuotes(std::move(quotes)) {}

    bool bGetSymbolItemID(Texts& ids, Texts& names, std::uint8_t market,
                          const CString& commodity) const override {
        auto& listing = m_given[{market, commodity}];
        ids = std::move(listing.ids);
        names = std::move(listing.names);
        return !ids.empty();
    }
    void Refill() { m_given = symbols; }

private:
    mutable std::map<Code, Listing> m_given;
};

/// The same rows in the toolkit's tree.
void Fill(QTreeWidget& tree, const BKQuoteInterface& quotes) {
    std::vector<std::uint8_t> markets;
    BKQuoteInterface::Texts names;
    quotes.bGetQuoteServiceID(markets, names);
    for (std::size_t i = 0; i < markets.size(); ++i) {
        auto* top = new QTreeWidgetItem(&tree, {ta::ui::ToQString(names[i])});
        BKQuoteInterface::Texts ids;
        BKQuoteInterface::Texts symbolNames;
        quotes.bGetSymbolItemID(ids, symbolNames, markets[i], "");
        QList<QTreeWidgetItem*> leaves;
        for (std::size_t leaf = 0; leaf < ids.size(); ++leaf) {
            leaves.append(new QTreeWidgetItem(
                {ta::ui::ToQString(ids[leaf] + ' ' + symbolNames[leaf])}, markets[i]));
        }
        top->addChildren(leaves);
    }
}

std::size_t HeapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void FillTree(benchmark::State& state) {
    GivingQuotes quotes(MakeQuotes());
    GivingQuotes peerQuotes(MakeQuotes());
    std::unique_ptr<SymbolTreeModel> model;
    std::unique_ptr<QTreeWidget> peer;
    const auto fill = [&] {
        model = std::make_unique<SymbolTreeModel>();
        model->SetTree(ta::compare::SymbolTree(quotes));
    };
    const auto fillPeer = [&] {
        peer = std::make_unique<QTreeWidget>();
        Fill(*peer, peerQuotes);
    };
    const auto prepare = [&] {
        model.reset();
        peer.reset();
        quotes.Refill();
        peerQuotes.Refill();
    };
    ta::bench::RunSideBySide(state, prepare, fill, fillPeer);
    prepare();
    const std::size_t before = HeapBytes();
    fill();
    quotes.Refill();  // as much as was handed over
    const std::size_t between = HeapBytes();
    fillPeer();
    peerQuotes.Refill();
    state.counters["ours_KiB"] = static_cast<double>(between - before) / 1024;
    state.counters["peer_KiB"] = static_cast<double>(HeapBytes() - between) / 1024;
}
BENCHMARK(FillTree)->Iterations(20)->Unit(benchmark::kMillisecond);

void ExpandAndCollapse(QTreeView& view) {
    view.expandAll();
    QApplication::processEvents();
    view.collapseAll();
    QApplication::processEvents();
}

void ExpandEverything(benchmark::State& state) {
    const ta::test::MemoryQuotes quotes = MakeQuotes();
    SymbolTreeModel model;
    model.SetTree(ta::compare::SymbolTree(quotes));
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setModel(&model);
    QTreeWidget peer;
    peer.setUniformRowHeights(true);
    Fill(peer, quotes);
    view.show();
    peer.show();
    ta::bench::RunSideBySide(
        state, [&] { ExpandAndCollapse(view); }, [&] { ExpandAndCollapse(peer); });
}
BENCHMARK(ExpandEverything)->Iterations(10)->Unit(benchmark::kMillisecond);

int CountBeginning(const QTreeWidget& tree, const QString& typed) {
    int found = 0;
    for (QTreeWidgetItemIterator item(const_cast<QTreeWidget*>(&tree)); *item != nullptr; ++item) {
        found += (*item)->text(0).toUpper().startsWith(typed) ? 1 : 0;
    }
    return found;
}

/// One key in the dialog's search box, until the tree is painted, beside upper-casing the texts of
/// all items. Argument: 0 a text that no symbol begins with, 1 one that only the last one does, in
/// a market of all the symbols.
void TypeOneKey(benchmark::State& state) {
    ta::test::MemoryQuotes quotes = MakeQuotes(state.range(0) == 1);
    BKQuoteInterface::SetBKInterface(&quotes);
    MXChangeSymbols dialog({}, 10, {}, 0, 0);
    dialog.show();
    QApplication::processEvents();
    auto& edit = *dialog.findChild<QLineEdit*>("searchEdit");
    QTreeWidget peer;
    Fill(peer, quotes);
    const QString last = state.range(0) == 1 ? "S199999" : "S19999X";
    const auto prepare = [&] {
        edit.clear();
        QApplication::processEvents();
    };
    double worst = 0;
    const auto type = [&] {
        const auto start = std::chrono::steady_clock::now();
        edit.setText(last);
        QApplication::processEvents();
        worst = std::max(worst, std::chrono::duration<double, std::milli>(
                                    std::chrono::steady_clock::now() - start)
                                    .count());
    };
    ta::bench::RunSideBySide(state, prepare, type,
                             [&] { benchmark::DoNotOptimize(CountBeginning(peer, last)); });
    state.counters["worst_ms"] = worst;
    BKQuoteInterface::SetBKInterface(nullptr);
}
BENCHMARK(TypeOneKey)->Arg(0)->Arg(1)->Iterations(50)->Unit(benchmark::kMillisecond);

// ---- The chart ----

constexpr int kLines = ta::terminal::kMostCompared;
constexpr int kBars = 5000;
constexpr QSize kPlotSize(1280, 800);

/// Symbols of different markets: each leaves out other days than the others.
std::vector<ta::terminal::ComparisonSource> MakeSources() {
    std::vector<ta::terminal::ComparisonSource> sources;
    for (int line = 0; line < kLines; ++line) {
        auto bars = std::make_shared<BarSeries>();
        double close = 100;
        for (int day = 10000; static_cast<int>(bars->size()) < kBars; ++day) {
            close += std::sin(day * (0.01 + 0.003 * line)) + 0.02;
            if (day % (7 + line) != 0) {
                bars->push_back({static_cast<double>(day), close, close, close, close, 1});
            }
        }
        sources.push_back({QString("Symbol %1").arg(line), 2, bars});
    }
    return sources;
}

/// Aligning the symbols, counting from the base and painting, beside as many graphs of the plotter
/// with the same pens over bars that stand ready.
void PaintComparison(benchmark::State& state) {
    const auto sources = MakeSources();
    const auto theme = ta::terminal::PlotTheme::FromPalette(QApplication::palette(), true);
    ta::terminal::ComparisonModel model;
    QCustomPlot plot;
    plot.setViewport({{}, kPlotSize});
    ta::terminal::ChartScene scene(plot, model);
    const auto ours = [&] {
        model.SetSources(sources, {});
        model.SetBase(0, ta::terminal::ComparisonMode::Percent);
        scene.Range().SetBarCount(model.BarCount());
        scene.Range().ShowAll();
        scene.Rebuild(theme, QApplication::font());
        scene.Update();
    };
    QCustomPlot peerPlot;
    peerPlot.setViewport({{}, kPlotSize});
    const auto peer = [&] {
        peerPlot.clearGraphs();
        for (std::size_t line = 0; line < sources.size(); ++line) {
            QVector<QCPGraphData> data;
            data.reserve(kBars);
            for (const Bar& bar : *sources[line].bars) {
                data.append(QCPGraphData(bar.time, bar.close));
            }
            QCPGraph* graph = peerPlot.addGraph();
            graph->setPen(QPen(theme.Readable(ta::terminal::ComparisonColour(line)), 1));
            graph->data()->set(data, true);
        }
        peerPlot.rescaleAxes();
        peerPlot.replot();
    };
    ta::bench::RunSideBySide(state, ours, peer);
}
BENCHMARK(PaintComparison)->Iterations(30)->Unit(benchmark::kMillisecond);

}  // namespace
