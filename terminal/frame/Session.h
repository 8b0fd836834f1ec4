#pragma once

#include "terminal/entitlement/TerminalEntitlement.h"
#include "terminal/frame/CommandLine.h"
#include "terminal/frame/ComparisonSetFile.h"
#include "terminal/frame/ExportProfileFile.h"
#include "terminal/frame/FrameState.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/LinePens.h"
#include "terminal/quotes/MarketData.h"
#include "terminal/quotes/TerminalNumberDisplay.h"
#include "terminal/quotes/TerminalQuotes.h"
#include "terminal/store/SqliteStore.h"
#include "terminal/studies/TerminalChartModule.h"

#include <QObject>
#include <QPointer>
#include <QTranslator>
#include <QWidget>

#include <memory>

namespace ta::terminal {

/// The terminal's services for one run: makes them in their order, hangs them into the library and
/// takes them out again when destroyed. One at a time, after the QApplication and around every
/// window.
class Session : public QObject {
    Q_OBJECT

public:
    explicit Session(const Options& options);
    /// Commits what is pending in the store.
    ~Session() override;

    Language& Lang() { return m_language; }
    MarketData& Markets() { return *m_markets; }
    SqliteStore& Store() { return *m_store; }

    /// What the frame was when the last run ended, and the file that keeps it.
    const FrameState& LastState() const { return m_lastState; }
    const QString& StatePath() const { return m_statePath; }

    /// Tells the user, in messages over `window`, what opening the store and reading the market
    /// data came to, if there is anything to tell. From then on failing saves are told over it too.
    void TellStartNotices(QWidget* window);

    /// Commits what is pending in the store, without telling the user. The reason why it could not
    /// be, in the language in use; empty when it was.
    QString Save();

private:
    void HangIn();
    void TakeQtTexts();
    void OnPackError(const PackError& error);
    void TellPackError();

    QString m_statePath;
    FrameState m_lastState;
    Language m_language;
    QTranslator m_qtTexts;
    TerminalEntitlement m_entitlement;
    TerminalChartModule m_chartModule;
    TerminalNumberDisplay m_numberDisplay;
    ComparisonSetFile m_comparisonSets;
    ExportProfileFile m_exportProfiles;
    LinePens m_linePens;
    std::unique_ptr<MarketData> m_markets;
    std::unique_ptr<TerminalQuotes> m_quotes;
    std::unique_ptr<SqliteStore> m_store;
    OpenResult m_opened;
    QPointer<QWidget> m_window;
    QString m_untold;  ///< the newest failing save that the user has not been told
    bool m_telling = false;
    bool m_ending = false;
};

}  // namespace ta::terminal
