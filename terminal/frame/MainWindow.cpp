#include "terminal/frame/MainWindow.h"

#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/CsvOpener.h"
#include "terminal/frame/GroupExchange.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/SettingsOpener.h"
#include "terminal/frame/TrendLineListDialog.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/quotes/MarketData.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QStatusBar>
#include <QTabBar>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr int kPollMilliseconds = 300;
constexpr int kNoticeMilliseconds = 10000;
constexpr std::size_t kMostHits = 30;
constexpr QSize kFirstSize(1280, 800);

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

/// A name as menus and tabs show it, where "&" marks a mnemonic.
QString WithoutMnemonics(QString text) {
    return text.replace('&', "&&");
}

QString TitleOf(const Symbol& symbol) {
    return ui::ToQString(symbol.id) + ' ' + ui::ToQString(NameOf(symbol));
}

QString MarketName(const MarketData& data, std::uint8_t id) {
    const auto found = std::ranges::find(data.Markets(), id, &Market::id);
    return found == data.Markets().end() ? QString() : ui::ToQString(NameOf(*found));
}

std::vector<SymbolHit> FindHits(const MarketData& data, const QString& text) {
    std::vector<SymbolHit> hits;
    for (const Symbol* symbol : data.Search(ui::FromQString(text), kMostHits)) {
        hits.push_back(
            {symbol->market, symbol->id,
             QString("%1  (%2)").arg(TitleOf(*symbol), MarketName(data, symbol->market))});
    }
    return hits;
}

PeriodSet AvailablePeriods(const MarketData& data, std::uint8_t market, const CString& id) {
    PeriodSet available;
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        available[i] = data.HasPeriod(market, id, kPeriods[i].code);
    }
    return available;
}

QString PeriodText(const ChartView& chart) {
    const int index = PeriodIndex(chart.Period(), chart.Count());
    return index < 0 ? QString() : Tr(kPeriods[static_cast<std::size_t>(index)].textKey);
}

QStringList DroppedFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
        }
    }
    return files;
}

}  // namespace

MainWindow::MainWindow(Session& session, QWidget* parent)
    : QMainWindow(parent),
      m_session(session),
      m_commands(new Commands(*menuBar(), this)),
      m_tabs(new QTabWidget(this)),
      m_toolBar(new FrameToolBar(
          [&session](const QString& text) { return FindHits(session.Markets(), text); }, this)),
      m_drawingBar(new DrawingBar(*m_commands, this)),
      m_newTabButton(new QToolButton(m_tabs)),
      m_cursorText(new QLabel(this)) {
    setAcceptDrops(true);
    resize(kFirstSize);
    MakeTabs();
    MakeToolBar();
    MakePeriodMenu();
    statusBar()->addPermanentWidget(m_cursorText);
    connect(m_commands, &Commands::triggered, this, &MainWindow::Run);
    connect(&m_commands->At(MenuId::Symbols), &QMenu::aboutToShow, this,
            &MainWindow::FillSymbolMenu);
    connect(&m_session.Lang(), &Language::changed, this, &MainWindow::Retranslate);
    Restore(m_session.LastState());
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::RefreshChart);
    m_session.Store().SetViewGroupSource([this](int uniNum) { return ViewsOfGroup(uniNum); });
    connect(&m_poll, &QTimer::timeout, this, &MainWindow::PollStore);
    m_poll.start(kPollMilliseconds);
    Retranslate();
    CurrentChart().setFocus();
}

MainWindow::~MainWindow() {
    m_session.Store().SetViewGroupSource({});
    m_tabs->disconnect(this);
}

void MainWindow::MakeTabs() {
    m_tabs->setDocumentMode(true);
    m_tabs->setMovable(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setElideMode(Qt::ElideRight);
    m_newTabButton->setText(" + ");  // the tabs leave as much room as the text asks for
    m_newTabButton->setObjectName("newTabButton");
    m_tabs->setCornerWidget(m_newTabButton);
    connect(m_newTabButton, &QToolButton::clicked, this, &MainWindow::NewTab);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &MainWindow::CloseTab);
    setCentralWidget(m_tabs);
}

