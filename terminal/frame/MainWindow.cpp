#include "terminal/frame/MainWindow.h"

#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/ChartGrid.h"
#include "terminal/frame/ChartStates.h"
#include "terminal/frame/CommandTable.h"
#include "terminal/frame/PaneHeightFile.h"
#include "terminal/frame/PeriodBar.h"
#include "terminal/frame/SymbolMenu.h"
#include "terminal/frame/SymbolTexts.h"
#include "terminal/frame/TabMenu.h"
#include "terminal/frame/openers/Openers.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr int kPollMilliseconds = 300;
constexpr QSize kFirstSize(1280, 800);

/// As much of the wanted size as the screen has room for, with a title bar above.
QSize FirstSize(const QWidget& window) {
    const int titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return kFirstSize.boundedTo(window.screen()->availableSize() - QSize(0, titleBar));
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

/// A text that is cut with an ellipsis, as that of a comparison may be wider than the window.
class CutLabel : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(rect(), Qt::AlignVCenter,
                         fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    }
};

}  // namespace

MainWindow::MainWindow(Session& session, QWidget* parent)
    : QMainWindow(parent),
      m_frame{
          *this,
          session,
          *new Commands(
              *menuBar(), CommandTable(), [this](const CommandRow& row) { Run(row); }, this),
          *new ChartTabs(session.Markets(), this),
          *new FrameToolBar(
              [&session](const QString& text) { return FindHits(session.Markets(), text); }, this),
          *new PeriodBar(this)},
      m_drawingBar(new DrawingBar(m_frame.commands, this)),
      m_periodMenu(new PeriodMenu(m_frame.commands.At(MenuId::Periods), this)),
      m_newTabButton(new QToolButton(&m_frame.tabs)),
      m_cursorText(new CutLabel(this)) {
    setAcceptDrops(true);
    setCentralWidget(&m_frame.tabs);
    m_cursorText->setMinimumWidth(1);
    statusBar()->addPermanentWidget(m_cursorText);
    MakeNewTabButton();
    AddTabMenu(m_frame.tabs, m_frame.commands);
    MakeToolBars();
    resize(FirstSize(*this));
    connect(&m_frame.tabs, &ChartTabs::notice, this,
            [this](const auto& text) { m_frame.Notice(text); });
    // What the status bar says in the other language goes, before the charts say theirs anew.
    connect(&session.Lang(), &Language::changed, statusBar(), &QStatusBar::clearMessage);
    LoadPaneHeights(session.StatePath(), m_frame.tabs.Heights());
    Restore(session.LastState());
    ConnectParts();
    session.Store().SetViewGroupSource(
        [this](int uniNum) { return m_frame.tabs.ViewsOfGroup(uniNum); });
    connect(&m_poll, &QTimer::timeout, this, &MainWindow::PollStore);
    m_poll.start(kPollMilliseconds);
    Retranslate();
    m_frame.tabs.Current().setFocus();
}

MainWindow::~MainWindow() {
    m_frame.session.Store().SetViewGroupSource({});
}

void MainWindow::MakeNewTabButton() {
    m_newTabButton->setText(" + ");  // the tabs leave as much room as the text asks for
    m_newTabButton->setObjectName("newTabButton");
    m_frame.tabs.setCornerWidget(m_newTabButton);
    connect(m_newTabButton, &QToolButton::clicked, &m_frame.tabs, &ChartTabs::AddCopy);
}

void MainWindow::MakeToolBars() {
    addToolBar(&m_frame.toolBar);
    addToolBarBreak();
    addToolBar(&m_frame.periodBar);
    addToolBar(Qt::LeftToolBarArea, m_drawingBar);
    m_frame.toolBar.addAction(&m_frame.commands.At(Command::EditSettings));
    m_frame.toolBar.addAction(&m_frame.commands.At(Command::HistoryData));
    m_frame.toolBar.addSeparator();
    for (const Command command :
         {Command::ZoomIn, Command::ZoomOut, Command::ShowAll, Command::ShowLatest}) {
        m_frame.toolBar.addAction(&m_frame.commands.At(command));
    }
}

