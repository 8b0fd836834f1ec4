// The history data dialog and the banner bar, driven by keys and clicks.

#include "dialogs/MXSetHistData.h"
#include "dialogs/MXSetHistDataBanner.h"
#include "tests/support/DialogFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <new>

namespace ta::test {
namespace {

constexpr long kToday = 18428;  // 2020-06-15

std::string DateOf(const QDateEdit& edit) {
    return edit.text().replace('/', '-').toStdString();
}

class HistData : public DialogFixture {
protected:
    HistData() {
        clock.now = kToday * 86400L + 4 * 3600;  // noon
        quotes.monthItems[{2, "IBM"}] = {1};
        quotes.weekItems[{2, "WK"}] = quotes.minuteItems[{2, "WK"}] = {1};
        quotes.language["IDS_DIALOG-SETHISTDATA_LASTREC_ERR"] = "%d to %d";
        for (const auto& [key, text] : {std::pair{"DAILY", "&Daily"},
                                        {"MINUTES", "M&inutes"},
                                        {"READ", "&Read"},
                                        {"SINCE", "&Since"},
                                        {"OK", "&Ok"}}) {
            quotes.language[CString("IDS_TADIALOGS-HISTDATA_") + key] = text;
        }
    }
    static const char* Button(int type) {
        constexpr const char* kNames[] = {"dailyRadio", "weeklyRadio", "monthlyRadio",
                                          "minutesRadio"};
        return kNames[type];
    }
    /// "W of WMm, 5-, last 1440+, 1970-01-02-": the period, those enabled, the minutes, the read
    /// mode, the count and the date; "+" behind what is enabled.
    static std::string State(const MXSetHistData& dialog) {
        std::string checked;
        std::string enabled;
        for (int type = 0; type < 4; ++type) {
            const auto& radio = Find<QRadioButton>(dialog, Button(type));
            checked += radio.isChecked() ? "DWMm"[type] : '\0';
            enabled += radio.isEnabled() ? "DWMm"[type] : '\0';
        }
        std::erase(checked, '\0');
        std::erase(enabled, '\0');
        const auto& minutes = Find<QComboBox>(dialog, "minutesCombo");
        const auto& count = Find<QLineEdit>(dialog, "countEdit");
        const auto& date = Find<QDateEdit>(dialog, "startDate");
        const auto sign = [](const QWidget& control) { return control.isEnabled() ? "+" : "-"; };
        return checked + " of " + enabled + ", " + minutes.currentText().toStdString() +
               sign(minutes) + ", " +
               (Find<QRadioButton>(dialog, "readRadio").isChecked() ? "last " : "since ") +
               count.text().toStdString() + sign(count) + ", " + DateOf(date) + sign(date);
    }
    /// "type minutes mode count date" after OK; "open" when the dialog is.
    static std::string Result(const MXSetHistData& dialog) {
        if (dialog.isVisible()) {
            return "open";
        }
        std::string text = dialog.result() == QDialog::Accepted ? "" : "cancelled ";
        for (const long value :
             {long{dialog.GetDataType()}, long{dialog.GetMinutes()}, long{dialog.GetReadMode()},
              dialog.GetRecordCount(), dialog.GetStartDate()}) {
            text += std::to_string(value) + " ";
        }
        return text;
    }
    static QDateEdit& TypeDate(const MXSetHistData& dialog, const char* digits) {
        auto& date = Find<QDateEdit>(dialog, "startDate");
        date.setFocus();
        date.setSelectedSection(QDateTimeEdit::YearSection);
        QTest::keyClicks(&date, digits);
        return date;
    }
    void ExpectFault(const char* key) {
        prompts.ExpectMessage();
        m_fault = key;
    }
    void CheckFault() const {
        EXPECT_EQ(prompts.Last().text, m_fault);
        EXPECT_EQ(prompts.Last().title, "Terminal");
        EXPECT_EQ(prompts.Last().icon, ui::PromptIcon::Warning);
    }

private:
    const char* m_fault = "";
};

struct OpeningCase {
    std::uint8_t market;
    const char* symbol;
    int type, minutes, mode;
    long count, date;
    const char* state;
    const char* result;  ///< of OK at once
};

TEST_F(HistData, OpensOnTheCallersValues) {
    for (const OpeningCase& c : std::vector<OpeningCase>{
             {0, "", 0, 15, 0, 60, 18000, "D of DWMm, 15-, last 60+, 2019-04-14-",
              "0 15 0 60 18000 "},
             {0, "", 0, 0, 7, 0, 0, "D of DWMm, 5-, since 1440-, 1970-01-02+", "0 5 1 1440 1 "},
             {0, "", 3, 1500, 1, 10, 1, "m of DWMm, 999+, since 10-, 1970-01-02+", "3 999 1 10 1 "},
             {2, "IBM", 0, 5, 0, 50, 1, "M of M, 5-, last 50+, 1970-01-02-", "2 5 0 50 1 "},
             {2, "WK", 2, 7, 0, 50, 1, "W of Wm, 7-, last 50+, 1970-01-02-", "1 7 0 50 1 "},
             {2, "WK", 3, 7, 0, 4000, 1, "m of Wm, 7+, last 4000+, 1970-01-02-", "3 7 0 4000 1 "},
             {2, "NONE", 2, 5, 0, 50, 1, "D of , 5-, last 50+, 1970-01-02-", "0 5 0 50 1 "},
             {2, "IBM", 4, 1500, 0, 50, 1, " of M, 1500-, last 50+, 1970-01-02-", "4 1500 0 50 1 "},
             {0, "", -1, 5, 1, 50, 40000, " of DWMm, 5-, since 50-, 2079-07-08+",
              "-1 5 1 50 40000 "}}) {
        MXSetHistData dialog(c.market, c.symbol, c.type, c.minutes, c.mode, c.count, c.date, true);
        Show(dialog);
        EXPECT_EQ(State(dialog), c.state);
        if (c.date == 40000) {
            clock.now = 50000 * 86400L;  // else the date would be refused
        }
        Press(dialog, Qt::Key_Enter);
        EXPECT_EQ(Result(dialog), c.result);
        EXPECT_TRUE(dialog.GetFlag());
    }
}

struct EditingCase {
    const char* what;
    std::function<void(MXSetHistData&)> edit;
    const char* state;
    const char* result;
};

TEST_F(HistData, Editing) {
    const auto combo = [](MXSetHistData& dialog) -> QComboBox& {
        return Find<QComboBox>(dialog, "minutesCombo");
    };
    const auto minutes = [&](const char* typed) {
        return [&combo, typed](MXSetHistData& dialog) {
            PressAlt(dialog, Qt::Key_I);
            Type(*combo(dialog).lineEdit(), typed);
        };
    };
    const auto paste = [](const char* name, const char* text) {
        return [name, text](MXSetHistData& dialog) {
            auto& field = Find<QWidget>(dialog, name);
            field.setFocus();
            QApplication::clipboard()->setText(QString::fromUtf8(text));
            Press(dialog, Qt::Key_A, Qt::ControlModifier);
            Press(dialog, Qt::Key_V, Qt::ControlModifier);
        };
    };
    const std::vector<EditingCase> cases{
        {"the arrow keys", [](auto& dialog) { Press(dialog, Qt::Key_Right); },
         "W of DWMm, 5-, last 100+, 2019-04-14-", "1 5 0 100 18000 "},
        {"minutes 0", minutes("0"), "m of DWMm, 0+, last 100+, 2019-04-14-", "3 1 0 100 18000 "},
        {"minutes 1 is not completed", minutes("1"), "m of DWMm, 1+, last 100+, 2019-04-14-",
         "3 1 0 100 18000 "},
        {"letters fall away", minutes("a7b"), "m of DWMm, 7+, last 100+, 2019-04-14-",
         "3 7 0 100 18000 "},
        {"leaving the field",
         [&](auto& dialog) {
             minutes("1000")(dialog);
             Press(dialog, Qt::Key_Tab);
         },
         "m of DWMm, 999+, last 100+, 2019-04-14-", "3 999 0 100 18000 "},
        {"the list",
         [&](auto& dialog) {
             PressAlt(dialog, Qt::Key_I);
             combo(dialog).setFocus();
             Press(dialog, Qt::Key_Down);
         },
         "m of DWMm, 90+, last 100+, 2019-04-14-", "3 90 0 100 18000 "},
        {"back to daily",
         [&](auto& dialog) {
             minutes("20")(dialog);
             PressAlt(dialog, Qt::Key_D);
         },
         "D of DWMm, 20-, last 100+, 2019-04-14-", "0 20 0 100 18000 "},
        {"a pasted count", paste("countEdit", " 1,２00\n"),
         "D of DWMm, 5-, last 1200+, 2019-04-14-", "0 5 0 1200 18000 "},
        {"the first start date",
         [&](auto& dialog) {
             PressAlt(dialog, Qt::Key_S);
             paste("startDate", "1970-1-2")(dialog);
         },
         "D of DWMm, 5-, since 100-, 1970-01-02+", "0 5 1 100 1 "},
        {"a typed date, 30 days ago",
         [&](auto& dialog) {
             PressAlt(dialog, Qt::Key_S);
             TypeDate(dialog, "20200516");
         },
         "D of DWMm, 5-, since 100-, 2020-05-16+", "0 5 1 100 18398 "},
        {"a count, before the other mode",
         [&](auto& dialog) {
             paste("countEdit", "200")(dialog);
             PressAlt(dialog, Qt::Key_S);
             paste("startDate", "2001-2-3")(dialog);
         },
         "D of DWMm, 5-, since 200-, 2001-02-03+", "0 5 1 200 11356 "},
        {"Escape", [](auto& dialog) { Press(dialog, Qt::Key_Escape); },
         "D of DWMm, 5-, last 100+, 2019-04-14-", "cancelled 0 5 0 100 18000 "}};
    for (const EditingCase& c : cases) {
        SCOPED_TRACE(c.what);
        MXSetHistData dialog(0, "", 0, 5, 0, 100, 18000, false);
        Show(dialog);
        c.edit(dialog);
        EXPECT_EQ(State(dialog), c.state);
        Press(dialog, Qt::Key_Enter);
        EXPECT_EQ(Result(dialog), c.result);
        EXPECT_FALSE(dialog.GetFlag());
    }
}

TEST_F(HistData, CountsOutOfRangeAreCorrectedAndTold) {
    MXSetHistData dialog(0, "", 0, 5, 0, 100, 18000, false);
    Show(dialog);
    auto& count = Find<QLineEdit>(dialog, "countEdit");
    for (const auto& [typed, kept] : std::vector<std::pair<const char*, const char*>>{
             {"10", "50"}, {"4001", "4000"}, {"", "50"}}) {
        count.setFocus();
        Press(dialog, Qt::Key_A, Qt::ControlModifier);
        Press(dialog, Qt::Key_Delete);
        QTest::keyClicks(&count, typed);
        ExpectFault("50 to 4000");
        Press(dialog, Qt::Key_Enter);
        CheckFault();
        EXPECT_EQ(count.text(), kept);
        EXPECT_EQ(count.selectedText(), kept);
        EXPECT_TRUE(count.hasFocus());
        EXPECT_EQ(Result(dialog), "open");
    }
    Press(dialog, Qt::Key_Enter);
    EXPECT_EQ(Result(dialog), "0 5 0 50 18000 ");
    // In the other mode the count does not matter, and comes back as it was given.
    MXSetHistData since(0, "", 0, 5, 1, 10, 18000, false);
    Show(since);
    Press(since, Qt::Key_Enter);
    EXPECT_EQ(Result(since), "0 5 1 10 18000 ");
}

TEST_F(HistData, RefusedStartDates) {
    const std::function<void(MXSetHistData&)> waysOut[] = {
        [](auto& dialog) { Press(dialog, Qt::Key_Enter); },
        [](auto& dialog) { PressAlt(dialog, Qt::Key_O); },
        [](auto& dialog) { Press(dialog, Qt::Key_Backtab); },
        [](auto& dialog) { Click(Find<QWidget>(dialog, "okButton")); }};
    for (const auto& [typed, fault] :
         {std::pair{"19700101", "BEFORE"}, {"20200616", "AFTER"}, {"20200517", "MID"}}) {
        SCOPED_TRACE(typed);
        const CString key = CString("IDS_DIALOG-SETHISTDATA_VALID_DATE_") + fault;
        MXSetHistData dialog(0, "", 0, 5, 1, 100, 18000, false);
        Show(dialog);
        for (const auto& leave : waysOut) {
            const QDateEdit& date = TypeDate(dialog, typed);
            ExpectFault(key.c_str());
            leave(dialog);
            CheckFault();
            EXPECT_EQ(DateOf(date), "2019-04-14");
            EXPECT_EQ(Result(dialog), "open");
            QApplication::processEvents();
            EXPECT_TRUE(date.hasFocus());
        }
        // Cancel leads out of the field without a look at it; the other mode is no way around it.
        TypeDate(dialog, typed);
        Find<QWidget>(dialog, "cancelButton").setFocus();
        ExpectFault(key.c_str());
        PressAlt(dialog, Qt::Key_R);
        CheckFault();
        EXPECT_EQ(State(dialog), "D of DWMm, 5-, last 100+, 2019-04-14-");
        PressAlt(dialog, Qt::Key_S);
        TypeDate(dialog, typed);
        Click(Find<QWidget>(dialog, "cancelButton"));
        EXPECT_FALSE(dialog.isVisible());
    }
}

TEST_F(HistData, ADateHalfTypedIsNoneOfACancelsBusiness) {
    quotes.language["IDS_TADIALOGS-HISTDATA_CANCEL"] = "&Cancel";
    const std::function<void(MXSetHistData&)> ways[] = {
        [](auto& dialog) { Press(dialog, Qt::Key_Escape); },
        [](auto& dialog) { PressAlt(dialog, Qt::Key_C); },
        [](auto& dialog) { dialog.close(); },
    };
    for (const auto& leave : ways) {
        MXSetHistData dialog(0, "", 0, 5, 1, 100, 18000, false);
        Show(dialog);
        TypeDate(dialog, "20690101");
        leave(dialog);
        QApplication::processEvents();
        EXPECT_FALSE(dialog.isVisible());  // and no message came
    }
}

TEST_F(HistData, ChangeDateTellsWhetherItWasTaken) {
    MXSetHistData dialog(0, "", 0, 5, 1, 100, 18000, false);
    Show(dialog);
    EXPECT_TRUE(dialog.bChangeDate({2020, 5, 16}));
    EXPECT_TRUE(dialog.bChangeDate({})) << "an invalid date is not compared";
    auto& minutes = Find<QComboBox>(dialog, "minutesCombo");
    minutes.setEnabled(true);
    minutes.setFocus();  // and goes with the dialog
    ExpectFault("IDS_DIALOG-SETHISTDATA_VALID_DATE_MID");
    EXPECT_FALSE(dialog.bChangeDate({2020, 6, 15}));
    CheckFault();
    // The other controls are read with the date, and return with it.
    auto& count = Find<QLineEdit>(dialog, "countEdit");
    count.setText("200");
    EXPECT_TRUE(dialog.bChangeDate({2020, 5, 16}));
    count.setText("300");
    ExpectFault("IDS_DIALOG-SETHISTDATA_VALID_DATE_AFTER");
    EXPECT_FALSE(dialog.bChangeDate({2020, 6, 16}));
    EXPECT_EQ(count.text(), "200");
}

TEST_F(HistData, AThrowingBackEndIsNoneOfTheCallersBusiness) {
    const auto shortOfMemory = [] { throw std::bad_alloc(); };
    FailingQuotes failing(quotes);
    BKQuoteInterface::SetBKInterface(&failing);
    MXSetHistData dialog(0, "", 0, 5, 1, 100, 18000, false);
    Show(dialog);
    failing.Reset();
    failing.RunBefore("LangGetLangString", 1, shortOfMemory);
    ExpectFault("IDS_TECHVIEW-STRING_MEMORY_ERR");
    EXPECT_FALSE(dialog.bChangeDate({2020, 6, 16}));
    CheckFault();
    bool has[6] = {true, true, true, true, true, true};
    failing.RunBefore("bGetTA1ItemNoByService", 1, shortOfMemory);
    MXSetHistData::vCheckSymbolAllowTA(2, "IBM", has[0], has[1], has[2], has[3], has[4], has[5]);
    EXPECT_EQ(std::count(has, has + 6, true), 0);
    MXSetHistDataBanner banner(2, "WK", 1, 0);
    failing.RunBefore("bGetTA1ItemNoByService", 3, shortOfMemory);
    prompts.ExpectMessage();
    banner.SetState(2, "IBM", 2, 0);
    CheckFault();
    EXPECT_EQ(banner.GetDataType(), 1) << "as it was";
    QObject::connect(&banner, &MXSetHistDataBanner::periodChosen, shortOfMemory);
    Show(banner);
    prompts.ExpectMessage();
    Click(Find<QToolButton>(banner, "minutesButton"));
    CheckFault();
}

// ---- The banner bar ----

class HistBanner : public DialogFixture {
protected:
    HistBanner() {
        const MemoryQuotes::Code all{2, "A"};
        quotes.dailyItems[all] = quotes.weekItems[all] = quotes.monthItems[all] =
            quotes.minuteItems[all] = quotes.tickItems[all] = {1};
        quotes.monthItems[{2, "M"}] = {1};
        quotes.tickItems[{2, "T"}] = {1};
    }
    static QToolButton& Button(const MXSetHistDataBanner& banner, int type) {
        constexpr const char* kNames[] = {"dailyButton", "weeklyButton", "monthlyButton",
                                          "minutesButton", "secondsButton"};
        return Find<QToolButton>(banner, kNames[type]);
    }
    static QComboBox& Counts(const MXSetHistDataBanner& banner) {
        return Find<QComboBox>(banner, "countCombo");
    }
    /// "D of DWM, 5-": what is marked of what is enabled, and the count.
    static std::string State(const MXSetHistDataBanner& banner) {
        std::string checked;
        std::string enabled;
        for (int type = 0; type < 5; ++type) {
            checked += Button(banner, type).isChecked() ? std::string(1, "DWMms"[type]) : "";
            enabled += Button(banner, type).isEnabled() ? std::string(1, "DWMms"[type]) : "";
        }
        EXPECT_EQ(Find<QToolButton>(banner, "favouriteButton").isEnabled(),
                  Counts(banner).isEnabled());
        return checked + " of " + enabled + ", " + Counts(banner).currentText().toStdString() +
               (Counts(banner).isEnabled() ? "+" : "-");
    }
    static std::string Told(QSignalSpy& spy) {
        std::string told;
        for (const QVariantList& choice : spy) {
            told +=
                choice[0].toString().toStdString() + ":" + choice[1].toString().toStdString() + " ";
        }
        spy.clear();
        return told;
    }
};

TEST_F(HistBanner, ShowsAChartsStateWithoutTellingItBack) {
    MXSetHistDataBanner banner(2, "A", 0, 0);
    QSignalSpy spy(&banner, &MXSetHistDataBanner::periodChosen);
    Show(banner);
    EXPECT_EQ(State(banner), "D of DWMms, 5+");
    struct Case {
        const char* symbol;
        int type, count;
        const char* state;
        int told;
    };
    for (const Case& c : std::vector<Case>{{"A", 3, 15, "m of DWMms, 15+", 15},
                                           {"A", 4, 30, "s of DWMms, 30+", 30},
                                           {"A", 1, 99, "W of DWMms, 15+", 0},
                                           {"A", 3, 0, "m of DWMms, 15+", 15},
                                           {"M", 2, 0, "M of M, 15-", 0},
                                           {"M", 0, 0, "D of M, 15-", 0},
                                           {"T", 4, 7, "s of s, 7+", 7},
                                           {"T", 3, 16, "m of s, 7+", 16},
                                           {"A", 3, 15, "m of DWMms, 15+", 15},
                                           {"A", 9, 7, " of DWMms, 15+", 0}}) {
        banner.SetState(2, c.symbol, c.type, c.count);
        EXPECT_EQ(State(banner), c.state);
        EXPECT_EQ(banner.GetCount(), c.told) << c.state;
    }
    entitlement.marketsWithoutSeconds = {2};
    banner.SetState(2, "A", 0, 0);
    EXPECT_EQ(State(banner), "D of DWMm, 15+");
    banner.SetState(2, "A", 4, 30);
    EXPECT_EQ(State(banner), "s of DWMm, 15+") << "a chart of seconds that the user has no more";
    EXPECT_EQ(banner.GetCount(), 30);
    EXPECT_EQ(Told(spy), "");
    Type(*Counts(banner).lineEdit(), "20");
    Press(banner, Qt::Key_Enter);
    EXPECT_EQ(Told(spy), "3:20 ");
}

TEST_F(HistBanner, AChoiceIsToldOnce) {
    MXSetHistDataBanner banner(2, "A", 0, 0);
    QSignalSpy spy(&banner, &MXSetHistDataBanner::periodChosen);
    Show(banner);
    Click(Button(banner, 1));
    EXPECT_EQ(Told(spy), "1:0 ");
    Click(Button(banner, 1));
    EXPECT_EQ(Told(spy), "") << "chosen already";
    Click(Button(banner, 3));
    EXPECT_EQ(Told(spy), "3:5 ");
    Type(*Counts(banner).lineEdit(), "7");
    EXPECT_EQ(Told(spy), "");
    Press(banner, Qt::Key_Enter);
    EXPECT_EQ(Told(spy), "3:7 ");
    Press(banner, Qt::Key_Enter);
    EXPECT_EQ(Told(spy), "");
    Click(Button(banner, 4));
    EXPECT_EQ(Told(spy), "4:5 ") << "seconds have a number of their own";
    Type(*Counts(banner).lineEdit(), "5000");
    Press(banner, Qt::Key_Enter);
    EXPECT_EQ(Told(spy), "4:999 ");
    EXPECT_EQ(State(banner), "s of DWMms, 999+");
    Counts(banner).lineEdit()->selectAll();
    for (const int key : {Qt::Key_Backspace, Qt::Key_Enter}) {
        Press(banner, key);
    }
    Type(*Counts(banner).lineEdit(), "1");
    for (const int key : {Qt::Key_Backspace, Qt::Key_Tab}) {
        Press(banner, key);
    }
    EXPECT_EQ(Told(spy), "") << "an empty box chooses nothing";
    EXPECT_EQ(State(banner), "s of DWMms, 999+");
    Type(*Counts(banner).lineEdit(), "12");
    Click(Button(banner, 0));
    EXPECT_EQ(Told(spy), "0:0 ") << "a number that was not entered is dropped";
    EXPECT_EQ(State(banner), "D of DWMms, 7+");
    Counts(banner).setFocus();
    Press(banner, Qt::Key_Tab);
    EXPECT_EQ(Told(spy), "") << "passing through the box chooses nothing";
    Type(*Counts(banner).lineEdit(), "20");
    Press(banner, Qt::Key_Tab);
    EXPECT_EQ(Told(spy), "3:20 ") << "leaving the box takes what was typed";
    banner.SetState(2, "A", 0, 0);
    Counts(banner).setFocus();
    Press(banner, Qt::Key_Down);
    EXPECT_EQ(Told(spy), "3:15 ") << "a number chosen in another chart means minutes";
}

TEST_F(HistBanner, Favourites) {
    MXSetHistDataBanner banner(2, "A", 3, 8);
    QSignalSpy spy(&banner, &MXSetHistDataBanner::periodChosen);
    QSignalSpy kept(&banner, &MXSetHistDataBanner::favouritesChanged);
    banner.SetFavourites({7, 0, 7, 1000, 240});
    EXPECT_EQ(banner.GetFavourites(), (std::vector<int>{7, 240}));
    EXPECT_EQ(kept.count(), 0);
    Show(banner);
    auto& star = Find<QToolButton>(banner, "favouriteButton");
    EXPECT_FALSE(star.isChecked());
    Click(star);
    EXPECT_EQ(banner.GetFavourites(), (std::vector<int>{7, 240, 8}));
    EXPECT_EQ(kept.count(), 1);
    EXPECT_EQ(Counts(banner).itemText(2), QString::fromUtf8("★ 8"));
    EXPECT_EQ(Counts(banner).itemText(3), "120");
    Counts(banner).setCurrentIndex(1);
    Counts(banner).setFocus();
    Press(banner, Qt::Key_Up);
    EXPECT_EQ(Told(spy), "3:7 ");
    EXPECT_EQ(State(banner), "m of DWMms, 7+");
    EXPECT_TRUE(star.isChecked());
    Click(star);
    EXPECT_EQ(banner.GetFavourites(), (std::vector<int>{240, 8}));
    EXPECT_EQ(kept.count(), 2);
    for (const auto& favourites : {std::vector<int>{240, 8, 33}, {240, 8}}) {
        banner.SetState(2, "A", 3, favourites.size() == 3 ? 8 : 7);
        Type(*Counts(banner).lineEdit(), "33");
        EXPECT_EQ(star.isChecked(), favourites.size() == 2) << "of the number that is typed";
        Click(star);
        EXPECT_EQ(banner.GetFavourites(), favourites);
        EXPECT_EQ(State(banner), "m of DWMms, 33+");
        EXPECT_EQ(Told(spy), "3:33 ");
    }
}

}  // namespace
}  // namespace ta::test