void MainWindow::MakeToolBar() {
    addToolBar(m_toolBar);
    addToolBar(Qt::LeftToolBarArea, m_drawingBar);
    m_toolBar->addAction(&m_commands->At(Command::EditSettings));
    m_toolBar->addSeparator();
    for (const Command command :
         {Command::ZoomIn, Command::ZoomOut, Command::ShowAll, Command::ShowLatest}) {
        m_toolBar->addAction(&m_commands->At(command));
    }
    const SymbolBox& box = m_toolBar->Symbol();
    connect(&box, &SymbolBox::chosen, this, [this](std::uint8_t market, const CString& id) {
        OpenSymbol(market, id);
        CurrentChart().setFocus();
    });
    connect(&box, &SymbolBox::notFound, this, [this](const QString& text) {
        Notice(Tr("IDS_TERMINAL-FRAME_SYMBOL_NOT_FOUND").arg(text));
    });
    connect(&box, &SymbolBox::left, this, [this] { CurrentChart().setFocus(); });
    connect(m_toolBar, &FrameToolBar::periodChosen, this, &MainWindow::SelectPeriod);
    connect(m_toolBar, &FrameToolBar::groupChosen, this,
            [this](const QString& name) { SelectGroup(ui::FromQString(name)); });
}

void MainWindow::MakePeriodMenu() {
    auto* exclusive = new QActionGroup(this);
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        QAction* action = m_commands->At(MenuId::Periods).addAction(QString());
        action->setShortcut(QKeySequence(kPeriods[i].shortcut));
        action->setCheckable(true);
        exclusive->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, index = static_cast<int>(i)] { SelectPeriod(index); });
        m_periodActions.push_back(action);
    }
}

void MainWindow::Restore(const FrameState& state) {
    restoreGeometry(state.geometry);
    m_commands->At(Command::RisingRed).setChecked(state.risingRed);
    for (const TabState& tab : state.tabs) {
        ChartView& chart = AddChart();
        chart.SetGroup(Repository().GetGroupNameByUniNum(tab.group));
        chart.Show({tab.market, ui::FromQString(tab.symbol), tab.period, tab.count});
    }
    if (TabCount() == 0) {
        AddChart();
        const std::vector<const Symbol*> first = m_session.Markets().Search({}, 1);
        if (!first.empty()) {
            OpenSymbol(first.front()->market, first.front()->id);
        }
    }
    m_tabs->setCurrentIndex(std::clamp(state.currentTab, 0, TabCount() - 1));
}