void MainWindow::ConnectParts() {
    ChartTabs& tabs = m_frame.tabs;
    connect(&tabs, &ChartTabs::changed, this, &MainWindow::Refresh);
    connect(&tabs, &ChartTabs::cursorMoved, m_cursorText, &QLabel::setText);
    connect(&tabs, &ChartTabs::hint, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    connect(&tabs, &ChartTabs::legendDoubleClicked, this, [this](int pane, int study) {
        if (m_frame.tabs.CurrentComparison()) {
            CompareSymbols(m_frame);
        } else {
            EditStudies(m_frame, pane, study);
        }
        RefreshGroups();
    });
    connect(&tabs, &ChartTabs::axisMenuRequested, this,
            [this](int pane, int scale, const QPoint& position) {
                ShowAxisMenu(m_frame, pane, scale, position);
            });
    connect(&tabs, &ChartTabs::menuRequested, this,
            [this](QMenu* menu) { m_frame.commands.AddTo(*menu, ChartMenu()); });
    const SymbolBox& box = m_frame.toolBar.Symbol();
    connect(&box, &SymbolBox::chosen, &tabs, &ChartTabs::OpenSymbol);
    connect(&box, &SymbolBox::notFound, this, [this](const QString& text) {
        m_frame.Notice(Tr("IDS_TERMINAL-FRAME_SYMBOL_NOT_FOUND").arg(text));
    });
    connect(&box, &SymbolBox::left, this, [&tabs] { tabs.Current().setFocus(); });
    connect(&m_frame.toolBar, &FrameToolBar::periodChosen, &tabs, &ChartTabs::SelectPeriod);
    connect(&m_frame.periodBar, &PeriodBar::periodChosen, &tabs, &ChartTabs::ShowPeriod);
    connect(&m_frame.toolBar, &FrameToolBar::groupChosen, &tabs,
            [&tabs](const QString& name) { tabs.SelectGroup(ui::FromQString(name)); });
    connect(m_periodMenu, &PeriodMenu::chosen, &tabs, &ChartTabs::SelectPeriod);
    auto* symbols =
        new SymbolMenu(m_frame.commands.At(MenuId::Symbols), m_frame.session.Markets(), this);
    connect(symbols, &SymbolMenu::chosen, &tabs, &ChartTabs::OpenSymbol);
    connect(&m_frame.session.Lang(), &Language::changed, this, &MainWindow::Retranslate);
}

void MainWindow::Restore(const FrameState& state) {
    restoreGeometry(state.geometry);
    ChartTabs& tabs = m_frame.tabs;
    m_frame.commands.At(Command::RisingRed).setChecked(state.risingRed);
    tabs.SetRisingRed(state.risingRed);
    m_frame.commands.At(Command::ShowPeriodBar).setChecked(state.periodBar);
    m_frame.periodBar.setVisible(state.periodBar);
    m_frame.periodBar.SetFavourites(state.favourites);
    for (const TabState& tab : state.tabs) {
        tabs.Add(tab);
    }
    if (tabs.count() == 0) {
        tabs.Add({});
        const std::vector<const Symbol*> first = m_frame.session.Markets().Search({}, 1);
        if (!first.empty()) {
            tabs.OpenSymbol(first.front()->market, first.front()->id);
        }
    }
    tabs.setCurrentIndex(std::clamp(state.currentTab, 0, tabs.count() - 1));
}

FrameState MainWindow::State() const {
    FrameState state;
    state.tabs = m_frame.tabs.States();
    state.currentTab = m_frame.tabs.currentIndex();
    state.language = m_frame.session.Lang().Current();
    state.risingRed = m_frame.tabs.Current().RisingRed();
    state.periodBar = m_frame.commands.At(Command::ShowPeriodBar).isChecked();
    state.favourites = m_frame.periodBar.Favourites();
    state.geometry = saveGeometry();
    return state;
}

void MainWindow::Run(const CommandRow& row) {
    row.run(m_frame);
    RefreshGroups();  // a dialog may have changed them
}

void MainWindow::PollStore() {
    Repository().ReloadTASetting();
    RefreshGroups();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    Session& session = m_frame.session;
    const QString unsaved = session.Save();
    if (!unsaved.isEmpty() &&
        ui::CurrentPrompts().AskYesNo(this, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                      Tr("IDS_TERMINAL-FRAME_ASK_EXIT_UNSAVED").arg(unsaved)) !=
            ui::Answer::Yes) {
        event->ignore();
        return;
    }
    const bool isStateSaved = SaveFrameState(session.StatePath(), State());
    if (!SavePaneHeights(session.StatePath(), m_frame.tabs.Heights()) || !isStateSaved) {
        ui::CurrentPrompts().Message(
            this, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
            Tr("IDS_TERMINAL-FRAME_STATE_FAILED").arg(session.StatePath()));
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
    QTimer::singleShot(0, this,
                       [this, files = DroppedFiles(*event->mimeData())] { OpenFiles(files); });
}

void MainWindow::OpenFiles(const QStringList& paths) {
    for (const QString& path : paths) {
        if (IsGroupFile(path)) {
            ImportGroups(m_frame, path);
        } else {
            OpenPriceFile(m_frame, path);
        }
    }
    RefreshGroups();
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!m_shownBefore) {
        m_shownBefore = true;
        QTimer::singleShot(0, this, [this] { m_frame.session.TellStartNotices(this); });
    }
}

void MainWindow::Retranslate() {
    m_frame.commands.Retranslate();
    m_frame.toolBar.Retranslate();
    m_drawingBar->Retranslate();
    m_frame.periodBar.Retranslate();
    m_periodMenu->Retranslate();
    m_frame.tabs.Retranslate();
    const bool english = m_frame.session.Lang().Current() == Language::English;
    m_frame.commands.At(english ? Command::English : Command::Chinese).setChecked(true);
    m_newTabButton->setToolTip(m_frame.commands.At(Command::NewTab).toolTip());
    m_newTabButton->setAccessibleName(m_newTabButton->toolTip());
    Refresh();
}

void MainWindow::Refresh() {
    const ChartPage& chart = m_frame.tabs.Current();
    const BarsKey& shown = chart.Shown();
    const Symbol* symbol = m_frame.session.Markets().FindSymbol(shown.market, shown.symbol);
    const PeriodSet available = m_frame.tabs.AvailablePeriods();
    const int period = PeriodIndex(shown.period, shown.count);
    RefreshCommands();
    m_frame.toolBar.Symbol().Show(symbol == nullptr ? ui::ToQString(shown.symbol)
                                                    : ui::ToQString(TitleOf(*symbol)));
    m_frame.toolBar.ShowPeriods(available, period);
    m_frame.toolBar.Period().setPlaceholderText(PeriodText(chart.Period(), chart.Count()));
    m_frame.periodBar.Show(chart, available);
    m_periodMenu->Show(available, period);
    RefreshGroups();
    m_cursorText->setText(chart.CursorText());
    setWindowTitle(TitleOf(chart) + " - " + Tr("IDS_TERMINAL-FRAME_TITLE"));
}

void MainWindow::RefreshCommands() {
    const Commands& commands = m_frame.commands;
    const ChartTabs& tabs = m_frame.tabs;
    const ChartView* chart = tabs.CurrentChart();
    m_frame.commands.Offer(chart ? Needs::Chart : Needs::Comparison);
    m_drawingBar->Attach(chart ? &chart->Drawings() : nullptr);
    commands.At(Command::CloseTab).setEnabled(tabs.count() > 1);
    RefreshLayout();
    if (const ComparisonView* comparison = tabs.CurrentComparison()) {
        constexpr Command kModes[] = {Command::ComparePercent, Command::CompareIndexed,
                                      Command::ComparePrices};
        commands.At(kModes[static_cast<std::size_t>(comparison->Mode())]).setChecked(true);
    }
}

void MainWindow::RefreshLayout() {
    const Commands& commands = m_frame.commands;
    const ChartGrid& grid = m_frame.tabs.CurrentGrid();
    for (const Command command :
         {Command::NextChart, Command::PreviousChart, Command::WidenWindow, Command::NarrowWindow,
          Command::HeightenWindow, Command::LowerWindow, Command::EqualWindows}) {
        commands.At(command).setEnabled(grid.WindowCount() > 1);
    }
    commands.At(Command::SameSymbol).setChecked(grid.Links().symbol);
    commands.At(Command::SamePeriod).setChecked(grid.Links().period);
    commands.At(Command::SameCursor).setChecked(grid.Links().cursor);
}

void MainWindow::RefreshGroups() {
    QStringList names;
    for (const CString& group : GroupNames()) {
        names.append(ui::ToQString(group));
    }
    const ChartView* chart = m_frame.tabs.CurrentChart();
    m_frame.toolBar.ShowGroups(names, chart ? ui::ToQString(chart->GroupName()) : QString());
    m_frame.toolBar.Group().setEnabled(chart);
}

}  // namespace ta::terminal
