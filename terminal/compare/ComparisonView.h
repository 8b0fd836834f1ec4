#pragma once

#include "platform/ComparisonSets.h"
#include "terminal/chart/ChartPage.h"
#include "terminal/compare/Comparison.h"

#include <memory>

namespace ta::terminal {

struct ChartTitle;
class ComparisonModel;
class MarketData;

/// A chart window of symbols side by side: a line each, on one time axis, counted from a base date.
/// A symbol without data stands in its legend; loadFailed() tells why. historyShort() names each
/// symbol that has less than was asked for.
class ComparisonView : public ChartPage {
    Q_OBJECT

public:
    /// `markets` stays the caller's and outlives the view. Begins without symbols.
    explicit ComparisonView(const MarketData& markets, QWidget* parent = nullptr);

    /// Loads the symbols, at most kMostCompared of them, and shows all their bars. Data types that
    /// there are none of become daily; a base date that is no number becomes none. How much history
    /// it asks for holds for its data period.
    void Compare(const ComparisonSet& set);
    const ComparisonSet& Set() const { return m_set; }

    /// What the values are. The part in view stays.
    void SetMode(ComparisonMode mode);
    ComparisonMode Mode() const { return m_mode; }
    /// Days since 1970-01-01, see Count(); 0: the first bar of the data. The part in view stays.
    void SetBaseDate(double baseDate);
    /// The bar under the cursor line, or where it last was, becomes the base date; without one the
    /// first bar in view.
    void TakeBaseFromCursor();

    /// The symbols' lines, and their names and values as the studies of the only pane.
    const ComparisonModel& Model() const { return *m_model; }

    QString Name() const override;
    const BarsKey& Shown() const override { return m_shown; }
    HistoryDepth Depth() const override;
    /// Of all data periods, where they are not the whole history. The setter is for a comparison
    /// that has no symbols yet.
    const HistoryDepths& Depths() const { return m_depths; }
    void SetDepths(const HistoryDepths& depths) { m_depths = depths; }
    void Show(const BarsKey& history, const HistoryDepth& depth) override;
    /// Another period than the compare dialog has changes nothing.
    void SwitchPeriod(int period, int count) override;
    ChartTable Table() const override;
    void Reload() override;

protected:
    QString Message() const override;
    QString SpokenName() const override;
    CString HistoryKey() const override;

private:
    ComparisonView(const MarketData& markets, const std::shared_ptr<ComparisonModel>& model,
                   QWidget* parent);
    void Load();
    void Recount();
    ChartTitle MakeTitle() const;
    void LoadAgain();
    void TellMissing();

    const MarketData& m_markets;
    std::shared_ptr<ComparisonModel> m_model;
    ComparisonSet m_set;     // its depth is that of the data period that is shown
    HistoryDepths m_depths;  // of the others too
    bool m_hasTold = false;  // whether the last load had something to tell
    ComparisonMode m_mode = ComparisonMode::Percent;
    BarsKey m_shown;
};

}  // namespace ta::terminal
