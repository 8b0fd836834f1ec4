#pragma once

#include "platform/DrawInfo.h"
#include "sheet/StudyTree.h"
#include "sheet/TASetParam.h"
#include "sheet/TaParamSettingView.h"
#include "sheet/TaSettingSheet.h"
#include "tests/sheet/SheetFixture.h"

#include <QAbstractSpinBox>
#include <QPushButton>
#include <QSpinBox>

#include <functional>
#include <memory>

namespace ta::test {

using Numbers = std::vector<double>;
using Changes = std::vector<unsigned>;

// Some studies of the terminal, and one that it does not know.
constexpr StudyType kCandles = 0;
constexpr StudyType kAverages = 4;
constexpr StudyType kExponential = 5;
constexpr StudyType kBands = 7;
constexpr StudyType kSar = 8;
constexpr StudyType kIchimoku = 9;
constexpr StudyType kVolume = 16;
constexpr StudyType kMacd = 22;
constexpr StudyType kStochastic = 23;
constexpr StudyType kStochasticRsi = 31;
constexpr StudyType kUnknown = 99;

// Reasons at a field.
inline const QString kRange = "IDS_TADIALOGS-SHEET_FAULT_RANGE";
inline const QString kNumber = "IDS_TADIALOGS-SHEET_FAULT_NUMBER";
inline const QString kInteger = "IDS_TADIALOGS-SHEET_FAULT_INTEGER";
inline const QString kDecimals = "IDS_TADIALOGS-SHEET_FAULT_DECIMALS";
inline const QString kShortBelowLong = "IDS_TERMINAL-CHART_RULE_SHORT_BELOW_LONG";

/// The settings sheet with the study page in front, on the terminal's chart module. The group
/// "Trend" (number 5) shows three panes and has studies in a hidden one; "Swing" (3) shows two.
class StudyPageFixture : public SheetFixture {
protected:
    StudyPageFixture();

    static void UseModule(ChartModule& module);
    /// Puts the study lists of a group into the store.
    void Store(unsigned group, const StudyLists& lists);
    static TaDrawInfo& DrawInfo(const CString& group = "Trend");
    static Numbers StoredParams(StudyType type, const CString& group = "Trend") {
        return DrawInfo(group).vecGetStudyParams(type);
    }

    /// Opens the sheet with a study (from 1) of a pane (from 0) selected.
    void Open(int pane = 0, int study = 2, const CString& group = "Trend", int showCount = 0,
              unsigned firstPage = 1);
    CTaSettingSheet& Sheet() { return *m_sheet; }
    CTASetParam& Page() { return *m_sheet->findChild<CTASetParam*>(); }
    void ShowGroup(const CString& group);
    void Save() { Press(Sheet(), Qt::Key_Return); }
    Changes Changed();

    sheet::StudyTree& Tree() { return Find<sheet::StudyTree>(Page(), "studyTree"); }
    QPushButton& Button(const char* name) { return Find<QPushButton>(Page(), name); }
    void ClickButton(const char* name) { Click(Button(name)); }
    QSpinBox& ShowCount() { return Find<QSpinBox>(Page(), "showCountSpin"); }
    CTaParamSettingView& View() { return Find<CTaParamSettingView>(Page(), "settingView"); }

    QStringList Panes() { return SheetFixture::Panes(Tree()); }
    QString SelectedStudy() { return Tree().currentItem()->text(0); }
    void ClickStudy(int pane, int study) { SheetFixture::ClickStudy(Tree(), pane, study); }
    /// A key in the tree.
    void PressInTree(int key, Qt::KeyboardModifiers modifiers = {});
    /// Drags a study to the upper or lower part of another item; `end` does the rest.
    void Drag(int pane, int study, int toPane, int toStudy, bool lower,
              const std::function<void(QPoint)>& end);
    void Drop(int pane, int study, int toPane, int toStudy, bool lower);
    /// Adds the first study that a search finds.
    void Add(const QString& search);

    /// The control of a row, by what a screen reader calls it.
    template <class Control>
    Control& Named(const QString& name) {
        for (Control* control : View().findChildren<Control*>()) {
            if (control->accessibleName() == name) {
                return *control;
            }
        }
        ADD_FAILURE() << "there is no " << name.toStdString();
        static auto& none = *new Control;
        return none;
    }
    /// The field of a parameter, what it holds, and entering something else.
    QAbstractSpinBox& Value(const QString& name) { return Named<QAbstractSpinBox>(name); }
    QString Text(const QString& name) { return Value(name).text(); }
    void Enter(const QString& name, const QString& text);
    /// The reasons that the editor shows, from the top.
    QStringList Faults();

    void AwaitPrompts();

private:
    std::unique_ptr<CTaSettingSheet> m_sheet;
};

}  // namespace ta::test
