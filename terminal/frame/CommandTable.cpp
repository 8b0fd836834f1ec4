#include "terminal/frame/CommandTable.h"

#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/compare/ComparisonView.h"
#include "terminal/frame/ChartGrid.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/FrameToolBar.h"
#include "terminal/frame/PeriodBar.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/lines/DrawingBoard.h"

#include <QMainWindow>

namespace ta::terminal {
namespace {

template <void (ChartTabs::*action)()>
void OnTabs(const Frame& frame) {
    (frame.tabs.*action)();
}

template <void (ChartPage::*action)()>
void OnChart(const Frame& frame) {
    (frame.tabs.Current().*action)();
}

/// The board of the chart in front, which gets the keys.
DrawingBoard& Board(const Frame& frame) {
    ChartView& chart = *frame.tabs.CurrentChart();
    chart.setFocus();
    return chart.Drawings();
}

template <void (DrawingBoard::*action)()>
void OnLines(const Frame& frame) {
    (Board(frame).*action)();
}

template <TrendLineKind kind>
void Draw(const Frame& frame) {
    Board(frame).ChooseTool(kind);
}

void Point(const Frame& frame) {
    Board(frame).ChooseTool(std::nullopt);
}

template <ComparisonMode mode>
void CountIn(const Frame& frame) {
    frame.tabs.CurrentComparison()->SetMode(mode);
}

void TakeBaseFromCursor(const Frame& frame) {
    frame.tabs.CurrentComparison()->TakeBaseFromCursor();
}

void TakeFirstAsBase(const Frame& frame) {
    frame.tabs.CurrentComparison()->SetBaseDate(0);
}

template <bool ChartLinkSwitches::*link, Command command>
void Link(const Frame& frame) {
    ChartGrid& grid = frame.tabs.CurrentGrid();
    ChartLinkSwitches switches = grid.Links();
    switches.*link = frame.commands.At(command).isChecked();
    grid.SetLinks(switches);
}

template <Qt::Orientation orientation, int steps>
void Resize(const Frame& frame) {
    frame.tabs.CurrentGrid().ResizeActive(orientation, steps);
}

void MakeWindowsEqual(const Frame& frame) {
    frame.tabs.CurrentGrid().ResetDividers();
}

template <Language::Id language>
void Speak(const Frame& frame) {
    frame.session.Lang().Select(language);
}

void SaveSettings(const Frame&) {
    Repository().SaveAllGroupSetting();
}

void Exit(const Frame& frame) {
    frame.window.close();
}

void FindSymbol(const Frame& frame) {
    frame.toolBar.Symbol().setFocus(Qt::ShortcutFocusReason);
}

void TakeRisingRed(const Frame& frame) {
    frame.tabs.SetRisingRed(frame.commands.At(Command::RisingRed).isChecked());
}

void ShowPeriodBar(const Frame& frame) {
    frame.periodBar.setVisible(frame.commands.At(Command::ShowPeriodBar).isChecked());
}

constexpr CommandRow kRows[] = {
    {Command::OpenCsv, MenuId::File, "IDS_TERMINAL-FRAME_OPEN_CSV", "Ctrl+O", OpenPriceFile},
    {Command::SaveSettings, MenuId::File, "IDS_TERMINAL-FRAME_SAVE_SETTINGS", "Ctrl+S",
     SaveSettings},
    {Command::NewTab, MenuId::File, "IDS_TERMINAL-FRAME_NEW_TAB", "Ctrl+N",
     OnTabs<&ChartTabs::AddCopy>, true},
    {Command::CloseTab, MenuId::File, "IDS_TERMINAL-FRAME_CLOSE_TAB", "Ctrl+W",
     OnTabs<&ChartTabs::CloseCurrent>},
    {Command::Exit, MenuId::File, "IDS_TERMINAL-FRAME_EXIT", "Ctrl+Q", Exit, true},
    {Command::FindSymbol, MenuId::Chart, "IDS_TERMINAL-FRAME_FIND_SYMBOL", "Ctrl+L", FindSymbol},
    {Command::HistoryData, MenuId::Chart, "IDS_TERMINAL-FRAME_HISTORY_DATA", "Ctrl+D", SetHistory},
    {Command::ShowPeriodBar, MenuId::Chart, "IDS_TERMINAL-FRAME_PERIOD_BAR", "Ctrl+Shift+D",
     ShowPeriodBar, false, Look::Checkable},
    {Command::ZoomIn, MenuId::Chart, "IDS_TERMINAL-FRAME_ZOOM_IN", "Ctrl++",
     OnChart<&ChartPage::ZoomIn>, true},
    {Command::ZoomOut, MenuId::Chart, "IDS_TERMINAL-FRAME_ZOOM_OUT", "Ctrl+-",
     OnChart<&ChartPage::ZoomOut>},
    {Command::ShowAll, MenuId::Chart, "IDS_TERMINAL-FRAME_SHOW_ALL", "Ctrl+0",
     OnChart<&ChartPage::ShowAll>},
    {Command::ShowLatest, MenuId::Chart, "IDS_TERMINAL-FRAME_SHOW_LATEST", "Ctrl+End",
     OnChart<&ChartPage::ShowLatest>},
    {Command::CursorLine, MenuId::Chart, "IDS_TERMINAL-FRAME_CURSOR_LINE", "Ctrl+Shift+C",
     SetCursorLine, true, Look::Plain, Needs::Chart},
    {Command::RisingRed, MenuId::Chart, "IDS_TERMINAL-FRAME_RISING_RED", "", TakeRisingRed, false,
     Look::Checkable},
    {Command::AxisRange, MenuId::Axes, "IDS_TERMINAL-FRAME_AXIS_RANGE", "Ctrl+R", SetValueRange},
    {Command::AxisAutomatic, MenuId::Axes, "IDS_TERMINAL-FRAME_AXIS_AUTOMATIC", "Ctrl+Shift+A",
     MakeRangesAutomatic},
    {Command::AxisWidth, MenuId::Axes, "IDS_TERMINAL-FRAME_AXIS_WIDTH", "Ctrl+Shift+Y",
     SetAxisWidth, true},
    {Command::EdgeSpace, MenuId::Axes, "IDS_TERMINAL-FRAME_AXIS_EDGE", "Ctrl+Shift+G",
     SetEdgeSpace},
    {Command::ViewData, MenuId::Chart, "IDS_TERMINAL-FRAME_VIEW_DATA", "Ctrl+B", ViewData, true},
    {Command::Compare, MenuId::Chart, "IDS_TERMINAL-FRAME_COMPARE", "Ctrl+K", CompareSymbols},
    {Command::ComparePercent, MenuId::Comparison, "IDS_TERMINAL-FRAME_COMPARE_PERCENT",
     "Ctrl+Shift+P", CountIn<ComparisonMode::Percent>, false, Look::Mode, Needs::Comparison},
    {Command::CompareIndexed, MenuId::Comparison, "IDS_TERMINAL-FRAME_COMPARE_INDEXED",
     "Ctrl+Shift+X", CountIn<ComparisonMode::Indexed>, false, Look::Mode, Needs::Comparison},
    {Command::ComparePrices, MenuId::Comparison, "IDS_TERMINAL-FRAME_COMPARE_PRICES",
     "Ctrl+Shift+R", CountIn<ComparisonMode::Prices>, false, Look::Mode, Needs::Comparison},
    {Command::CompareBaseCursor, MenuId::Comparison, "IDS_TERMINAL-FRAME_COMPARE_BASE_CURSOR",
     "Ctrl+Shift+B", TakeBaseFromCursor, true, Look::Plain, Needs::Comparison},
    {Command::CompareBaseFirst, MenuId::Comparison, "IDS_TERMINAL-FRAME_COMPARE_BASE_FIRST",
     "Ctrl+Shift+Home", TakeFirstAsBase, false, Look::Plain, Needs::Comparison},
    {Command::ChooseLayout, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT", "Ctrl+Shift+W",
     ChooseLayout, false, Look::Plain, Needs::Chart},
    {Command::NextChart, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_NEXT", "F6",
     OnTabs<&ChartTabs::FocusNextChart>},
    {Command::PreviousChart, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_PREVIOUS", "Shift+F6",
     OnTabs<&ChartTabs::FocusPreviousChart>},
    {Command::WidenWindow, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_WIDER", "Ctrl+Shift+Right",
     Resize<Qt::Horizontal, 1>, true},
    {Command::NarrowWindow, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_NARROWER", "Ctrl+Shift+Left",
     Resize<Qt::Horizontal, -1>},
    {Command::HeightenWindow, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_HIGHER", "Ctrl+Shift+Up",
     Resize<Qt::Vertical, 1>},
    {Command::LowerWindow, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_LOWER", "Ctrl+Shift+Down",
     Resize<Qt::Vertical, -1>},
    {Command::EqualWindows, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_EQUAL", "Ctrl+Shift+M",
     MakeWindowsEqual},
    {Command::SameSymbol, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_SAME_SYMBOL", "",
     Link<&ChartLinkSwitches::symbol, Command::SameSymbol>, true, Look::Checkable, Needs::Chart},
    {Command::SamePeriod, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_SAME_PERIOD", "",
     Link<&ChartLinkSwitches::period, Command::SamePeriod>, false, Look::Checkable, Needs::Chart},
    {Command::SameCursor, MenuId::Layout, "IDS_TERMINAL-FRAME_LAYOUT_SAME_CURSOR", "",
     Link<&ChartLinkSwitches::cursor, Command::SameCursor>, false, Look::Checkable, Needs::Chart},
    {Command::EditSettings, MenuId::Group, "IDS_TERMINAL-FRAME_SETTINGS", "Ctrl+T", EditGroups,
     false, Look::Plain, Needs::Chart},
    {Command::ImportGroups, MenuId::Group, "IDS_TERMINAL-FRAME_GROUP_IMPORT", "Ctrl+Shift+I",
     ImportGroups, true},
    {Command::ExportGroups, MenuId::Group, "IDS_TERMINAL-FRAME_GROUP_EXPORT", "Ctrl+Shift+E",
     ExportGroups},
    {Command::ImportParameters, MenuId::Group, "IDS_TERMINAL-PARAMETERS_IMPORT", "Ctrl+Shift+O",
     ImportParameters, true, Look::Plain, Needs::Chart},
    {Command::ExportParameters, MenuId::Group, "IDS_TERMINAL-PARAMETERS_EXPORT", "Ctrl+Shift+S",
     ExportParameters, false, Look::Plain, Needs::Chart},
    {Command::DrawPointer, MenuId::Drawing, "IDS_TERMINAL-FRAME_DRAW_POINTER", "", Point, false,
     Look::Tool},
    {Command::DrawLine, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_LINE", "Alt+1",
     Draw<TrendLineKind::Line>, true, Look::Tool},
    {Command::DrawSegment, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_LINESEGMENT", "Alt+2",
     Draw<TrendLineKind::Segment>, false, Look::Tool},
    {Command::DrawHorizontal, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_HORIZONTAL",
     "Alt+3", Draw<TrendLineKind::Horizontal>, false, Look::Tool},
    {Command::DrawParallel, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_PARALLEL", "Alt+4",
     Draw<TrendLineKind::Parallel>, false, Look::Tool},
    {Command::DrawRailLine, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_RAILLINE", "Alt+5",
     Draw<TrendLineKind::RailLine>, false, Look::Tool},
    {Command::DrawGoldenCut, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDEN_CUT",
     "Alt+6", Draw<TrendLineKind::GoldenCut>, false, Look::Tool},
    {Command::UndoLine, MenuId::Drawing, "IDS_TERMINAL-CHART_UNDO", "Ctrl+Z",
     OnLines<&DrawingBoard::Undo>, true},
    {Command::RedoLine, MenuId::Drawing, "IDS_TERMINAL-CHART_REDO", "Ctrl+Shift+Z",
     OnLines<&DrawingBoard::Redo>},
    {Command::SelectLine, MenuId::Drawing, "IDS_TERMINAL-FRAME_LINE_SELECT", "Ctrl+Shift+L",
     OnLines<&DrawingBoard::SelectNext>, true},
    {Command::LinePen, MenuId::Drawing, "IDS_TERMINAL-CHART_LINE_PEN", "Ctrl+P",
     OnLines<&DrawingBoard::ChangePen>},
    {Command::LineColour, MenuId::Drawing, "IDS_TERMINAL-CHART_LINE_COLOUR", "Ctrl+Shift+H",
     OnLines<&DrawingBoard::ChangeColour>},
    {Command::LockLine, MenuId::Drawing, "IDS_TERMINAL-CHART_LINE_LOCK", "Ctrl+Shift+K",
     OnLines<&DrawingBoard::ToggleLock>, false, Look::Checkable},
    {Command::DeleteLine, MenuId::Drawing, "IDS_TERMINAL-CHART_LINE_DELETE", "Del",
     OnLines<&DrawingBoard::DeleteSelected>},
    {Command::DeleteAllLines, MenuId::Drawing, "IDS_TERMINAL-CHART_LINES_DELETE_ALL", "",
     OnLines<&DrawingBoard::DeleteAll>},
    {Command::ListLines, MenuId::Drawing, "IDS_TERMINAL-FRAME_LINES_LIST", "Ctrl+Shift+T",
     ListLines, true},
    {Command::Chinese, MenuId::Language, "IDS_TERMINAL-FRAME_CHINESE", "",
     Speak<Language::TraditionalChinese>, false, Look::Language},
    {Command::English, MenuId::Language, "IDS_TERMINAL-FRAME_ENGLISH", "", Speak<Language::English>,
     false, Look::Language},
    {Command::About, MenuId::Help, "IDS_TERMINAL-FRAME_ABOUT", "", ShowAbout},
};

constexpr Command kChartMenu[] = {Command::CursorLine, Command::HistoryData, Command::ViewData,
                                  Command::Compare, Command::EditSettings};

}  // namespace

std::span<const CommandRow> CommandTable() {
    return kRows;
}

std::span<const Command> ChartMenu() {
    return kChartMenu;
}

}  // namespace ta::terminal
