#pragma once

#include "platform/Window.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ta::test {

struct SentMessage {
    unsigned message = 0;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;

    bool operator==(const SentMessage&) const = default;
};

/// What several views got, in the order of delivery: name of the view and message.
using ViewLog = std::vector<std::pair<std::string, SentMessage>>;

/// A chart view that writes down what it is sent.
class RecordingView : public CView {
public:
    RecordingView() = default;
    /// Writes to `sharedLog` as well, which outlives this.
    RecordingView(std::string viewName, ViewLog& sharedLog)
        : name(std::move(viewName)), log(&sharedLog) {}

    std::string name;
    ViewLog* log = nullptr;
    std::vector<SentMessage> messages;
    std::function<void(const SentMessage&)> onMessage;  ///< runs after the message is written down
    std::intptr_t answer = 0;

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
        const SentMessage sent{message, wParam, lParam};
        messages.push_back(sent);
        if (log != nullptr) {
            log->emplace_back(name, sent);
        }
        if (onMessage) {
            onMessage(sent);
        }
        return answer;
    }
};

}  // namespace ta::test
