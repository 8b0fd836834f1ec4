#include "terminal/chart/ChartView.h"
#include "terminal/frame/PeriodBar.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>

namespace ta::tour {
namespace {

/// Pictures of one round, named "KIND" with the language behind.
struct Round {
    Guide& guide;
    QString language;

    void Picture(const QString& kind) const { guide.Picture(kind + '-' + language); }
};

struct PeriodState {
    const char* button;  ///< of the bar over the chart
    const char* radio;   ///< of the history data dialog, null where it has none
    const char* name;
};

constexpr PeriodState kPeriods[] = {
    {"dailyButton", "dailyRadio", "daily"},       {"weeklyButton", "weeklyRadio", "weekly"},
    {"monthlyButton", "monthlyRadio", "monthly"}, {"minutesButton", "minutesRadio", "minutes"},
    {"secondsButton", nullptr, "seconds"},
};

void ShowPeriodBar(const Round& round) {
    Guide& guide = round.guide;
    QWidget& bar = guide.Parts().periodBar;
    guide.Open("SXF1");
    for (const PeriodState& period : kPeriods) {
        Push(bar, period.button);
        guide.ExpectChart(guide.Chart().PaneCount());
        round.Picture(QString("period-bar-") + period.name);
    }
    Push(bar, "favouriteButton");
    auto& counts = Find<QComboBox>(bar, "countCombo");
    counts.showPopup();
    round.Picture("period-bar-counts");
    counts.hidePopup();
    Push(bar, "favouriteButton");
    Push(bar, "dailyButton");
}

/// Every period, both modes, and each refusal.
void ShowHistoryData(const Round& round) {
    const auto dialog = [&round](QWidget& shown) {
        for (const QString mode : {"read", "since"}) {
            for (const PeriodState& period : kPeriods) {
                if (period.radio != nullptr) {
                    Push(shown, period.radio);
                    Push(shown, qUtf8Printable(mode + "Radio"));
                    round.Picture(QString("history-data-%1-%2").arg(mode, period.name));
                }
            }
        }
        for (const QDate& refused :
             {QDate(1970, 1, 1), QDate(2069, 12, 31), QDate::currentDate().addDays(-5)}) {
            Find<QDateEdit>(shown, "startDate").setDate(refused);
        }
        Push(shown, "readRadio");
        auto& count = Find<QLineEdit>(shown, "countEdit");
        count.selectAll();
        Type(count, "10");
        Push(shown, "okButton");
        round.Picture("history-data-corrected");
        Dismiss(shown);
    };
    Guide::Answers answers{dialog};
    for (const char* refusal : {"too-early", "in-future", "too-late", "limits"}) {
        answers.push_back([&round, refusal](QWidget& message) {
            round.Picture(QString("history-data-") + refusal);
            Confirm(message);
        });
    }
    round.guide.Choose(Command::HistoryData, answers);
}

/// More than there is: the status bar tells.
void ShowShortfall(const Round& round) {
    round.guide.Choose(Command::HistoryData, {[](QWidget& dialog) {
                           Push(dialog, "weeklyRadio");
                           Push(dialog, "readRadio");
                           auto& count = Find<QLineEdit>(dialog, "countEdit");
                           count.selectAll();
                           Type(count, "4000");
                           Push(dialog, "okButton");
                       }});
    round.Picture("history-shortfall");
}

void ShowMonthlyOnly(const Round& round) {
    round.guide.Open("AAPL");
    round.Picture("monthly-only");
    round.guide.Choose(Command::HistoryData, {[&round](QWidget& dialog) {
                           round.Picture("monthly-only-history-data");
                           Dismiss(dialog);
                       }});
}

struct TypedState {
    const char* symbol;
    const char* keys;
    bool enter;
    const char* name;
};

constexpr TypedState kTyped[] = {
    {"SXF1", "15", false, "minutes"},   {"SXF1", "15", true, "minutes-taken"},
    {"SXF1", "9902", false, "code"},    {"SXF1", "gold", false, "name"},
    {"SXF1", "XYZ", true, "not-found"}, {"SPX", "5", true, "no-minutes"},
};

void ShowTyping(const Round& round) {
    Guide& guide = round.guide;
    for (const TypedState& typed : kTyped) {
        guide.Open(typed.symbol);
        Type(guide.Chart(), typed.keys);
        if (typed.enter) {
            Confirm(guide.Chart());
        }
        round.Picture(QString("typing-") + typed.name);
        Dismiss(guide.Chart());
    }
    Type(guide.Chart(), "9902");
    guide.DarkPicture("typing-dark-" + round.language);
    Confirm(guide.Chart());
    Expect(guide.Chart().SymbolId() == "9902", "the typed code is not opened");
}

void ShowPeriods(Guide& guide) {
    guide.Choose(Command::NewTab);
    guide.ChooseDefaultGroup();
    InBothLanguages(guide, [&guide](const QString& language) {
        const Round round{guide, language};
        ShowPeriodBar(round);
        ShowHistoryData(round);
        ShowShortfall(round);
        ShowMonthlyOnly(round);
        ShowTyping(round);
    });
    guide.Choose(Command::CloseTab);
}

}  // namespace

std::vector<Step> PeriodSteps() {
    return {{"periods", ShowPeriods}};
}

}  // namespace ta::tour
