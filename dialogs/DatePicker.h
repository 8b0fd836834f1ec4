#pragma once

#include <QDateEdit>

namespace ta::dialogs {

/// A date box with a calendar that tells a date when the user is done with it, not at each key, and
/// takes a pasted date: year, month and day with any signs between them, or eight digits. Enter is
/// left to the dialog, which takes what was typed with interpretText.
class DatePicker : public QDateEdit {
    Q_OBJECT

public:
    explicit DatePicker(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool Paste(const QString& text);
};

}  // namespace ta::dialogs