ChartView& MainWindow::AddChart() {
    auto* chart = new ChartView(m_session.Markets());
    chart->SetRisingRed(m_commands->At(Command::RisingRed).isChecked());
    connect(chart, &ChartView::symbolChanged, this, [this, chart] {
        RefreshTab(*chart);
        if (IsCurrent(*chart)) {
            RefreshChart();
        }
    });
    connect(chart, &ChartView::groupChanged, this, [this, chart] {
        RefreshTab(*chart);
        if (IsCurrent(*chart)) {
            RefreshGroups();
        }
    });
    connect(chart, &ChartView::groupVanished, this, [this](const QString& newGroup) {
        Notice(Tr("IDS_TERMINAL-FRAME_GROUP_VANISHED").arg(newGroup));
    });
    connect(chart, &ChartView::loadFailed, this, &MainWindow::Notice);
    connect(chart, &ChartView::legendDoubleClicked, this,
            [this, chart](int pane, int study) { EditStudies(*chart, pane, study); });
    connect(&chart->Drawings(), &DrawingBoard::notice, this, &MainWindow::Notice);
    connect(&chart->Drawings(), &DrawingBoard::hint, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    connect(chart, &ChartView::cursorMoved, this, [this, chart](const QString& text) {
        if (IsCurrent(*chart)) {
            m_cursorText->setText(text);
        }
    });
    m_tabs->addTab(chart, QString());
    m_commands->At(Command::CloseTab).setEnabled(TabCount() > 1);
    return *chart;
}

bool MainWindow::IsCurrent(const ChartView& chart) const {
    return m_tabs->currentWidget() == &chart;
}

ChartView& MainWindow::CurrentChart() const {
    return ChartAt(m_tabs->currentIndex());
}

ChartView& MainWindow::ChartAt(int tab) const {
    return *static_cast<ChartView*>(m_tabs->widget(tab));
}

void MainWindow::NewTab() {
    const ChartView& shown = CurrentChart();
    ChartView& chart = AddChart();
    chart.SetGroup(shown.GroupName());
    chart.Show(shown.Shown());
    RefreshTab(chart);
    m_tabs->setCurrentWidget(&chart);
    chart.setFocus();
}

void MainWindow::CloseTab(int tab) {
    if (TabCount() <= 1 || tab < 0 || tab >= TabCount()) {
        return;
    }
    QWidget* chart = m_tabs->widget(tab);
    m_tabs->removeTab(tab);
    delete chart;
    m_commands->At(Command::CloseTab).setEnabled(TabCount() > 1);
}

void MainWindow::OpenSymbol(std::uint8_t market, const CString& id) {
    ChartView& chart = CurrentChart();
    const PeriodSet available = AvailablePeriods(m_session.Markets(), market, id);
    BarsKey wanted = chart.Shown();
    wanted.market = market;
    wanted.symbol = id;
    const int period = PeriodIndex(wanted.period, wanted.count);
    if (available.any() && (period < 0 || !available[static_cast<std::size_t>(period)])) {
        std::size_t first = 0;
        while (!available[first]) {
            ++first;
        }
        wanted.period = kPeriods[first].code;
        wanted.count = kPeriods[first].count;
    }
    chart.Show(wanted);
    RefreshChart();
}

bool MainWindow::OpenCsv(const QString& path) {
    if (m_openingCsv) {
        return false;
    }
    m_openingCsv = true;
    const Symbol* symbol = CsvOpener(m_session.Markets().User(), this).Open(path);
    m_openingCsv = false;
    if (symbol == nullptr) {
        return false;
    }
    OpenSymbol(symbol->market, symbol->id);
    Notice(Tr("IDS_TERMINAL-FRAME_CSV_OPENED")
               .arg(ui::ToQString(NameOf(*symbol)))
               .arg(CurrentChart().BarCount()));
    return true;
}

void MainWindow::PollStore() {
    Repository().ReloadTASetting();
    RefreshGroups();
}

std::vector<std::pair<CString, int>> MainWindow::ViewsOfGroup(int uniNum) const {
    std::vector<std::pair<CString, int>> views;
    for (int i = 0; i < TabCount(); ++i) {
        if (ChartAt(i).GroupUniNum() == uniNum) {
            views.emplace_back(ui::FromQString(m_tabs->tabToolTip(i)), i);
        }
    }
    return views;
}

FrameState MainWindow::State() const {
    FrameState state;
    for (int i = 0; i < TabCount(); ++i) {
        const ChartView& chart = ChartAt(i);
        state.tabs.append({chart.Market(), ui::ToQString(chart.SymbolId()), chart.Period(),
                           chart.Count(), chart.GroupUniNum()});
    }
    state.currentTab = m_tabs->currentIndex();
    state.language = m_session.Lang().Current();
    state.risingRed = m_commands->At(Command::RisingRed).isChecked();
    state.geometry = saveGeometry();
    return state;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    const QString unsaved = m_session.Save();
    if (!unsaved.isEmpty() &&
        ui::CurrentPrompts().AskYesNo(this, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                      Tr("IDS_TERMINAL-FRAME_ASK_EXIT_UNSAVED").arg(unsaved)) !=
            ui::Answer::Yes) {
        event->ignore();
        return;
    }
    if (!SaveFrameState(m_session.StatePath(), State())) {
        ui::CurrentPrompts().Message(
            this, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
            Tr("IDS_TERMINAL-FRAME_STATE_FAILED").arg(m_session.StatePath()));
    }
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFiles(*event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    // Later, because the program that the files come from waits for the end of this event.
    QTimer::singleShot(0, this, [this, files = DroppedFiles(*event->mimeData())] {
        for (const QString& file : files) {
            if (IsGroupFile(file)) {
                ImportGroups(file);
            } else {
                OpenCsv(file);
            }
        }
    });
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!m_shownBefore) {
        m_shownBefore = true;
        QTimer::singleShot(0, this, [this] { m_session.TellStartNotices(this); });
    }
}

void MainWindow::Run(Command command) {
    ChartView& chart = CurrentChart();
    switch (command) {
        case Command::OpenCsv:
            return AskCsv();
        case Command::SaveSettings:
            return Repository().SaveAllGroupSetting();
        case Command::NewTab:
            return NewTab();
        case Command::CloseTab:
            return CloseTab(m_tabs->currentIndex());
        case Command::Exit:
            close();
            return;
        case Command::FindSymbol:
            m_toolBar->Symbol().setFocus(Qt::ShortcutFocusReason);
            return;
        case Command::ZoomIn:
            return chart.ZoomIn();
        case Command::ZoomOut:
            return chart.ZoomOut();
        case Command::ShowAll:
            return chart.ShowAll();
        case Command::ShowLatest:
            return chart.ShowLatest();
        case Command::RisingRed:
            return SetRisingRed(m_commands->At(command).isChecked());
        case Command::EditSettings:
            return EditGroups();
        case Command::ImportGroups:
            return ImportGroups({});
        case Command::ExportGroups:
            return terminal::ExportGroups(*this);
        case Command::DrawPointer:
        case Command::DrawLine:
        case Command::DrawSegment:
        case Command::DrawHorizontal:
        case Command::DrawParallel:
        case Command::DrawRailLine:
        case Command::DrawGoldenCut:
        case Command::SelectLine:
        case Command::DeleteLine:
        case Command::DeleteAllLines:
            chart.setFocus();
            return m_drawingBar->Run(command);
        case Command::ListLines:
            return ListLines();
        case Command::Chinese:
            return m_session.Lang().Select(Language::TraditionalChinese);
        case Command::English:
            return m_session.Lang().Select(Language::English);
        case Command::About:
            return ShowAbout();
    }
}

void MainWindow::SelectPeriod(int index) {
    const FramePeriod& period = kPeriods[static_cast<std::size_t>(index)];
    const BarsKey& shown = CurrentChart().Shown();
    CurrentChart().Show({shown.market, shown.symbol, period.code, period.count});
    RefreshChart();
    CurrentChart().setFocus();
}

void MainWindow::SelectGroup(const CString& name) {
    CurrentChart().SetGroup(name);
    RefreshGroups();
    CurrentChart().setFocus();
}

void MainWindow::EditGroups() {
    const ChartView& chart = CurrentChart();
    EditSettings({SettingsPlace::Page::Groups, chart.GroupName(), chart.PaneCount(), 0, 0});
}

void MainWindow::EditStudies(const ChartView& chart, int pane, int study) {
    EditSettings({SettingsPlace::Page::Studies, chart.GroupName(), chart.PaneCount(), pane, study});
}

void MainWindow::EditSettings(const SettingsPlace& place) {
    const CString added = OpenSettings(*this, m_session.Store(), place);
    if (!added.empty()) {
        CurrentChart().SetGroup(added);
    }
    RefreshGroups();
    CurrentChart().setFocus();
}

void MainWindow::ImportGroups(const QString& path) {
    terminal::ImportGroups(*this, path);
    RefreshGroups();
}

void MainWindow::SetRisingRed(bool risingRed) {
    for (int i = 0; i < TabCount(); ++i) {
        ChartAt(i).SetRisingRed(risingRed);
    }
}

void MainWindow::AskCsv() {
    const QString path =
        ui::CurrentPrompts().OpenFile(this, Tr("IDS_TERMINAL-FRAME_OPEN_CSV_TITLE"), {},
                                      Tr("IDS_TERMINAL-FRAME_OPEN_CSV_FILTER"));
    if (!path.isEmpty()) {
        OpenCsv(path);
    }
}

void MainWindow::ListLines() {
    TrendLineListDialog list(m_session.Markets(), this);
    const auto chosen = list.exec() == QDialog::Accepted ? list.Chosen() : std::nullopt;
    if (!chosen) {
        return;
    }
    OpenSymbol(chosen->market, chosen->symbol);
    // A period with lines to see, unless they are there already.
    const auto& periods = chosen->periods;
    const ChartView& chart = CurrentChart();
    if (std::ranges::find(periods, std::pair(chart.Period(), chart.Count())) == periods.end()) {
        for (const auto& [code, count] : periods) {
            const int index = PeriodIndex(code, count);
            if (index >= 0 && m_periodActions[static_cast<std::size_t>(index)]->isEnabled()) {
                return SelectPeriod(index);
            }
        }
    }
    CurrentChart().setFocus();
}

void MainWindow::ShowAbout() {
    ui::CurrentPrompts().Message(this, ui::PromptIcon::Information, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                 Tr("IDS_TERMINAL-FRAME_ABOUT_TEXT").arg(TERMINAL_VERSION));
}

void MainWindow::FillSymbolMenu() {
    const MarketData& markets = m_session.Markets();
    QMenu& menu = m_commands->At(MenuId::Symbols);
    menu.clear();
    for (const Market& market : markets.Markets()) {
        QMenu& ofMarket = *menu.addMenu(WithoutMnemonics(ui::ToQString(NameOf(market))));
        const std::vector<const Commodity*> commodities = markets.CommoditiesOf(market.id);
        for (const Commodity* commodity : commodities) {
            QMenu& ofCommodity =
                *ofMarket.addMenu(WithoutMnemonics(ui::ToQString(NameOf(*commodity))));
            AddSymbols(ofCommodity, markets.SymbolsOf(market.id, commodity->id));
        }
        if (commodities.empty()) {
            AddSymbols(ofMarket, markets.SymbolsOf(market.id));
        }
        ofMarket.setEnabled(!ofMarket.isEmpty());
    }
}

void MainWindow::AddSymbols(QMenu& menu, const std::vector<const Symbol*>& symbols) {
    for (const Symbol* symbol : symbols) {
        QAction* action = menu.addAction(WithoutMnemonics(TitleOf(*symbol)));
        connect(action, &QAction::triggered, this,
                [this, market = symbol->market, id = symbol->id] { OpenSymbol(market, id); });
    }
}

void MainWindow::Retranslate() {
    m_commands->Retranslate();
    m_toolBar->Retranslate();
    m_drawingBar->Retranslate();
    const bool english = m_session.Lang().Current() == Language::English;
    m_commands->At(english ? Command::English : Command::Chinese).setChecked(true);
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_periodActions[i]->setText(Tr(kPeriods[i].textKey));
    }
    m_newTabButton->setToolTip(m_commands->At(Command::NewTab).toolTip());
    m_newTabButton->setAccessibleName(m_newTabButton->toolTip());
    for (int i = 0; i < TabCount(); ++i) {
        RefreshTab(ChartAt(i));
    }
    RefreshChart();
}

