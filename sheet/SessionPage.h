#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/PropertyPage.h"

#include <memory>
#include <vector>

namespace ta::sheet {

class SettingsSession;

/// A page of the settings sheet. It works on the session of its sheet; outside a settings sheet on
/// one of its own. Its form is made when the page first comes to the front, and scrolls where the
/// screen has too little room for it.
class TADIALOGS_EXPORT SessionPage : public ui::PropertyPage {
    Q_OBJECT

public:
    /// `titleKey`: the text of the tab.
    explicit SessionPage(const char* titleKey);
    ~SessionPage() override;

    /// The same for all pages, so that the sheet does not change its size with the page in front;
    /// larger when the form is, but not larger than the screen has room for.
    QSize sizeHint() const override;

protected:
    SettingsSession& Session() const;
    /// The session of the sheet; null outside one.
    SettingsSession* SharedSession() const;

    /// Whether the page holds changes that the close-time question is about.
    virtual bool HasEdits() const = 0;
    /// Writes them into the repository. Only after CanSave.
    virtual void WriteEdits() = 0;
    /// Puts the close-time question, once for all pages.
    void OnCancel() override;

    /// Takes the page's form, which scrolls in the page.
    void SetForm(QWidget& form);
    /// Refuses, with the reason, to take the last study out of the first pane; see
    /// EmptiesFirstPane. Whether it did.
    bool TellEmptyPane(const std::vector<std::vector<StudyType>>& before,
                       const std::vector<std::vector<StudyType>>& after);

    /// While `list` has the focus, `keys` press `button`.
    void AddShortcut(const QKeySequence& keys, QWidget& list, QPushButton& button);

private:
    mutable std::unique_ptr<SettingsSession> m_own;
    QWidget* m_form = nullptr;
};

/// The question whether to save.
ui::Answer AskSave(QWidget& parent);

}  // namespace ta::sheet
