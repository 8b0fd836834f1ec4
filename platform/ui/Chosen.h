#pragma once

#include "platform/ui/DialogBase.h"

#include <QPointer>

#include <optional>

namespace ta::ui {

/// Runs `dialog`, made on the heap because the owner may take it away with its parent while the
/// user looks at it, and deletes it. What `read` takes from it after OK; nothing when it was
/// cancelled or is gone. In the latter case its parent, often the caller, may be gone as well.
template <class Dialog, class Read>
auto Chosen(Dialog* dialog, const Read& read) -> std::optional<decltype(read(*dialog))> {
    const QPointer<Dialog> watched(dialog);
    const bool isChosen = dialog->DoModal() == kIdOk;
    if (watched == nullptr) {
        return std::nullopt;
    }
    std::optional<decltype(read(*dialog))> result;
    if (isChosen) {
        result = read(*dialog);
    }
    delete dialog;
    return result;
}

}  // namespace ta::ui
