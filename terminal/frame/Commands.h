#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <functional>
#include <map>
#include <span>

namespace ta::terminal {

struct Frame;

enum class Command {
    OpenCsv,
    SaveSettings,
    NewTab,
    CloseTab,
    Exit,
    FindSymbol,
    HistoryData,
    ShowPeriodBar,
    ZoomIn,
    ZoomOut,
    ShowAll,
    ShowLatest,
    CursorLine,
    RisingRed,
    AxisRange,
    AxisAutomatic,
    AxisWidth,
    EdgeSpace,
    Compare,
    ComparePercent,
    CompareIndexed,
    ComparePrices,
    CompareBaseCursor,
    CompareBaseFirst,
    ViewData,
    ChooseLayout,
    NextChart,
    PreviousChart,
    WidenWindow,
    NarrowWindow,
    HeightenWindow,
    LowerWindow,
    EqualWindows,
    SameSymbol,
    SamePeriod,
    SameCursor,
    EditSettings,
    ImportGroups,
    ExportGroups,
    ImportParameters,
    ExportParameters,
    DrawPointer,
    DrawLine,
    DrawSegment,
    DrawHorizontal,
    DrawParallel,
    DrawRailLine,
    DrawGoldenCut,
    UndoLine,
    RedoLine,
    SelectLine,
    LinePen,
    LineColour,
    LockLine,
    DeleteLine,
    DeleteAllLines,
    ListLines,
    Chinese,
    English,
    About,
};

enum class MenuId {
    File,
    Chart,
    Symbols,
    Periods,
    Axes,
    Comparison,
    Layout,
    Group,
    Drawing,
    Language,
    Help,
};

/// How a command's action looks; of the languages, the tools and the modes of a comparison one each
/// is checked.
enum class Look { Plain, Checkable, Language, Tool, Mode };

/// What has to be in front for a command to be offered.
enum class Needs { Anything, Chart, Comparison };

/// All that there is to say about a command.
struct CommandRow {
    Command command;
    MenuId menu;
    const char* text;      ///< a language key
    const char* shortcut;  ///< "" for none
    void (*run)(const Frame& frame);
    bool separatorBefore = false;
    Look look = Look::Plain;
    Needs needs = Needs::Anything;
};

/// The frame's menus and the actions in them, from a table.
class Commands : public QObject {
    Q_OBJECT

public:
    using Runner = std::function<void(const CommandRow& row)>;

    /// Fills `bar` with the menus, which belong to it. `rows`, in the order of the entries, outlive
    /// this; `run` is called with the row of an action that the user triggers.
    Commands(QMenuBar& bar, std::span<const CommandRow> rows, const Runner& run,
             QObject* parent = nullptr);

    QAction& At(Command command) const { return *m_actions.at(command); }
    QMenu& At(MenuId menu) const { return *m_menus.at(menu); }

    /// Adds those of `commands` that can be used now.
    void AddTo(QMenu& menu, std::span<const Command> commands) const;
    /// Greys what does not go with the kind of chart in front.
    void Offer(Needs kind);
    /// Sets every text in the language in use.
    void Retranslate();

private:
    std::span<const CommandRow> m_rows;
    std::map<Command, QAction*> m_actions;
    std::map<MenuId, QMenu*> m_menus;
};

}  // namespace ta::terminal
