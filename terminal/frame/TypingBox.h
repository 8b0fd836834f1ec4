#pragma once

#include "terminal/frame/SymbolBox.h"

#include <QFrame>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

class QKeyEvent;
class QLabel;

namespace ta::terminal {

class ChartPage;
class MarketData;

/// What the user types on a chart that has the focus, in a small box at the chart's lower right
/// corner, with what Enter will do. A digit or a letter begins it; "-", "_" and "." go on with it.
///
/// One to three digits are the minutes of a bar, 1 to 999. A fourth digit, or anything but a digit,
/// makes it the code of a symbol: Enter opens the best match, as in the symbol box, which also
/// finds names. Enter on what cannot be had tells why and changes nothing; the text stays, to be
/// mended. Backspace and Delete take the last character away, Escape all of them. The typing also
/// ends when the chart loses the focus or shows something else, and with every other key, which
/// then does on the chart what it always does, "+" among them.
class TypingBox : public QFrame {
    Q_OBJECT

public:
    /// A child of `chart`, hidden until the user types. `markets` outlives it; `hasMinutes` says
    /// whether there are bars of minutes for the chart.
    TypingBox(ChartPage& chart, const MarketData& markets, std::function<bool()> hasMinutes);

signals:
    /// 1 to 999, and there are bars of minutes.
    void minutesChosen(int minutes);
    void symbolChosen(std::uint8_t market, const CString& id);
    /// Why Enter did nothing, in the language in use.
    void refused(const QString& reason);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What Enter will do, as `text` says; why it can do nothing, when there are neither minutes
    /// nor a symbol.
    struct Wish {
        QString text;
        int minutes = 0;
        std::optional<SymbolHit> symbol = {};

        bool IsPossible() const { return minutes > 0 || symbol; }
    };

    bool IsTyping() const { return !m_text.isEmpty(); }
    Wish WishOf(const QString& text) const;
    Wish MinutesOf(int minutes) const;
    /// false for a key that is the chart's.
    bool OnKey(const QKeyEvent& event);
    void SetText(const QString& text);
    void Take();
    void Place();

    ChartPage& m_chart;
    const MarketData& m_markets;
    std::function<bool()> m_hasMinutes;
    QString m_text;
    QLabel* m_typed;
    QLabel* m_meaning;
};

}  // namespace ta::terminal
