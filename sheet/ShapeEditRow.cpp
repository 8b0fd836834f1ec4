#include "sheet/ShapeEditRow.h"

#include "platform/ui/LangText.h"
#include "platform/ui/PenSamples.h"
#include "platform/ui/Prompts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>
#include <QWheelEvent>

#include <array>

namespace ta::sheet {
namespace {

using ui::LangText;

enum Column { kName, kVisible, kColour, kWidth, kStyle, kMark, kRevert };

constexpr int kSampleWidth = 2;

/// A spin box or combo box that the wheel leaves alone while it lacks the focus.
template <class Control>
class CalmWheel : public Control {
public:
    explicit CalmWheel(QWidget* parent) : Control(parent) { this->setFocusPolicy(Qt::StrongFocus); }

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (this->hasFocus()) {
            Control::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
};

}  // namespace

void ShapeEditRow::AddHeads(QGridLayout& grid) {
    constexpr std::array kHeads{
        std::pair{kVisible, "IDS_TADIALOGS-SHEET_VISIBILITY"},
        std::pair{kColour, "IDS_TADIALOGS-SHEET_COLOUR"},
        std::pair{kWidth, "IDS_TADIALOGS-SHEET_WIDTH"},
        std::pair{kStyle, "IDS_TADIALOGS-SHEET_STYLE"},
    };
    for (const auto& [column, key] : kHeads) {
        grid.addWidget(new QLabel(LangText(key), grid.parentWidget()), 0, column);
    }
    grid.setColumnStretch(kRevert + 1, 1);
}

ShapeEditRow::ShapeEditRow(const ShapeRow& row, QGridLayout& grid, int gridRow)
    : QObject(grid.parentWidget()),
      m_row(row),
      m_revert(LangText("IDS_TADIALOGS-SHEET_REVERT_SHAPE_TIP", row.name), *grid.parentWidget()) {
    MakeControls(*grid.parentWidget());
    NameControls();
    auto* name = new QLabel(row.name, grid.parentWidget());
    name->setTextFormat(Qt::PlainText);
    name->setBuddy(m_visible);
    grid.addWidget(name, gridRow, kName);
    grid.addWidget(m_visible, gridRow, kVisible, Qt::AlignCenter);
    grid.addWidget(m_colour, gridRow, kColour);
    grid.addWidget(m_width, gridRow, kWidth);
    grid.addWidget(m_style, gridRow, kStyle);
    grid.addWidget(m_revert.mark, gridRow, kMark);
    grid.addWidget(m_revert.button, gridRow, kRevert);
    ShowShape();
    ConnectControls();
}

void ShapeEditRow::MakeControls(QWidget& parent) {
    m_visible = new QCheckBox(&parent);
    m_colour = new QPushButton(&parent);
    m_colour->setAutoDefault(false);
    m_width = new CalmWheel<QSpinBox>(&parent);
    m_width->setRange(1, ui::kMaxPenWidth);
    m_style = new CalmWheel<QComboBox>(&parent);
    const int em = parent.fontMetrics().height();
    m_colour->setIconSize({em * 2, em * 3 / 4});
    m_style->setIconSize({em * 3, em});
    for (int style = 0; style < static_cast<int>(ui::kPenStyles.size()); ++style) {
        m_style->addItem(ui::PenIcon(style, kSampleWidth), LangText(ui::PenStyleKey(style)));
    }
    // What the kind of drawing has no use for.
    const StudyShapeUse use = ShapeUseOf(m_row.kind);
    m_colour->setEnabled(use.colour);
    m_width->setEnabled(use.width);
    m_style->setEnabled(use.style);
}

void ShapeEditRow::NameControls() {
    const std::array kNames{
        std::pair{static_cast<QWidget*>(m_visible), "IDS_TADIALOGS-SHEET_VISIBILITY"},
        std::pair{static_cast<QWidget*>(m_colour), "IDS_TADIALOGS-SHEET_COLOUR"},
        std::pair{static_cast<QWidget*>(m_width), "IDS_TADIALOGS-SHEET_WIDTH"},
        std::pair{static_cast<QWidget*>(m_style), "IDS_TADIALOGS-SHEET_STYLE"},
    };
    for (const auto& [control, key] : kNames) {
        control->setAccessibleName(m_row.name + ' ' + LangText(key));
        if (!control->isEnabled()) {
            control->setToolTip(LangText("IDS_TADIALOGS-SHEET_NOT_FOR_KIND"));
        }
    }
}

void ShapeEditRow::ConnectControls() {
    connect(m_visible, &QCheckBox::clicked, this, [this](bool visible) {
        StudyShape shape = m_row.shape;
        shape.visible = visible;
        Edit(shape);
    });
    connect(m_width, &QSpinBox::valueChanged, this, [this](int width) {
        StudyShape shape = m_row.shape;
        shape.width = width;
        Edit(shape);
    });
    connect(m_style, &QComboBox::currentIndexChanged, this, [this](int style) {
        StudyShape shape = m_row.shape;
        shape.style = style;
        Edit(shape);
    });
    connect(m_colour, &QPushButton::clicked, this, &ShapeEditRow::ChooseColour);
    connect(m_revert.button, &QToolButton::clicked, this, [this] {
        m_visible->setFocus();  // the button is about to hide
        Edit(m_row.defaultShape);
    });
}

void ShapeEditRow::ChooseColour() {
    StudyShape shape = m_row.shape;
    const QColor chosen = ui::CurrentPrompts().AskColour(
        m_colour->window(), m_colour->accessibleName(), QColor::fromRgb(shape.colour));
    if (chosen.isValid()) {
        shape.colour = chosen.rgb() & 0xFFFFFF;
        Edit(shape);
    }
}

void ShapeEditRow::Edit(const StudyShape& shape) {
    if (shape != m_row.shape) {
        m_row.shape = shape;
        ShowShape();
        emit edited(shape);
    }
}

void ShapeEditRow::ShowShape() {
    const QSignalBlocker quietWidth(m_width);
    const QSignalBlocker quietStyle(m_style);
    const StudyShape& shape = m_row.shape;
    const QColor colour = QColor::fromRgb(shape.colour);
    m_visible->setChecked(shape.visible);
    m_colour->setIcon(ui::ColourIcon(colour));
    m_colour->setAccessibleDescription(colour.name().toUpper());
    if (m_colour->isEnabled()) {
        m_colour->setToolTip(m_colour->accessibleDescription());
    }
    m_width->setValue(shape.width);
    m_style->setCurrentIndex(shape.style);
    m_revert.SetDiffers(shape != m_row.defaultShape);
}

std::vector<QWidget*> ShapeEditRow::TabStops() const {
    return {m_visible, m_colour, m_width, m_style, m_revert.button};
}

}  // namespace ta::sheet
