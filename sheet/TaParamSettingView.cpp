#include "sheet/TaParamSettingView.h"

#include "platform/ui/LangText.h"
#include "sheet/ParamEditRow.h"
#include "sheet/ShapeEditRow.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <iterator>

using namespace ta::sheet;
using ta::ui::LangText;

namespace {

QLabel* BoldLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

/// A text in the middle of its place, in as many lines as it needs there. A plain label that wraps
/// is laid out anew for every width and height that the layouts above it try.
class Hint : public QLabel {
public:
    explicit Hint(const QString& text) : QLabel(text) {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setAlignment(Qt::AlignCenter);
    }

    bool hasHeightForWidth() const override { return false; }
    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override {
        constexpr int kLines = 6;
        return {fontMetrics().averageCharWidth() * 20, fontMetrics().lineSpacing() * kLines};
    }
};

QGridLayout* AddGrid(QWidget& contents) {
    auto* block = new QWidget(&contents);
    auto* grid = new QGridLayout(block);
    const int gap = contents.fontMetrics().height() / 2;
    grid->setContentsMargins(0, gap, 0, 0);
    grid->setHorizontalSpacing(gap);
    contents.layout()->addWidget(block);
    return grid;
}

}  // namespace

CTaParamSettingView::CTaParamSettingView(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    ShowHint({});
}

QWidget& CTaParamSettingView::NewContents() {
    // An edit may bring this about, within a handler of the field that goes: it says nothing more
    // and goes when the handler is through.
    for (const QObject* row : m_params) {
        row->disconnect(this);
    }
    for (const QObject* row : m_shapes) {
        row->disconnect(this);
    }
    m_params.clear();
    m_shapes.clear();
    if (QWidget* old = takeWidget()) {
        old->hide();
        old->deleteLater();
    }
    auto* contents = new QWidget;
    new QVBoxLayout(contents);
    return *contents;
}

void CTaParamSettingView::ShowHint(const QString& text) {
    QWidget& contents = NewContents();
    contents.layout()->addWidget(new Hint(text));
    setWidget(&contents);
}

void CTaParamSettingView::ShowStudy(const QString& title, const std::vector<ParamRow>& params,
                                    const std::vector<ShapeRow>& shapes) {
    QWidget& contents = NewContents();
    QLayout& layout = *contents.layout();
    layout.addWidget(BoldLabel(title));
    std::vector<QWidget*> stops;
    if (params.empty()) {
        layout.addWidget(new QLabel(LangText("IDS_TADIALOGS-SHEET_NO_PARAMS")));
    } else {
        QGridLayout& grid = *AddGrid(contents);
        grid.addWidget(BoldLabel(LangText("IDS_TADIALOGS-SHEET_PARAMS")), 0, 0);
        ParamEditRow::AddHeads(grid);
        for (const ParamRow& row : params) {
            const int index = static_cast<int>(m_params.size());
            auto* edit = new ParamEditRow(row, grid, 1 + index * ParamEditRow::kGridRows);
            connect(edit, &ParamEditRow::edited, this,
                    [this, index](const QString& text) { emit paramEdited(index, text); });
            m_params.push_back(edit);
            std::ranges::copy(edit->TabStops(), std::back_inserter(stops));
        }
    }
    QGridLayout& grid = *AddGrid(contents);
    grid.addWidget(BoldLabel(LangText("IDS_TADIALOGS-SHEET_SHAPES")), 0, 0);
    ShapeEditRow::AddHeads(grid);
    for (const ShapeRow& row : shapes) {
        const int index = static_cast<int>(m_shapes.size());
        auto* edit = new ShapeEditRow(row, grid, 1 + index);
        connect(edit, &ShapeEditRow::edited, this,
                [this, index](const StudyShape& shape) { emit shapeEdited(index, shape); });
        m_shapes.push_back(edit);
        std::ranges::copy(edit->TabStops(), std::back_inserter(stops));
    }
    static_cast<QVBoxLayout&>(layout).addStretch();
    setWidget(&contents);
    ChainFocus(stops);
}

void CTaParamSettingView::ChainFocus(const std::vector<QWidget*>& stops) {
    QWidget* previous = this;
    for (QWidget* stop : stops) {
        setTabOrder(previous, stop);
        previous = stop;
    }
}

void CTaParamSettingView::SetParamFaults(const QStringList& reasons) {
    for (std::size_t i = 0; i < m_params.size(); ++i) {
        m_params[i]->SetFault(reasons.value(static_cast<int>(i)));
    }
}

void CTaParamSettingView::FocusParam(int index) {
    if (index < 0 || index >= static_cast<int>(m_params.size())) {
        return;
    }
    QWidget& field = m_params[static_cast<std::size_t>(index)]->Field();
    field.setFocus();
    ensureWidgetVisible(&field);
}

QSize CTaParamSettingView::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance('0') * 72, metrics.lineSpacing() * 22};
}
