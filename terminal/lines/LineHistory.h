#pragma once

#include "terminal/lines/TrendLineStore.h"

#include <QString>
#include <QUndoStack>

#include <map>
#include <memory>
#include <vector>

namespace ta::terminal {

enum class LineAction { Draw, Move, Delete, Pen, Colour, Lock, Unlock };

/// What the user did to the lines of these edits in one step, or of those that take it back, in the
/// language in use. Several lines can be deleted only.
QString LineStepName(LineAction action, const std::vector<TrendLineEdit>& edits);

/// The edits that the user makes in one chart window, to undo and redo them: one stack for each
/// symbol and data period, so that undoing never changes what is not in view, and coming back to a
/// symbol finds its steps again. The stacks know lines by their data strings. A step whose lines
/// all were changed or deleted elsewhere since is dropped when its turn comes, and what the others
/// did stays.
class LineHistory {
public:
    /// Does the edits as one step. Nothing is kept when nothing was done.
    TrendLineResult Do(const BarsKey& chart, LineAction action,
                       const std::vector<TrendLineEdit>& edits);

    // A step that may not be taken back or done again now, as there would be more lines than
    // allowed, stays where it is.

    TrendLineResult Undo(const BarsKey& chart);
    TrendLineResult Redo(const BarsKey& chart);

    /// The name of the step that is next, in the language in use; empty when there is none.
    QString UndoName(const BarsKey& chart) const;
    QString RedoName(const BarsKey& chart) const;

private:
    class Command;

    const Command* CommandAt(const BarsKey& chart, int offset) const;
    TrendLineResult Turn(const BarsKey& chart, int offset, void (QUndoStack::*move)());

    std::map<BarsKey, std::unique_ptr<QUndoStack>> m_stacks;
};

}  // namespace ta::terminal
