#pragma once

#include "terminal/frame/Periods.h"
#include "terminal/frame/SymbolBox.h"

#include <QComboBox>
#include <QLabel>
#include <QToolBar>

#include <vector>

namespace ta::terminal {

/// The toolbar: symbol, period and indicator group of the current chart, then the buttons that the
/// frame adds. Setting what is shown emits nothing.
class FrameToolBar : public QToolBar {
    Q_OBJECT

public:
    explicit FrameToolBar(SymbolSearch search, QWidget* parent = nullptr);

    SymbolBox& Symbol() const { return *m_symbol; }
    QComboBox& Period() const { return *m_period; }
    QComboBox& Group() const { return *m_group; }

    /// Periods that are not `available` are greyed. `current` -1: none.
    void ShowPeriods(const PeriodSet& available, int current);
    /// The groups' names in order; `current` is one of them.
    void ShowGroups(const QStringList& names, const QString& current);
    void Retranslate();

signals:
    /// Position in kPeriods.
    void periodChosen(int index);
    void groupChosen(const QString& name);

private:
    struct Field {
        QLabel* label = nullptr;
        const char* labelKey = "";
        const char* tipKey = "";
    };

    void AddField(Field field, QWidget& box, const char* objectName);

    SymbolBox* m_symbol;
    QComboBox* m_period;
    QComboBox* m_group;
    std::vector<Field> m_fields;
};

}  // namespace ta::terminal
