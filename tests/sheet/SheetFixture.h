#pragma once

#include "platform/DrawInfo.h"
#include "platform/ui/DragListBox.h"
#include "sheet/StudyTree.h"
#include "sheet/TASetGroup.h"
#include "sheet/TASetParam.h"
#include "sheet/TaParamSettingView.h"
#include "sheet/TaSettingSheet.h"
#include "tests/groupfile/GroupDialogFixture.h"
#include "tests/support/DialogDriver.h"

#include <QAbstractSpinBox>
#include <QPushButton>
#include <QSpinBox>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ta::test {

using Numbers = std::vector<double>;
using Changes = std::vector<unsigned>;
using Lines = std::vector<std::string>;

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

/// The settings sheet on the terminal's studies and a store in memory, with a record of the calls
/// to the store and answers for the modal dialogs that pages open; and the user's hands in it,
/// which work on the page in front.
///
/// The group "Trend" (number 5) shows three panes and has studies in a hidden one; "Swing" (3)
/// shows two; "許功蓋" (8) has one study.
class SheetFixture : public GroupDialogFixture {
protected:
    using DialogAction = std::function<void(ui::DialogBase&)>;

    static constexpr unsigned kGroups = 0;
    static constexpr unsigned kStudies = 1;
    inline static const QStringList kTrendPanes{
        "pane 1: K線, 移動平均線, study 99", "pane 2: 成交量", "pane 3: 隨機指標, 指數移動平均線",
        "hidden 4: ", "hidden 5: 指數平滑異同移動平均線"};

    SheetFixture();
    ~SheetFixture() override;

    static void UseModule(ChartModule& module);
    /// The store as it is at first; the next load takes it.
    void StoreAtFirst();
    /// Puts the study lists of a group, by its place, into the store.
    void Store(unsigned group, const StudyLists& lists);
    static TaDrawInfo& DrawInfo(const CString& group = "Trend");
    static Numbers StoredParams(StudyType type, const CString& group = "Trend") {
        return DrawInfo(group).vecGetStudyParams(type);
    }
    /// The calls to the store since the last time, without those that only ask.
    Lines TakeWrites();

    // ---- The sheet ----

    /// Opens it with a study (from 1) of a pane (from 0) selected.
    void Open(unsigned page = kStudies, int pane = 0, int study = 2, const CString& group = "Trend",
              int showCount = 0);
    /// The study page, after "Trend" got these studies.
    void OpenWith(const StudyLists& lists, int pane, int study);
    CTaSettingSheet& Sheet() { return *m_sheet; }
    void EndSheet() { m_sheet.reset(); }
    template <class Control>
    Control& InFront(const char* name) {
        return Find<Control>(*Sheet().GetActivePage(), name);
    }
    void Turn(unsigned page);
    QPushButton& Button(const char* name) { return InFront<QPushButton>(name); }
    void ClickButton(const char* name) { Click(Button(name)); }
    /// The sheet gets active again when it has closed a dialog.
    void Activate();
    /// A key for the control with the focus.
    void PressKey(int key, Qt::KeyboardModifiers modifiers = {});
    /// Goes to a control by the Tab key.
    void TabTo(QWidget& control);
    void Save() { End(ui::kIdOk); }
    void Cancel() { End(ui::kIdCancel); }
    void End(int button);
    Changes Changed();
    void AwaitPrompts();
    /// Another terminal has committed what the test has put into the store.
    void ReloadAndGoOn();
    /// The user in front of the next modal dialog; see DialogDriver.
    void OnDialog(DialogAction action);

    // ---- The group page ----

    ui::DragListBox& Groups() { return InFront<ui::DragListBox>("groupList"); }
    QString SelectedGroup() { return Groups().currentItem()->text(); }
    /// In the next name dialog, enters the name in place of the one that is `preset`.
    void EnterName(const QString& preset, const QString& name);
    void AddGroup(const QString& name);
    void RenameGroup(const QString& name);
    /// The next file picker gives a file of one group with the study 23.
    void ExpectGroupFile(const CString& name);
    void ImportGroup(const CString& name);

    // ---- The tree of the page in front ----

    sheet::StudyTree& Tree() { return InFront<sheet::StudyTree>("studyTree"); }
    /// "pane 1: K線, 移動平均線" for each pane.
    QStringList Panes();
    QString SelectedStudy() { return Tree().currentItem()->text(0); }
    /// A study of a pane, or, with -1, the pane itself.
    void ClickStudy(int pane, int study);
    void PressInTree(int key, Qt::KeyboardModifiers modifiers = {});
    /// Drags a study to the upper or lower part of another item.
    void Drop(int pane, int study, int toPane, int toStudy, bool lower,
              const std::function<void()>& atEnd = {});

    // ---- The study page ----

    QSpinBox& ShowCount() { return InFront<QSpinBox>("showCountSpin"); }
    CTaParamSettingView& View() { return InFront<CTaParamSettingView>("settingView"); }
    /// Adds the first study that a search finds.
    void AddStudy(const QString& search);
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

    // ---- The user's hands ----

    /// What an input method does: the text at the place of the selection or caret.
    static void TypeText(QWidget& edit, const QString& text);
    static void ClickRow(QListWidget& list, int row);
    static void DragRow(QListWidget& list, int from, int to);

private:
    DialogDriver m_driver;
    std::unique_ptr<CTaSettingSheet> m_sheet;
};

}  // namespace ta::test
