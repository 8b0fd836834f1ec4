#pragma once

#include "platform/ComparisonSets.h"
#include "platform/ui/DialogBase.h"

#include <memory>

namespace Ui {
class CompareSetsDlg;
}

/// Keeps a choice of compared symbols under a name and brings kept ones back. Modal; kIdOk when the
/// user brings one back. What is kept or removed counts at once.
class CompareSetsDlg : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// `current` is what can be kept. `sets` stays the caller's and outlives the dialog.
    CompareSetsDlg(ta::ComparisonSets& sets, ta::ComparisonSet current, QWidget* parent);
    ~CompareSetsDlg() override;

    /// After kIdOk: what is brought back.
    const ta::ComparisonSet& Chosen() const { return m_chosen; }

protected:
    bool OnInitDialog() override;
    /// Brings the selected one back; keeps the current choice instead when a new name was typed.
    void OnOK() override;

private:
    void FillList(const CString& selected);
    /// Fills the list after the set may have gone; its name goes along.
    void FillWithoutLost(const CString& name);
    CString SelectedName() const;
    void OnSelected();
    void OnNameTyped();
    void OnKeep();
    void OnRemove();
    void Enable();

    ta::ComparisonSets& m_sets;
    ta::ComparisonSet m_current;
    ta::ComparisonSet m_chosen;
    std::unique_ptr<Ui::CompareSetsDlg> m_ui;
};
