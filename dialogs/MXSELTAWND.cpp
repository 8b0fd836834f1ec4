#include "dialogs/MXSELTAWND.h"

#include "dialogs/LayoutPicture.h"
#include "dialogs/WindowLayouts.h"
#include "ui_MXSELTAWND.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace ta::ui;
using ta::layout::Layout;

namespace {

constexpr int kFrameWidth = 2;
constexpr QColor kFrameColour(64, 255, 255);

}  // namespace

MXSELTAWND::MXSELTAWND(int format, QWidget* parent)
    : DialogBase(parent), m_nFormat(format), m_ui(std::make_unique<Ui::MXSELTAWND>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    std::vector<RadioTable::Row> rows;
    for (const Layout& layout : ta::layout::Layouts()) {
        const auto place = static_cast<std::size_t>(layout.format - 1);
        m_radios[place] = findChild<QRadioButton*>(QString("format%1Radio").arg(layout.format));
        m_pictures[place] =
            findChild<LayoutPicture*>(QString("format%1Picture").arg(layout.format));
        m_pictures[place]->SetFormat(layout.format);
        rows.push_back({layout.radioIndex, m_radios[place]});
        m_radios[place]->installEventFilter(this);
        Handle(m_pictures[place], &LayoutPicture::clicked, [radio = m_radios[place]] {
            radio->setFocus();
            radio->click();
        });
    }
    m_layouts.SetRows(std::move(rows));
    Handle(&m_layouts, &RadioTable::chosen, [this](int radioIndex) { ChooseRadio(radioIndex); });
}

MXSELTAWND::~MXSELTAWND() = default;

bool MXSELTAWND::OnInitDialog() {
    m_nRadio = iGetRioFrmtByFormat();
    m_layouts.SetValue(m_nRadio);
    m_layouts.FocusChecked();
    showSelFormatRect(m_nFormat - 1);
    return true;
}

int MXSELTAWND::iGetRioFrmtByFormat() const {
    return ta::layout::IsFormat(m_nFormat) ? ta::layout::LayoutOf(m_nFormat).radioIndex
                                           : m_nFormat - 1;
}

void MXSELTAWND::ChooseRadio(int radioIndex) {
    const auto chosen = std::ranges::find(ta::layout::Layouts(), radioIndex, &Layout::radioIndex);
    m_nRadio = radioIndex;
    m_nFormat = chosen->format;
    showSelFormatRect(m_nFormat - 1);
}

bool MXSELTAWND::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick && std::ranges::count(m_radios, watched) > 0 &&
        static_cast<const QMouseEvent*>(event)->button() == Qt::LeftButton) {
        static_cast<QRadioButton*>(watched)->click();
        accept();
        return true;
    }
    return DialogBase::eventFilter(watched, event);
}

QRect MXSELTAWND::getFormatRect(const int& index) const {
    if (index < 0 || index >= kCount) {
        return {};
    }
    return m_pictures[static_cast<std::size_t>(index)]->geometry().adjusted(
        -kFrameWidth, -kFrameWidth, kFrameWidth, kFrameWidth);
}

void MXSELTAWND::showSelFormatRect(const int& index) {
    m_framed = index;
    update();
}

void MXSELTAWND::paintEvent(QPaintEvent* event) {
    DialogBase::paintEvent(event);
    QPainter painter(this);
    for (int i = 0; i < kCount; ++i) {
        painter.setPen(QPen(i == m_framed ? kFrameColour : palette().color(QPalette::Window),
                            kFrameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        // The pen reaches a pixel to either side.
        painter.drawRect(getFormatRect(i).adjusted(1, 1, -1, -1));
    }
}
