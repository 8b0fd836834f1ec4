#include "terminal/frame/FrameToolBar.h"

#include "platform/ui/LangText.h"
#include "terminal/lang/Language.h"

#include <QSignalBlocker>
#include <QStandardItemModel>

#include <utility>

namespace ta::terminal {

FrameToolBar::FrameToolBar(SymbolSearch search, QWidget* parent)
    : QToolBar(parent),
      m_symbol(new SymbolBox(std::move(search), this)),
      m_period(new QComboBox(this)),
      m_group(new QComboBox(this)) {
    setObjectName("frameToolBar");
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_symbol->setMinimumWidth(220);
    m_symbol->setMaximumWidth(320);
    m_symbol->setClearButtonEnabled(true);
    m_group->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_group->setMinimumContentsLength(10);
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_period->addItem(QString());
    }
    m_period->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    AddField({nullptr, "IDS_TERMINAL-FRAME_LABEL_SYMBOL", "IDS_TERMINAL-FRAME_SYMBOL_TIP"},
             *m_symbol, "symbolBox");
    AddField({nullptr, "IDS_TERMINAL-FRAME_LABEL_PERIOD", "IDS_TERMINAL-FRAME_PERIOD_TIP"},
             *m_period, "periodBox");
    AddField({nullptr, "IDS_TERMINAL-FRAME_LABEL_GROUP", "IDS_TERMINAL-FRAME_GROUP_TIP"}, *m_group,
             "groupBox");
    connect(m_period, &QComboBox::activated, this, &FrameToolBar::periodChosen);
    connect(m_group, &QComboBox::textActivated, this, &FrameToolBar::groupChosen);
    Retranslate();
}

void FrameToolBar::AddField(Field field, QWidget& box, const char* objectName) {
    field.label = new QLabel(this);
    field.label->setBuddy(&box);
    field.label->setContentsMargins(6, 0, 4, 0);
    box.setObjectName(objectName);
    addWidget(field.label);
    addWidget(&box);
    m_fields.push_back(field);
}

void FrameToolBar::ShowPeriods(const PeriodSet& available, int current) {
    const QSignalBlocker quiet(m_period);
    auto* items = qobject_cast<QStandardItemModel*>(m_period->model());
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        items->item(static_cast<int>(i))->setEnabled(available[i]);
    }
    m_period->setCurrentIndex(current);
}

void FrameToolBar::ShowGroups(const QStringList& names, const QString& current) {
    QStringList shown;
    for (int i = 0; i < m_group->count(); ++i) {
        shown.append(m_group->itemText(i));
    }
    const QSignalBlocker quiet(m_group);
    if (shown != names) {
        m_group->clear();
        m_group->addItems(names);
    }
    m_group->setCurrentIndex(static_cast<int>(names.indexOf(current)));
}

void FrameToolBar::Retranslate() {
    setWindowTitle(Tr("IDS_TERMINAL-FRAME_TOOLBAR"));
    for (std::size_t i = 0; i < kPeriods.size(); ++i) {
        m_period->setItemText(static_cast<int>(i), Tr(kPeriods[i].textKey));
    }
    for (const Field& field : m_fields) {
        field.label->setText(Tr(field.labelKey));
        QWidget* box = field.label->buddy();
        box->setToolTip(Tr(field.tipKey));
        box->setAccessibleName(ui::WithoutMnemonic(Tr(field.labelKey)));
    }
    m_symbol->setPlaceholderText(Tr("IDS_TERMINAL-FRAME_SYMBOL_HINT"));
}

}  // namespace ta::terminal
