#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/RadioTable.h"

#include <memory>

namespace Ui {
class MXSetCursorLine;
}

/// Asks how the price cursor of a chart is drawn, how it moves and to which price it locks. Modal;
/// the caller reads the fields after DoModal gave kIdOk. After kIdCancel they may hold what the
/// user had clicked, and the caller keeps his own values. Nothing is stored.
class TADIALOGS_EXPORT MXSetCursorLine : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// The arguments are the fields' first values. Any value is taken, and given back until the
    /// user clicks: an unknown lock style is shown as 0, an unknown display or move style as 1.
    MXSetCursorLine(unsigned lockStyle, unsigned displayStyle, unsigned moveStyle,
                    QWidget* parent = nullptr);
    ~MXSetCursorLine() override;

    unsigned m_uLockStyle;     ///< 0 intelligent, 1 open, 2 high, 3 low, 4 close, 5 no lock
    unsigned m_uDisplayStyle;  ///< 0 vertical line only, 1 cross-hair
    unsigned m_uMoveStyle;     ///< 0 follows the mouse, 1 jumps to where the user clicks

protected:
    bool OnInitDialog() override;

private:
    /// Shows the field's value; what the user clicks is in it at once.
    void Bind(ta::ui::RadioTable& table, unsigned& field);

    std::unique_ptr<Ui::MXSetCursorLine> m_ui;
    ta::ui::RadioTable m_lock;
    ta::ui::RadioTable m_display;
    ta::ui::RadioTable m_move;
};
