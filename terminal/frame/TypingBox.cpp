#include "terminal/frame/TypingBox.h"

#include "terminal/chart/ChartPage.h"
#include "terminal/frame/SymbolTexts.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace ta::terminal {
namespace {

constexpr int kLongestText = 32;  // as the id of a symbol
constexpr int kMostDigits = 3;
constexpr int kGap = 24;  // to the chart's sides

bool IsMinutes(const QString& text) {
    return text.size() <= kMostDigits &&
           std::ranges::all_of(text, [](QChar typed) { return typed.isDigit(); });
}

/// The character that a key adds to the text; null for a key that adds none.
QChar CharacterOf(const QKeyEvent& event, bool isFirst) {
    const auto own = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const QString text = event.text();
    if (own != Qt::NoModifier || text.size() != 1 || text[0].unicode() >= 0x80) {
        return {};
    }
    const QChar typed = text[0].toUpper();
    const bool fits =
        typed.isLetterOrNumber() || (!isFirst && QStringLiteral("-_.").contains(typed));
    return fits ? typed : QChar();
}

/// Shift, Ctrl and the like, which come before the key that they belong to.
bool IsModifier(int key) {
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr;
}

}  // namespace

TypingBox::TypingBox(ChartPage& chart, const MarketData& markets, std::function<bool()> hasMinutes)
    : QFrame(&chart),
      m_chart(chart),
      m_markets(markets),
      m_hasMinutes(std::move(hasMinutes)),
      m_typed(new QLabel(this)),
      m_meaning(new QLabel(this)) {
    hide();
    setObjectName("typingBox");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_typed->setObjectName("typedLabel");
    m_meaning->setObjectName("meaningLabel");
    m_meaning->setTextFormat(Qt::PlainText);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(2);
    for (QLabel* label : {m_typed, m_meaning}) {
        layout->addWidget(label);
    }
    chart.installEventFilter(this);
    connect(&chart, &ChartPage::symbolChanged, this, [this] { SetText({}); });
}

bool TypingBox::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:
            // Delete is the shortcut of a command, too.
            if (IsTyping() && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
                event->accept();
                return true;
            }
            break;
        case QEvent::KeyPress:
            return OnKey(static_cast<const QKeyEvent&>(*event));
        case QEvent::FocusOut:
            SetText({});
            break;
        case QEvent::Resize:
            Place();
            break;
        default:
            break;
    }
    return QFrame::eventFilter(watched, event);
}

bool TypingBox::OnKey(const QKeyEvent& event) {
    const QChar typed = CharacterOf(event, !IsTyping());
    if (!typed.isNull()) {
        SetText((m_text + typed).left(kLongestText));
        return true;
    }
    if (!IsTyping() || IsModifier(event.key())) {
        return false;
    }
    switch (event.key()) {
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            SetText(m_text.chopped(1));
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Take();
            return true;
        default:
            SetText({});
            return event.key() == Qt::Key_Escape;
    }
}

TypingBox::Wish TypingBox::MinutesOf(int minutes) const {
    if (minutes < 1) {
        return {Tr("IDS_TERMINAL-FRAME_TYPING_RANGE")};
    }
    if (!m_hasMinutes()) {
        return {Tr("IDS_TERMINAL-FRAME_TYPING_NO_MINUTES")};
    }
    return {Tr("IDS_TERMINAL-FRAME_TYPING_MINUTES").arg(minutes), minutes};
}

TypingBox::Wish TypingBox::WishOf(const QString& text) const {
    if (IsMinutes(text)) {
        return MinutesOf(text.toInt());
    }
    const std::vector<SymbolHit> hits = FindHits(m_markets, text);
    if (hits.empty()) {
        return {Tr("IDS_TERMINAL-FRAME_SYMBOL_NOT_FOUND").arg(text)};
    }
    return {hits.front().text, 0, hits.front()};
}

void TypingBox::Take() {
    const Wish wish = WishOf(m_text);
    if (!wish.IsPossible()) {
        emit refused(wish.text);
        return;
    }
    SetText({});
    if (wish.symbol) {
        emit symbolChosen(wish.symbol->market, wish.symbol->id);
    } else {
        emit minutesChosen(wish.minutes);
    }
}

void TypingBox::SetText(const QString& text) {
    if (text == m_text) {
        return;
    }
    m_text = text;
    if (IsTyping()) {
        Place();
        raise();
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    setVisible(IsTyping());
}

void TypingBox::Place() {
    if (!IsTyping()) {
        return;
    }
    QFont large = m_chart.font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.5);
    large.setBold(true);
    m_typed->setFont(large);
    m_typed->setText(m_text);
    const Wish wish = WishOf(m_text);
    const QString meaning = wish.IsPossible() ? QString::fromUtf8("↵ ") + wish.text : wish.text;
    m_meaning->setText(
        m_meaning->fontMetrics().elidedText(meaning, Qt::ElideRight, m_chart.width() - 4 * kGap));
    setAccessibleName(m_text + ' ' + meaning);
    adjustSize();
    move(m_chart.width() - width() - kGap, m_chart.height() - height() - kGap);
}

}  // namespace ta::terminal
