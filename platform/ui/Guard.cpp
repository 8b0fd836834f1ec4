#include "platform/ui/Guard.h"

#include "platform/ui/LangText.h"
#include "platform/ui/Prompts.h"

namespace ta::ui {

void TellFailure(QWidget* parent) noexcept {
    try {
        CurrentPrompts().Message(parent, PromptIcon::Warning, TerminalTitle(),
                                 LangText("IDS_TECHVIEW-STRING_MEMORY_ERR"));
    } catch (...) {
        // Not even memory for a message.
    }
}

}  // namespace ta::ui
