#include "dialogs/MXSetPenStyleWidthDlg.h"
#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/LinePens.h"

#include <algorithm>

// The selected line, and what is done to lines that are there.

namespace ta::terminal {

// ---- The selection ----

int DrawingBoard::Selected() const {
    const auto found = std::ranges::find(m_lines, m_selected, &StoredLine::data);
    return found == m_lines.end() ? -1 : static_cast<int>(found - m_lines.begin());
}

const DrawingBoard::StoredLine* DrawingBoard::SelectedStored() const {
    const int index = Selected();
    return index < 0 ? nullptr : &m_lines[static_cast<std::size_t>(index)];
}

const TrendLine* DrawingBoard::SelectedLine() const {
    const StoredLine* selected = SelectedStored();
    return selected ? &selected->line : nullptr;
}

void DrawingBoard::Select(const CString& data) {
    m_selected = data;
    if (Selected() < 0) {
        m_selected.clear();
    }
    Repaint();
    emit changed();
}

void DrawingBoard::SelectNext() {
    if (!m_lines.empty()) {
        const auto next = static_cast<std::size_t>(Selected() + 1);
        Select(CString(m_lines[next % m_lines.size()].data));
    }
}

// ---- Its looks and its lock ----

void DrawingBoard::Replace(const StoredLine& from, const TrendLine& to, LineAction action) {
    if (to == from.line) {
        return;
    }
    const CString data = EncodeTrendLine(to);
    const bool gone = m_history.Do(m_chart, action, {{from.data, data}}).missing > 0;
    if (gone) {
        Reload();
    }
    Select(data);
    if (gone) {
        emit notice(Tr("IDS_TERMINAL-CHART_LINE_GONE"));
    }
}

void DrawingBoard::TakePen(const StoredLine& line, const LinePen& pen, LineAction action) {
    if (LinePens* pens = LinePens::Instance()) {
        pens->Remember(line.line.kind, pen);
    }
    TrendLine changed = line.line;
    changed.pen = pen;
    Replace(line, changed, action);
}

void DrawingBoard::ChangePen() {
    if (const StoredLine* selected = SelectedStored()) {
        const StoredLine line = *selected;
        LinePen pen = line.line.pen;
        const QString kind = TrendLineKindName(static_cast<int>(line.line.kind));
        MXSetPenStyleWidthDlg dialog(pen.style, pen.width, ui::FromQString(kind), &m_view);
        if (dialog.DoModal() == ui::kIdOk) {
            pen.style = dialog.m_nStyle;
            pen.width = dialog.m_nWidth;
            TakePen(line, pen, LineAction::Pen);
        }
    }
}

void DrawingBoard::ChangeColour() {
    if (const StoredLine* selected = SelectedStored()) {
        const StoredLine line = *selected;
        LinePen pen = line.line.pen;
        const QColor colour = ui::CurrentPrompts().AskColour(
            &m_view, TrendLineKindName(static_cast<int>(line.line.kind)),
            QColor::fromRgb(pen.colour));
        if (colour.isValid()) {
            pen.colour = colour.rgb() & 0xffffff;
            TakePen(line, pen, LineAction::Colour);
        }
    }
}

void DrawingBoard::LockSelected(bool lock) {
    if (const StoredLine* selected = SelectedStored()) {
        const StoredLine before = *selected;
        TrendLine line = before.line;
        line.locked = lock;
        Replace(before, line, lock ? LineAction::Lock : LineAction::Unlock);
    }
}

void DrawingBoard::ToggleLock() {
    if (const TrendLine* selected = SelectedLine()) {
        LockSelected(!selected->locked);
    }
}

// ---- Deleting ----

void DrawingBoard::DeleteSelected() {
    const StoredLine* selected = SelectedStored();
    if (selected == nullptr) {
        return;
    }
    if (selected->line.locked) {
        emit notice(Tr("IDS_TERMINAL-CHART_LINE_LOCKED"));
        return;
    }
    DeleteAndTell(m_chart, {selected->data});
}

void DrawingBoard::DeleteAll() {
    std::vector<CString> agreed;
    for (const StoredLine& stored : m_lines) {
        if (std::ranges::find(agreed, stored.data) == agreed.end()) {
            agreed.push_back(stored.data);
        }
    }
    const BarsKey chart = m_chart;
    if (!agreed.empty() &&
        ui::CurrentPrompts().AskYesNo(
            &m_view, ui::PromptIcon::Question, Tr("IDS_TERMINAL-FRAME_TITLE"),
            Tr("IDS_TERMINAL-CHART_LINES_ASK_DELETE_ALL").arg(agreed.size())) == ui::Answer::Yes) {
        DeleteAndTell(chart, agreed);
    }
}

void DrawingBoard::DeleteAndTell(const BarsKey& chart, const std::vector<CString>& lines) {
    const int missing = DeleteLines(chart, lines);
    if (missing > 0) {
        emit notice(MissingText(lines, missing));
    }
}

int DrawingBoard::DeleteLines(const BarsKey& chart, const std::vector<CString>& lines) {
    m_move.reset();
    const int missing = m_history.Do(chart, LineAction::Delete, Removing(lines)).missing;
    emit changed();
    return missing;
}

QString DrawingBoard::MissingText(const std::vector<CString>& lines, int missing) {
    if (lines.size() == 1) {
        return Tr("IDS_TERMINAL-CHART_LINE_GONE");
    }
    const QString name = LineStepName(LineAction::Delete, Removing(lines));
    return missing == std::ssize(lines)
               ? Tr("IDS_TERMINAL-CHART_STEP_GONE").arg(name)
               : Tr("IDS_TERMINAL-CHART_STEP_PARTLY_GONE").arg(name).arg(missing);
}

// ---- Undo ----

void DrawingBoard::Undo() {
    Turn(&LineHistory::Undo, UndoName(), "IDS_TERMINAL-CHART_UNDONE");
}

void DrawingBoard::Redo() {
    Turn(&LineHistory::Redo, RedoName(), "IDS_TERMINAL-CHART_REDONE");
}

void DrawingBoard::Turn(TrendLineResult (LineHistory::*turn)(const BarsKey&), const QString& name,
                        const char* doneKey) {
    if (m_tool.AnchorsPlaced() > 0 || m_move) {
        Cancel();
        return;
    }
    if (name.isEmpty()) {
        return;
    }
    const TrendLineResult result = (m_history.*turn)(m_chart);
    if (!result.back.empty()) {
        Select(result.back.size() == 1 ? result.back[0].from : CString());
    } else {
        emit changed();
    }
    if (result.adding != TrendLineAdding::Added) {
        TellLimit(result.adding, result.limit);
    } else if (result.back.empty()) {
        emit notice(Tr("IDS_TERMINAL-CHART_STEP_GONE").arg(name));
    } else if (result.missing > 0) {
        emit notice(Tr("IDS_TERMINAL-CHART_STEP_PARTLY_GONE").arg(name).arg(result.missing));
    } else {
        emit notice(Tr(doneKey).arg(name));
    }
}

}  // namespace ta::terminal
