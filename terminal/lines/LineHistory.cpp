#include "terminal/lines/LineHistory.h"

#include "terminal/lang/Language.h"

#include <utility>

namespace ta::terminal {
namespace {

const char* NameKey(LineAction action) {
    switch (action) {
        case LineAction::Draw:
            return "IDS_TERMINAL-CHART_STEP_DRAW";
        case LineAction::Move:
            return "IDS_TERMINAL-CHART_STEP_MOVE";
        case LineAction::Delete:
            return "IDS_TERMINAL-CHART_STEP_DELETE";
        case LineAction::Pen:
            return "IDS_TERMINAL-CHART_STEP_PEN";
        case LineAction::Colour:
            return "IDS_TERMINAL-CHART_STEP_COLOUR";
        case LineAction::Lock:
            return "IDS_TERMINAL-CHART_STEP_LOCK";
        case LineAction::Unlock:
            return "IDS_TERMINAL-CHART_STEP_UNLOCK";
    }
    return "";
}

QString KindNameOf(const TrendLineEdit& edit) {
    int kind = 0;
    const bool isLine = IsTrendLine(edit.to.empty() ? edit.from : edit.to, kind);
    return TrendLineKindName(isLine ? kind : 0);
}

}  // namespace

QString LineStepName(LineAction action, const std::vector<TrendLineEdit>& edits) {
    return edits.size() == 1 ? Tr(NameKey(action)).arg(KindNameOf(edits[0]))
                             : Tr("IDS_TERMINAL-CHART_STEP_DELETE_LINES").arg(edits.size());
}

/// A step that was done: what takes it back, and when that was done, what does it again.
class LineHistory::Command : public QUndoCommand {
public:
    Command(LineAction action, std::vector<TrendLineEdit> back)
        : m_action(action), m_back(std::make_shared<std::vector<TrendLineEdit>>(std::move(back))) {}

    QString Name() const { return LineStepName(m_action, *m_back); }
    std::vector<TrendLineEdit>& Back() const { return *m_back; }

    // The edits are done before the stack moves, which they may keep from doing.
    void undo() override { setObsolete(m_back->empty()); }
    void redo() override { setObsolete(m_back->empty()); }

private:
    LineAction m_action;
    std::shared_ptr<std::vector<TrendLineEdit>> m_back;  // the stack shows commands as constant
};

TrendLineResult LineHistory::Do(const BarsKey& chart, LineAction action,
                                const std::vector<TrendLineEdit>& edits) {
    TrendLineResult result = EditTrendLines(chart, edits);
    if (!result.back.empty()) {
        std::unique_ptr<QUndoStack>& stack = m_stacks[chart];
        if (!stack) {
            stack = std::make_unique<QUndoStack>();
        }
        stack->push(new Command(action, result.back));
    }
    return result;
}

/// The command at a distance from the stack's place; null when there is none.
const LineHistory::Command* LineHistory::CommandAt(const BarsKey& chart, int offset) const {
    const auto found = m_stacks.find(chart);
    return found == m_stacks.end() ? nullptr
                                   : static_cast<const Command*>(
                                         found->second->command(found->second->index() + offset));
}

TrendLineResult LineHistory::Turn(const BarsKey& chart, int offset, void (QUndoStack::*move)()) {
    const Command* command = CommandAt(chart, offset);
    if (command == nullptr) {
        return {};
    }
    TrendLineResult result = EditTrendLines(chart, command->Back());
    if (result.adding == TrendLineAdding::Added) {
        command->Back() = result.back;
        (m_stacks[chart].get()->*move)();
    }
    return result;
}

TrendLineResult LineHistory::Undo(const BarsKey& chart) {
    return Turn(chart, -1, &QUndoStack::undo);
}

TrendLineResult LineHistory::Redo(const BarsKey& chart) {
    return Turn(chart, 0, &QUndoStack::redo);
}

QString LineHistory::UndoName(const BarsKey& chart) const {
    const Command* command = CommandAt(chart, -1);
    return command ? command->Name() : QString();
}

QString LineHistory::RedoName(const BarsKey& chart) const {
    const Command* command = CommandAt(chart, 0);
    return command ? command->Name() : QString();
}

}  // namespace ta::terminal
