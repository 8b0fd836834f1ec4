#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <map>

namespace ta::terminal {

enum class Command {
    OpenCsv,
    SaveSettings,
    NewTab,
    CloseTab,
    Exit,
    FindSymbol,
    ZoomIn,
    ZoomOut,
    ShowAll,
    ShowLatest,
    RisingRed,
    EditSettings,
    ImportGroups,
    ExportGroups,
    DrawPointer,
    DrawLine,
    DrawSegment,
    DrawHorizontal,
    DrawParallel,
    DrawRailLine,
    DrawGoldenCut,
    SelectLine,
    DeleteLine,
    DeleteAllLines,
    ListLines,
    Chinese,
    English,
    About,
};

enum class MenuId { File, Chart, Symbols, Periods, Group, Drawing, Language, Help };

/// The frame's menus and the actions in them, from one table.
class Commands : public QObject {
    Q_OBJECT

public:
    /// Fills `bar` with the menus, which belong to it.
    explicit Commands(QMenuBar& bar, QObject* parent = nullptr);

    QAction& At(Command command) const { return *m_actions.at(command); }
    QMenu& At(MenuId menu) const { return *m_menus.at(menu); }

    /// Sets every text in the language in use.
    void Retranslate();

signals:
    void triggered(ta::terminal::Command command);

private:
    std::map<Command, QAction*> m_actions;
    std::map<MenuId, QMenu*> m_menus;
};

}  // namespace ta::terminal
