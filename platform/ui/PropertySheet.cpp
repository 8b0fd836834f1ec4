#include "platform/ui/PropertySheet.h"

#include "platform/ui/PropertyPage.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QTabWidget>

#include <algorithm>
#include <array>

namespace ta::ui {
namespace {

struct SheetButton {
    int id;
    const char* textKey;
};

constexpr std::array kButtons{
    SheetButton{kIdOk, "IDS_SETTING-SHEET_OK"},
    SheetButton{kIdCancel, "IDS_SETTING-SHEET_CANCEL"},
    SheetButton{kIdApply, "IDS_TADIALOGS-SHEET_APPLY"},
};

}  // namespace

PropertySheet::PropertySheet(const QString& caption, QWidget* parent, int firstPage)
    : DialogBase(parent), m_tabs(new QTabWidget), m_firstPage(firstPage) {
    setWindowTitle(caption);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addLayout(MakeButtons());
    connect(m_tabs, &QTabWidget::currentChanged, this, &PropertySheet::OnTabChanged);
}

PropertySheet::~PropertySheet() {
    m_tabs->disconnect(this);
}

QLayout* PropertySheet::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (const SheetButton& each : kButtons) {
        auto* button = new QPushButton(each.textKey);
        row->addWidget(button);
        SetDlgItem(each.id, *button);
    }
    SetButtons(static_cast<QPushButton&>(*GetDlgItem(kIdOk)),
               static_cast<QPushButton&>(*GetDlgItem(kIdCancel)));
    return row;
}

void PropertySheet::SetButtonText(int id, const QString& text) {
    SetTextKey(*GetDlgItem(id), text);
    EvenOutButtons();
}

void PropertySheet::EvenOutButtons() {
    int width = 0;
    for (const SheetButton& each : kButtons) {
        width = std::max(width, GetDlgItem(each.id)->sizeHint().width());
    }
    for (const SheetButton& each : kButtons) {
        GetDlgItem(each.id)->setMinimumWidth(width);
    }
}

// ---- Pages ----

void PropertySheet::AddPage(PropertyPage& page) {
    page.LoadLanguageStrings();
    m_pages.push_back(&page);
    m_tabs->addTab(&page, page.windowTitle());
    connect(&page, &QWidget::windowTitleChanged, m_tabs, [this, &page](const QString& title) {
        m_tabs->setTabText(m_tabs->indexOf(&page), title);
    });
}

void PropertySheet::RemovePage(PropertyPage& page) {
    const auto found = std::ranges::find(m_pages, &page);
    if (found == m_pages.end()) {
        return;
    }
    m_pages.erase(found);
    m_active = -1;
    page.disconnect(m_tabs);
    m_tabs->removeTab(m_tabs->indexOf(&page));
    page.setParent(nullptr);
    if (isVisible() && !m_pages.empty()) {
        Activate(m_tabs->currentIndex());
    }
}

PropertyPage* PropertySheet::GetActivePage() const {
    const int index = GetActiveIndex();
    return index < 0 ? nullptr : m_pages[static_cast<std::size_t>(index)];
}

int PropertySheet::GetActiveIndex() const {
    return m_tabs->currentIndex();
}

bool PropertySheet::SetActivePage(int index) {
    m_tabs->setCurrentIndex(index);
    return GetActiveIndex() == index;
}

bool PropertySheet::SetActivePage(const PropertyPage& page) {
    const auto found = std::ranges::find(m_pages, &page);
    return found != m_pages.end() && SetActivePage(static_cast<int>(found - m_pages.begin()));
}

void PropertySheet::SetResizable(bool resizable) {
    layout()->setSizeConstraint(resizable ? QLayout::SetDefaultConstraint : QLayout::SetFixedSize);
}

void PropertySheet::OnTabChanged(int index) {
    // Before the sheet is filled, and while it loses its pages, no page is in front.
    if (m_active < 0 || index < 0 || index == m_active) {
        return;
    }
    bool leaves = false;
    Guard([&] { leaves = m_pages[static_cast<std::size_t>(m_active)]->OnKillActive(); });
    if (leaves) {
        Activate(index);
    } else {
        m_tabs->setCurrentIndex(m_active);
    }
}

void PropertySheet::Activate(int index) {
    m_active = index;
    PropertyPage& page = *m_pages[static_cast<std::size_t>(index)];
    page.Create();
    Guard([&] { page.OnSetActive(); });
}

void PropertySheet::keyPressEvent(QKeyEvent* event) {
    const bool back = event->key() == Qt::Key_Backtab;
    const bool turns = back || event->key() == Qt::Key_Tab;
    if (turns && event->modifiers().testFlag(Qt::ControlModifier) && GetPageCount() > 1) {
        const int count = GetPageCount();
        SetActivePage((GetActiveIndex() + (back ? count - 1 : 1)) % count);
        return;
    }
    DialogBase::keyPressEvent(event);
}

// ---- Opening and closing ----

bool PropertySheet::OnInitDialog() {
    if (!m_pages.empty()) {
        m_tabs->setCurrentIndex(std::clamp(m_firstPage, 0, GetPageCount() - 1));
        Activate(GetActiveIndex());
    }
    return DialogBase::OnInitDialog();
}

void PropertySheet::vLoadLanguageString() {
    DialogBase::vLoadLanguageString();
    for (PropertyPage* page : m_pages) {
        // A page that was shown is told itself; of the others the tabs are seen.
        if (!page->IsCreated()) {
            page->LoadLanguageStrings();
        }
    }
    EvenOutButtons();
}

void PropertySheet::StayOpen(const PropertyPage& page) {
    m_stayOpen = true;
    SetActivePage(page);
}

bool PropertySheet::CanSavePages() {
    for (PropertyPage* page : m_pages) {
        if (page->IsCreated() && !page->CanSave()) {
            SetActivePage(*page);
            return false;
        }
    }
    return true;
}

bool PropertySheet::CancelPages() {
    m_stayOpen = false;
    for (PropertyPage* page : m_pages) {
        if (page->IsCreated() && !m_stayOpen) {
            page->reject();
        }
    }
    return !m_stayOpen;
}

void PropertySheet::OnOK() {
    if (CanSavePages()) {
        DialogBase::OnOK();
    }
}

void PropertySheet::OnCancel() {
    if (CancelPages()) {
        DialogBase::OnCancel();
    }
}

}  // namespace ta::ui
