#include "terminal/frame/Session.h"

#include "platform/SyncInfo.h"
#include "platform/Window.h"
#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTimer>

#include <utility>

namespace ta::terminal {
namespace {

constexpr int kProblemsListed = 12;

/// The repository's hidden window is a child of this one up to the end of the process.
CWnd& FrameWindow() {
    static CWnd& window = *new CWnd;
    return window;
}

/// Loads the repository from the store that is hung in. It outlives a session, so that a later one
/// in the same process has to make it load again.
void LoadRepository(SqliteStore& store) {
    static bool loadedBefore = false;
    if (loadedBefore) {
        store.DiscardPending();
    }
    Repository().ReloadTASetting();
    loadedBefore = true;
}

std::unique_ptr<MarketData> ReadMarkets(const Options& options) {
    return std::make_unique<MarketData>(
        options.dataFolder.isEmpty() ? DefaultDataFolder() : options.dataFolder,
        options.userFolder.isEmpty() ? DefaultUserFolder() : options.userFolder);
}

void Warn(QWidget* window, const QString& text) {
    ui::CurrentPrompts().Message(window, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                 text);
}

}  // namespace

Session::Session(const Options& options)
    : m_statePath(
          FrameStatePath(options.configFile.isEmpty() ? DefaultStorePath() : options.configFile)),
      m_lastState(LoadFrameState(m_statePath)),
      m_entitlement(m_statePath),
      m_comparisonSets(m_statePath + ".comparisons.json"),
      m_exportProfiles(m_statePath + ".export-profiles.json"),
      m_linePens(m_statePath),
      m_store(std::make_unique<SqliteStore>()) {
    connect(&m_language, &Language::changed, this, &Session::TakeQtTexts);
    m_language.Select(options.language.value_or(m_lastState.language));
    TakeQtTexts();
    m_markets = ReadMarkets(options);
    m_quotes = std::make_unique<TerminalQuotes>(*m_markets);
    m_store->SetPackErrorHandler([this](const PackError& error) { OnPackError(error); });
    m_store->SetDefaults(TerminalDrawInfo::DefaultParamStrings(),
                         TerminalDrawInfo::DefaultShapeStrings());
    m_opened =
        m_store->Open(options.configFile.isEmpty() ? DefaultStorePath() : options.configFile);
    BKQuoteInterface::SetBKInterface(m_quotes.get());
    HangIn();
    connect(&m_language, &Language::changed, this, &Session::HangIn);
    LoadRepository(*m_store);
}

Session::~Session() {
    m_ending = true;
    CSyncInfo::GetSettingCFG().SetServices({});
    BKQuoteInterface::SetBKInterface(nullptr);
    m_store.reset();
    QCoreApplication::removeTranslator(&m_qtTexts);
}

void Session::HangIn() {
    Services services;
    services.configStore = m_store.get();
    services.entitlement = &m_entitlement;
    services.chartModule = &m_chartModule;
    services.numberDisplay = &m_numberDisplay;
    services.comparisonSets = &m_comparisonSets;
    services.exportProfiles = &m_exportProfiles;
    services.frameWindow = &FrameWindow();
    services.messageBoxTitle = ui::FromQString(Tr("IDS_TERMINAL-FRAME_TITLE"));
    CSyncInfo::GetSettingCFG().SetServices(services);
}

/// The toolkit's own texts: standard buttons, file dialogs, context menus.
void Session::TakeQtTexts() {
    QCoreApplication::removeTranslator(&m_qtTexts);
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (m_language.Current() == Language::TraditionalChinese &&
        m_qtTexts.load("qtbase_zh_TW", folder)) {
        QCoreApplication::installTranslator(&m_qtTexts);
    }
}

void Session::TellStartNotices(QWidget* window) {
    m_window = window;
    const QString opened = OpenMessage(m_opened);
    if (!opened.isEmpty()) {
        Warn(window, opened);
    }
    QStringList problems = m_markets->Problems();
    if (!problems.isEmpty()) {
        const auto more = problems.size() - kProblemsListed;
        problems = problems.mid(0, kProblemsListed);
        if (more > 0) {
            problems.append(Tr("IDS_TERMINAL-FRAME_DATA_MORE").arg(more));
        }
        Warn(window, Tr("IDS_TERMINAL-FRAME_DATA_FAILED").arg(problems.join('\n')));
    }
}

QString Session::Save() {
    m_untold.clear();
    m_store->PackFile();
    return std::exchange(m_untold, QString());
}

void Session::OnPackError(const PackError& error) {
    m_untold = PackErrorMessage(error);
    if (m_ending) {  // the frame has asked before it closed
        qWarning("%s", qUtf8Printable(m_untold));
        return;
    }
    // Later, so that the operation that saved ends first; failures until then are one message.
    QTimer::singleShot(0, this, &Session::TellPackError);
}

void Session::TellPackError() {
    if (m_telling) {
        return;
    }
    m_telling = true;
    while (!m_untold.isEmpty()) {
        Warn(m_window, std::exchange(m_untold, QString()));
    }
    m_telling = false;
}

}  // namespace ta::terminal
