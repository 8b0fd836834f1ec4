#pragma once

#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <memory>

class QTreeWidgetItem;

namespace Ui {
class StudyPicker;
}

namespace ta::sheet {

struct StudyFacts;

/// Lets the user choose one of the studies that he may use. The studies stand under their
/// categories; a search box narrows them by Chinese name, English name and abbreviation. Modal;
/// DoModal gives kIdOk when one was chosen.
class StudyPicker : public ui::DialogBase {
    Q_OBJECT

public:
    explicit StudyPicker(QWidget* parent);
    ~StudyPicker() override;

    /// kNoStudy until one is chosen.
    StudyType ChosenStudy() const { return m_chosen; }

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void AddCategory(const char* textKey, const std::vector<StudyFacts>& studies);
    void Search(const QString& text);
    void ShowState();

    std::unique_ptr<Ui::StudyPicker> m_ui;
    StudyType m_chosen = kNoStudy;
    bool m_found = false;  ///< whether the search finds any
};

}  // namespace ta::sheet