void MainWindow::RefreshChart() {
    const ChartView& chart = CurrentChart();
    const Symbol* symbol = m_session.Markets().FindSymbol(chart.Market(), chart.SymbolId());
    m_drawingBar->Attach(chart.Drawings());
    m_toolBar->Symbol().Show(symbol == nullptr ? ui::ToQString(chart.SymbolId())
                                               : TitleOf(*symbol));
    RefreshTab(chart);
    RefreshPeriods();
    RefreshGroups();
    m_cursorText->setText(chart.CursorText());
    setWindowTitle(m_tabs->tabToolTip(m_tabs->currentIndex()) + " - " +
                   Tr("IDS_TERMINAL-FRAME_TITLE"));
}

void MainWindow::RefreshPeriods() {
    const ChartView& chart = CurrentChart();
    const PeriodSet available =
        AvailablePeriods(m_session.Markets(), chart.Market(), chart.SymbolId());
    const int current = PeriodIndex(chart.Period(), chart.Count());
    m_toolBar->ShowPeriods(available, current);
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_periodActions[i]->setEnabled(available[i]);
        m_periodActions[i]->setChecked(static_cast<int>(i) == current);
    }
}

void MainWindow::RefreshGroups() {
    std::vector<CString> groups;
    Repository().GetGroupNameList(groups);
    QStringList names;
    for (const CString& group : groups) {
        names.append(ui::ToQString(group));
    }
    m_toolBar->ShowGroups(names, ui::ToQString(CurrentChart().GroupName()));
}

void MainWindow::RefreshTab(const ChartView& chart) {
    const int tab = m_tabs->indexOf(&chart);
    const Symbol* symbol = m_session.Markets().FindSymbol(chart.Market(), chart.SymbolId());
    const QString name = ui::ToQString(symbol == nullptr ? chart.SymbolId() : NameOf(*symbol));
    const QString text = name + ' ' + PeriodText(chart);
    m_tabs->setTabText(tab, WithoutMnemonics(text));
    m_tabs->setTabToolTip(tab, text);
}

void MainWindow::Notice(const QString& text) {
    statusBar()->showMessage(text, kNoticeMilliseconds);
}

}  // namespace ta::terminal
