#include "dialogs/DatePicker.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QRegularExpression>

namespace ta::dialogs {

DatePicker::DatePicker(QWidget* parent) : QDateEdit(parent) {
    setCalendarPopup(true);
    setKeyboardTracking(false);
    setDisplayFormat("yyyy/MM/dd");
}

void DatePicker::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Enter || event->key() == Qt::Key_Return) {
        event->ignore();
    } else if (!event->matches(QKeySequence::Paste) || !Paste(QApplication::clipboard()->text())) {
        QDateEdit::keyPressEvent(event);
    }
}

bool DatePicker::Paste(const QString& text) {
    static const QRegularExpression kDate(R"(^\s*(\d{4})\D?(\d{1,2})\D?(\d{1,2})\D?\s*$)");
    const QRegularExpressionMatch match = kDate.match(text);
    const QDate date(match.captured(1).toInt(), match.captured(2).toInt(),
                     match.captured(3).toInt());
    if (date.isValid()) {
        setDate(date);
    }
    return date.isValid();
}

}  // namespace ta::dialogs
