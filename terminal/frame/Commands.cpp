#include "terminal/frame/Commands.h"

#include "terminal/lang/Language.h"

#include <QActionGroup>

namespace ta::terminal {
namespace {

struct MenuRow {
    MenuId menu;
    const char* text;
};

constexpr MenuRow kMenus[] = {
    {MenuId::File, "IDS_TERMINAL-FRAME_MENU_FILE"},
    {MenuId::Chart, "IDS_TERMINAL-FRAME_MENU_CHART"},
    {MenuId::Group, "IDS_TERMINAL-FRAME_MENU_GROUP"},
    {MenuId::Drawing, "IDS_TERMINAL-FRAME_MENU_DRAWING"},
    {MenuId::Language, "IDS_TERMINAL-FRAME_MENU_LANGUAGE"},
    {MenuId::Help, "IDS_TERMINAL-FRAME_MENU_HELP"},
};

constexpr MenuRow kChartSubmenus[] = {
    {MenuId::Symbols, "IDS_TERMINAL-FRAME_MENU_SYMBOLS"},
    {MenuId::Periods, "IDS_TERMINAL-FRAME_MENU_PERIODS"},
};

enum Look { kPlain, kCheckable, kLanguage, kTool };

struct CommandRow {
    Command command;
    MenuId menu;
    const char* text;
    const char* shortcut;
    Look look;
    bool separatorBefore;
};

constexpr CommandRow kCommands[] = {
    {Command::OpenCsv, MenuId::File, "IDS_TERMINAL-FRAME_OPEN_CSV", "Ctrl+O", kPlain, false},
    {Command::SaveSettings, MenuId::File, "IDS_TERMINAL-FRAME_SAVE_SETTINGS", "Ctrl+S", kPlain,
     false},
    {Command::NewTab, MenuId::File, "IDS_TERMINAL-FRAME_NEW_TAB", "Ctrl+N", kPlain, true},
    {Command::CloseTab, MenuId::File, "IDS_TERMINAL-FRAME_CLOSE_TAB", "Ctrl+W", kPlain, false},
    {Command::Exit, MenuId::File, "IDS_TERMINAL-FRAME_EXIT", "Ctrl+Q", kPlain, true},
    {Command::FindSymbol, MenuId::Chart, "IDS_TERMINAL-FRAME_FIND_SYMBOL", "Ctrl+L", kPlain, false},
    {Command::ZoomIn, MenuId::Chart, "IDS_TERMINAL-FRAME_ZOOM_IN", "Ctrl++", kPlain, true},
    {Command::ZoomOut, MenuId::Chart, "IDS_TERMINAL-FRAME_ZOOM_OUT", "Ctrl+-", kPlain, false},
    {Command::ShowAll, MenuId::Chart, "IDS_TERMINAL-FRAME_SHOW_ALL", "Ctrl+0", kPlain, false},
    {Command::ShowLatest, MenuId::Chart, "IDS_TERMINAL-FRAME_SHOW_LATEST", "Ctrl+End", kPlain,
     false},
    {Command::RisingRed, MenuId::Chart, "IDS_TERMINAL-FRAME_RISING_RED", "", kCheckable, true},
    {Command::EditSettings, MenuId::Group, "IDS_TERMINAL-FRAME_SETTINGS", "Ctrl+T", kPlain, false},
    {Command::ImportGroups, MenuId::Group, "IDS_TERMINAL-FRAME_GROUP_IMPORT", "Ctrl+Shift+I",
     kPlain, true},
    {Command::ExportGroups, MenuId::Group, "IDS_TERMINAL-FRAME_GROUP_EXPORT", "Ctrl+Shift+E",
     kPlain, false},
    {Command::DrawPointer, MenuId::Drawing, "IDS_TERMINAL-FRAME_DRAW_POINTER", "", kTool, false},
    {Command::DrawLine, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_LINE", "Alt+1", kTool,
     true},
    {Command::DrawSegment, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_LINESEGMENT", "Alt+2",
     kTool, false},
    {Command::DrawHorizontal, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_HORIZONTAL",
     "Alt+3", kTool, false},
    {Command::DrawParallel, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_PARALLEL", "Alt+4",
     kTool, false},
    {Command::DrawRailLine, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_RAILLINE", "Alt+5",
     kTool, false},
    {Command::DrawGoldenCut, MenuId::Drawing, "IDC_TECHVIEW-TRENDLINE_TRENDNAME_GOLDEN_CUT",
     "Alt+6", kTool, false},
    {Command::SelectLine, MenuId::Drawing, "IDS_TERMINAL-FRAME_LINE_SELECT", "Ctrl+Shift+L", kPlain,
     true},
    {Command::DeleteLine, MenuId::Drawing, "IDS_TERMINAL-CHART_LINE_DELETE", "Del", kPlain, false},
    {Command::DeleteAllLines, MenuId::Drawing, "IDS_TERMINAL-CHART_LINES_DELETE_ALL", "", kPlain,
     false},
    {Command::ListLines, MenuId::Drawing, "IDS_TERMINAL-FRAME_LINES_LIST", "Ctrl+Shift+T", kPlain,
     true},
    {Command::Chinese, MenuId::Language, "IDS_TERMINAL-FRAME_CHINESE", "", kLanguage, false},
    {Command::English, MenuId::Language, "IDS_TERMINAL-FRAME_ENGLISH", "", kLanguage, false},
    {Command::About, MenuId::Help, "IDS_TERMINAL-FRAME_ABOUT", "", kPlain, false},
};

/// A command's text as a button shows it: without the mnemonic, which may stand in brackets.
QString ButtonText(QString text) {
    const qsizetype bracket = text.indexOf("(&");
    if (bracket >= 0) {
        text.remove(bracket, 4);
    }
    return text.remove('&').remove("...");
}

QString ToolTip(const QAction& action) {
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    return keys.isEmpty() ? action.iconText() : QString("%1 (%2)").arg(action.iconText(), keys);
}

}  // namespace

Commands::Commands(QMenuBar& bar, QObject* parent) : QObject(parent) {
    for (const MenuRow& row : kMenus) {
        m_menus[row.menu] = bar.addMenu(QString());
    }
    for (const MenuRow& row : kChartSubmenus) {
        m_menus[row.menu] = At(MenuId::Chart).addMenu(QString());
    }
    std::map<Look, QActionGroup*> exclusive{{kLanguage, new QActionGroup(this)},
                                            {kTool, new QActionGroup(this)}};
    for (const CommandRow& row : kCommands) {
        QMenu& menu = At(row.menu);
        if (row.separatorBefore) {
            menu.addSeparator();
        }
        QAction* action = menu.addAction(QString());
        action->setShortcut(QKeySequence(row.shortcut));
        action->setCheckable(row.look != kPlain);
        if (exclusive.contains(row.look)) {
            exclusive[row.look]->addAction(action);
        }
        connect(action, &QAction::triggered, this,
                [this, command = row.command] { emit triggered(command); });
        m_actions[row.command] = action;
    }
    Retranslate();
}

void Commands::Retranslate() {
    for (const MenuRow& row : kMenus) {
        At(row.menu).setTitle(Tr(row.text));
    }
    for (const MenuRow& row : kChartSubmenus) {
        At(row.menu).setTitle(Tr(row.text));
    }
    for (const CommandRow& row : kCommands) {
        QAction& action = At(row.command);
        action.setText(Tr(row.text));
        action.setIconText(ButtonText(action.text()));
        action.setToolTip(ToolTip(action));
    }
}

}  // namespace ta::terminal
