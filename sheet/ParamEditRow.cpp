#include "sheet/ParamEditRow.h"

#include "platform/Rounding.h"
#include "platform/ui/LangText.h"
#include "sheet/ParamText.h"
#include "sheet/ValueEdit.h"

#include <QGridLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace ta::sheet {
namespace {

using ui::LangText;

enum Column { kName, kValue, kRange, kDefault, kMark, kRevert };

QLabel* PlainLabel(const QString& text, QWidget& parent) {
    auto* label = new QLabel(text, &parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

RevertControls::RevertControls(const QString& tip, QWidget& parent)
    : mark(new QLabel("●", &parent)), button(new QToolButton(&parent)) {
    mark->setToolTip(LangText("IDS_TADIALOGS-SHEET_DIFFERS"));
    button->setText(LangText("IDS_TADIALOGS-SHEET_REVERT"));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFocusPolicy(Qt::StrongFocus);
    for (QWidget* widget : {static_cast<QWidget*>(mark), static_cast<QWidget*>(button)}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
    }
}

void RevertControls::SetDiffers(bool differs) {
    mark->setVisible(differs);
    button->setVisible(differs);
}

void ParamEditRow::AddHeads(QGridLayout& grid) {
    QWidget& parent = *grid.parentWidget();
    grid.addWidget(PlainLabel(LangText("IDS_TADIALOGS-SHEET_VALUE"), parent), 0, kValue);
    grid.addWidget(PlainLabel(LangText("IDS_TADIALOGS-SHEET_RANGE"), parent), 0, kRange);
    grid.addWidget(PlainLabel(LangText("IDS_TADIALOGS-SHEET_DEFAULT"), parent), 0, kDefault);
    grid.setColumnStretch(kRevert + 1, 1);
}

ParamEditRow::ParamEditRow(const ParamRow& row, QGridLayout& grid, int gridRow)
    : QObject(grid.parentWidget()),
      m_info(row.info),
      m_value(new ValueEdit(row.info, grid.parentWidget())),
      m_revert(LangText("IDS_TADIALOGS-SHEET_REVERT_TIP", row.name,
                        FormatNumber(row.info.defaultValue, row.info.decimals)),
               *grid.parentWidget()),
      m_faultIcon(new QLabel(grid.parentWidget())),
      m_fault(PlainLabel({}, *grid.parentWidget())) {
    QWidget& parent = *grid.parentWidget();
    const QString defaultText = FormatNumber(m_info.defaultValue, m_info.decimals);
    QLabel* name = PlainLabel(row.name, parent);
    name->setBuddy(m_value);
    m_description =
        LangText("IDS_TADIALOGS-SHEET_VALUE_DESCRIPTION", RangeText(m_info), defaultText);
    m_value->setAccessibleName(row.name);
    m_value->SetText(row.text);
    const int size = m_value->fontMetrics().height();
    m_faultIcon->setPixmap(
        m_value->style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size, size));
    m_faultIcon->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_fault->setWordWrap(true);

    grid.addWidget(name, gridRow, kName);
    grid.addWidget(m_value, gridRow, kValue);
    grid.addWidget(PlainLabel(RangeText(m_info), parent), gridRow, kRange);
    grid.addWidget(PlainLabel(defaultText, parent), gridRow, kDefault);
    grid.addWidget(m_revert.mark, gridRow, kMark);
    grid.addWidget(m_revert.button, gridRow, kRevert);
    grid.addWidget(m_faultIcon, gridRow + 1, kName);
    grid.addWidget(m_fault, gridRow + 1, kValue, 1, kRevert - kValue + 2);
    SetFault({});
    OnEdited(row.text);
    connect(m_value, &ValueEdit::edited, this, [this](const QString& text) {
        OnEdited(text);
        emit edited(text);
    });
    connect(m_revert.button, &QToolButton::clicked, this, &ParamEditRow::Revert);
}

void ParamEditRow::OnEdited(const QString& text) {
    const auto value = ParseNumber(text);
    m_revert.SetDiffers(!value || *value != RoundedTo(m_info.defaultValue, m_info.decimals));
}

void ParamEditRow::Revert() {
    const QString text = FormatNumber(m_info.defaultValue, m_info.decimals);
    m_value->SetText(text);
    // The button is about to hide.
    m_value->setFocus();
    OnEdited(text);
    emit edited(text);
}

void ParamEditRow::SetFault(const QString& reason) {
    m_fault->setText(reason);
    m_fault->setVisible(!reason.isEmpty());
    m_faultIcon->setVisible(!reason.isEmpty());
    m_value->SetFaulty(!reason.isEmpty());
    m_value->setAccessibleDescription(reason.isEmpty() ? m_description : reason);
    m_value->setToolTip(reason.isEmpty() ? m_description : reason);
}

QWidget& ParamEditRow::Field() const {
    return *m_value;
}

std::vector<QWidget*> ParamEditRow::TabStops() const {
    return {m_value, m_revert.button};
}

}  // namespace ta::sheet
