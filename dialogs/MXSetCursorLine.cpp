#include "dialogs/MXSetCursorLine.h"

#include "ui_MXSetCursorLine.h"

using namespace ta::ui;

MXSetCursorLine::MXSetCursorLine(unsigned lockStyle, unsigned displayStyle, unsigned moveStyle,
                                 QWidget* parent)
    : DialogBase(parent),
      m_uLockStyle(lockStyle),
      m_uDisplayStyle(displayStyle),
      m_uMoveStyle(moveStyle),
      m_ui(std::make_unique<Ui::MXSetCursorLine>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_display.SetRows({{0, m_ui->verticalRadio}, {1, m_ui->crossRadio, {}, true}});
    m_move.SetRows({{0, m_ui->moveRadio}, {1, m_ui->clickRadio, {}, true}});
    m_lock.SetRows({{0, m_ui->intelligentRadio, {}, true},
                    {1, m_ui->openRadio},
                    {2, m_ui->highRadio},
                    {3, m_ui->lowRadio},
                    {4, m_ui->closeRadio},
                    {5, m_ui->noneRadio}});
}

MXSetCursorLine::~MXSetCursorLine() = default;

bool MXSetCursorLine::OnInitDialog() {
    Bind(m_display, m_uDisplayStyle);
    Bind(m_move, m_uMoveStyle);
    Bind(m_lock, m_uLockStyle);
    m_display.FocusChecked();
    return true;
}

void MXSetCursorLine::Bind(RadioTable& table, unsigned& field) {
    table.SetValue(static_cast<int>(field));
    Handle(&table, &RadioTable::chosen,
           [&field](int value) { field = static_cast<unsigned>(value); });
}
