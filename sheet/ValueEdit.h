#pragma once

#include "platform/Study.h"

#include <QAbstractSpinBox>

namespace ta::sheet {

/// Edits one parameter value. Steps stay within the range; what the user types stays as typed, and
/// whoever owns the value says what is wrong with it.
class ValueEdit : public QAbstractSpinBox {
    Q_OBJECT

public:
    explicit ValueEdit(StudyParamInfo param, QWidget* parent = nullptr);

    QString Text() const { return text(); }
    void SetText(const QString& text);
    /// Shows the field as faulty.
    void SetFaulty(bool faulty);

    void stepBy(int steps) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The user has typed or stepped.
    void edited(const QString& text);

protected:
    StepEnabled stepEnabled() const override;
    void wheelEvent(QWheelEvent* event) override;

private:
    StudyParamInfo m_param;
};

}  // namespace ta::sheet
