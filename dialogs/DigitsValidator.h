#pragma once

#include <QValidator>

namespace ta::dialogs {

/// Lets only digits in, at most nine; what else is typed or pasted around them falls away, and
/// full-width digits become plain ones. Empty text is accepted.
class DigitsValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& input, int& position) const override {
        QString digits;
        for (const QChar character : input) {
            if (character.digitValue() >= 0 && digits.size() < 9) {
                digits += QString::number(character.digitValue());
            }
        }
        if (digits != input) {
            position = static_cast<int>(digits.size());
            input = digits;
        }
        return Acceptable;
    }
};

}  // namespace ta::dialogs
