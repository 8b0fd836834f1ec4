#include "platform/ui/Prompts.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/lang/Language.h"

#include <QMainWindow>

namespace ta::terminal {

void ShowAbout(const Frame& frame) {
    ui::CurrentPrompts().Message(&frame.window, ui::PromptIcon::Information,
                                 Tr("IDS_TERMINAL-FRAME_TITLE"),
                                 Tr("IDS_TERMINAL-FRAME_ABOUT_TEXT").arg(TERMINAL_VERSION));
}

}  // namespace ta::terminal
