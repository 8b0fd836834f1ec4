#include "sheet/ValueEdit.h"

#include "sheet/ParamText.h"

#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include <algorithm>

namespace ta::sheet {
namespace {

/// `base` with a part of red, dark or light as it is.
QColor Reddened(const QColor& base) {
    constexpr qreal kRed = 0.25;
    const QColor red(Qt::red);
    const auto mix = [](qreal from, qreal to) { return from + (to - from) * kRed; };
    return QColor::fromRgbF(mix(base.redF(), red.redF()), mix(base.greenF(), red.greenF()),
                            mix(base.blueF(), red.blueF()));
}

}  // namespace

ValueEdit::ValueEdit(StudyParamInfo param, QWidget* parent)
    : QAbstractSpinBox(parent), m_param(std::move(param)) {
    // The wheel turns the value of the field that has the focus, and scrolls otherwise.
    setFocusPolicy(Qt::StrongFocus);
    setAlignment(Qt::AlignRight);
    lineEdit()->setMaxLength(32);
    connect(lineEdit(), &QLineEdit::textEdited, this, &ValueEdit::edited);
    connect(lineEdit(), &QLineEdit::textChanged, this, [this] { update(); });
}

void ValueEdit::SetText(const QString& text) {
    lineEdit()->setText(text);
}

void ValueEdit::SetFaulty(bool faulty) {
    QPalette colours;
    if (faulty) {
        colours.setColor(QPalette::Base, Reddened(parentWidget()->palette().base().color()));
    }
    setPalette(colours);
}

void ValueEdit::stepBy(int steps) {
    const double value = ParseNumber(text()).value_or(m_param.defaultValue);
    const double stepped =
        std::clamp(value + steps * m_param.step, m_param.minimum, m_param.maximum);
    const QString before = text();
    SetText(FormatNumber(stepped, m_param.decimals));
    selectAll();
    if (text() != before) {
        emit edited(text());
    }
}

QAbstractSpinBox::StepEnabled ValueEdit::stepEnabled() const {
    const auto value = ParseNumber(text());
    StepEnabled enabled = StepNone;
    if (!value || *value < m_param.maximum) {
        enabled |= StepUpEnabled;
    }
    if (!value || *value > m_param.minimum) {
        enabled |= StepDownEnabled;
    }
    return enabled;
}

void ValueEdit::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QAbstractSpinBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

QSize ValueEdit::sizeHint() const {
    constexpr int kShownDigits = 8;
    ensurePolished();
    const QSize contents(fontMetrics().horizontalAdvance('0') * kShownDigits,
                         lineEdit()->sizeHint().height());
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, contents, this);
}

}  // namespace ta::sheet
