#include "terminal/frame/Commands.h"

#include "platform/ui/LangText.h"
#include "terminal/lang/Language.h"

#include <QActionGroup>

#include <optional>

namespace ta::terminal {
namespace {

struct MenuRow {
    MenuId menu;
    const char* text;
    std::optional<MenuId> within = std::nullopt;  ///< the menu bar without it
};

constexpr MenuRow kMenus[] = {
    {MenuId::File, "IDS_TERMINAL-FRAME_MENU_FILE"},
    {MenuId::Chart, "IDS_TERMINAL-FRAME_MENU_CHART"},
    {MenuId::Layout, "IDS_TERMINAL-FRAME_MENU_LAYOUT"},
    {MenuId::Group, "IDS_TERMINAL-FRAME_MENU_GROUP"},
    {MenuId::Drawing, "IDS_TERMINAL-FRAME_MENU_DRAWING"},
    {MenuId::Language, "IDS_TERMINAL-FRAME_MENU_LANGUAGE"},
    {MenuId::Help, "IDS_TERMINAL-FRAME_MENU_HELP"},
    {MenuId::Symbols, "IDS_TERMINAL-FRAME_MENU_SYMBOLS", MenuId::Chart},
    {MenuId::Periods, "IDS_TERMINAL-FRAME_MENU_PERIODS", MenuId::Chart},
    {MenuId::Axes, "IDS_TERMINAL-FRAME_MENU_AXES", MenuId::Chart},
    {MenuId::Comparison, "IDS_TERMINAL-FRAME_MENU_COMPARISON", MenuId::Chart},
};

QString ToolTip(const QAction& action) {
    const QString keys = action.shortcut().toString(QKeySequence::NativeText);
    return keys.isEmpty() ? action.iconText() : QString("%1 (%2)").arg(action.iconText(), keys);
}

}  // namespace

Commands::Commands(QMenuBar& bar, std::span<const CommandRow> rows, const Runner& run,
                   QObject* parent)
    : QObject(parent), m_rows(rows) {
    for (const MenuRow& row : kMenus) {
        m_menus[row.menu] =
            row.within ? At(*row.within).addMenu(QString()) : bar.addMenu(QString());
    }
    std::map<Look, QActionGroup*> exclusive{{Look::Language, new QActionGroup(this)},
                                            {Look::Tool, new QActionGroup(this)},
                                            {Look::Mode, new QActionGroup(this)}};
    for (const CommandRow& row : m_rows) {
        QMenu& menu = At(row.menu);
        if (row.separatorBefore) {
            menu.addSeparator();
        }
        QAction* action = menu.addAction(QString());
        action->setShortcut(QKeySequence(row.shortcut));
        action->setCheckable(row.look != Look::Plain);
        if (exclusive.contains(row.look)) {
            exclusive[row.look]->addAction(action);
        }
        connect(action, &QAction::triggered, this, [&row, run] { run(row); });
        m_actions[row.command] = action;
    }
    Retranslate();
}

void Commands::AddTo(QMenu& menu, std::span<const Command> commands) const {
    menu.addSeparator();
    for (const Command command : commands) {
        if (At(command).isEnabled()) {
            menu.addAction(&At(command));
        }
    }
}

void Commands::Offer(Needs kind) {
    for (const CommandRow& row : m_rows) {
        if (row.needs != Needs::Anything) {
            At(row.command).setEnabled(row.needs == kind);
        }
    }
}

void Commands::Retranslate() {
    for (const MenuRow& row : kMenus) {
        At(row.menu).setTitle(Tr(row.text));
    }
    for (const CommandRow& row : m_rows) {
        QAction& action = At(row.command);
        action.setText(Tr(row.text));
        action.setIconText(ui::WithoutMnemonic(action.text()).remove("..."));
        action.setToolTip(ToolTip(action));
    }
}

}  // namespace ta::terminal
