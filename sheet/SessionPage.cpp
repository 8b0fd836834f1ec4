#include "sheet/SessionPage.h"

#include "platform/ui/PropertySheet.h"
#include "settings/Repository.h"
#include "sheet/PaneLists.h"
#include "sheet/SessionHost.h"
#include "sheet/SettingsSession.h"

#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

namespace ta::sheet {

using ui::Answer;
using ui::LangText;

SessionPage::SessionPage(const char* titleKey) {
    setWindowTitle(titleKey);
}

SessionPage::~SessionPage() = default;

// ---- The session ----

SettingsSession* SessionPage::SharedSession() const {
    const auto* host = dynamic_cast<const SessionHost*>(GetSheet());
    return host == nullptr ? nullptr : &host->Session();
}

SettingsSession& SessionPage::Session() const {
    if (SettingsSession* shared = SharedSession()) {
        return *shared;
    }
    if (m_own == nullptr) {
        m_own = std::make_unique<SettingsSession>();
    }
    return *m_own;
}

// ---- Room ----

void SessionPage::SetForm(QWidget& form) {
    m_form = &form;
    AddFormPart(form);
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(&form);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addWidget(area);
    area->show();  // at once, also on a page that is in front already
}

QSize SessionPage::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    const int line = metrics.lineSpacing();
    QSize size(metrics.horizontalAdvance('0') * 132, line * 32);
    if (m_form != nullptr) {
        size = size.expandedTo(m_form->sizeHint());
    }
    // Around the page: margins, tabs, buttons and the window's frame.
    const QSize around(line * 4, line * 8);
    return size.boundedTo(screen()->availableSize() - around);
}

void SessionPage::AddShortcut(const QKeySequence& keys, QWidget& list, QPushButton& button) {
    auto* shortcut = new QShortcut(keys, &list);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, &button, &QPushButton::click);
}

// ---- Closing ----

Answer AskSave(QWidget& parent) {
    return ui::CurrentPrompts().AskYesNo(&parent, ui::PromptIcon::Question, {},
                                         LangText("IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK"),
                                         Answer::Yes);
}

bool SessionPage::TellEmptyPane(const StudyLists& before, const StudyLists& after) {
    const bool empties = EmptiesFirstPane(before, after, [](StudyType type) {
        return Repository().IsStudyCanUse(type) != 0;  // the next load leaves the others out
    });
    if (empties) {
        TellKey("IDS_TADIALOGS-SHEET_FIRST_PANE");
    }
    return empties;
}

void SessionPage::OnCancel() {
    SettingsSession* shared = SharedSession();
    if (shared != nullptr && shared->IsAnswered()) {
        return;
    }
    if (!HasEdits()) {
        PropertyPage::OnCancel();
        return;
    }
    const Answer answer = AskSave(*this);
    if (answer == Answer::None || (answer == Answer::Yes && !CanSave())) {
        if (GetSheet() != nullptr) {
            GetSheet()->StayOpen(*this);
        }
        return;
    }
    if (shared != nullptr) {
        shared->SetAnswer(answer == Answer::Yes);  // first: the sheet saves what this cannot
    }
    if (answer == Answer::Yes) {
        WriteEdits();
    }
    if (answer == Answer::No) {
        PropertyPage::OnCancel();
    }
}

}  // namespace ta::sheet
