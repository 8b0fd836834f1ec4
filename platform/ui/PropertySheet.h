#pragma once

#include "platform/ui/DialogBase.h"

#include <vector>

class QPushButton;
class QTabWidget;

namespace ta::ui {

class PropertyPage;

constexpr int kIdApply = 0x3021;

/// A dialog of pages behind tabs, with the buttons OK, Cancel and Apply in a row at its lower
/// right. Ctrl+Tab and Ctrl+Shift+Tab turn the pages.
class TADIALOGS_EXPORT PropertySheet : public DialogBase {
    Q_OBJECT

public:
    /// `caption`: a text, or a language key whose text is taken. `firstPage`: index of the page
    /// that is in front at first. `parent` may be null.
    PropertySheet(const QString& caption, QWidget* parent, int firstPage);
    ~PropertySheet() override;

    /// Appends a page. It stays the caller's, who removes it before it is destroyed.
    void AddPage(PropertyPage& page);
    void RemovePage(PropertyPage& page);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    PropertyPage* GetActivePage() const;
    /// -1 without pages.
    int GetActiveIndex() const;
    /// false when there is no such page or the one in front refuses to go.
    bool SetActivePage(int index);
    bool SetActivePage(const PropertyPage& page);
    /// Off, the sheet has the size of its largest page. On at first.
    void SetResizable(bool resizable);
    QTabWidget& GetTabControl() const { return *m_tabs; }

    /// For a page's OnCancel: the sheet stays open, with the page in front.
    void StayOpen(const PropertyPage& page);

protected:
    bool OnInitDialog() override;
    /// Closes when every page that was shown can be saved; else brings the first one that cannot to
    /// the front.
    void OnOK() override;
    /// Runs the OnCancel of every page that was shown, and closes unless one wants to stay.
    void OnCancel() override;
    void keyPressEvent(QKeyEvent* event) override;

    void vLoadLanguageString() override;

    /// Sets a button's text, or the key of one; all buttons stay of one size.
    void SetButtonText(int id, const QString& text);
    /// Brings the first page that cannot be saved to the front; false when there is one.
    bool CanSavePages();
    /// Runs the pages' OnCancel; false when one wants to stay.
    bool CancelPages();

private:
    QLayout* MakeButtons();
    void EvenOutButtons();
    void OnTabChanged(int index);
    void Activate(int index);

    QTabWidget* m_tabs;
    std::vector<PropertyPage*> m_pages;
    int m_firstPage;
    int m_active = -1;  ///< the page that has been told that it is in front
    bool m_stayOpen = false;
};

}  // namespace ta::ui
