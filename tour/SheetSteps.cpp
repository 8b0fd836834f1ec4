#include "platform/ui/DialogBase.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "sheet/TAGroupEditDlg.h"
#include "terminal/chart/ChartView.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <algorithm>

namespace ta::tour {
namespace {

/// The sheet's save button.
void Save(QWidget& sheet) {
    QTest::mouseClick(static_cast<ui::DialogBase&>(sheet).GetDlgItem(ui::kIdOk), Qt::LeftButton);
}

void Enter(QWidget& nameDialog, const QString& name) {
    auto& edit = Find<QLineEdit>(nameDialog, "nameEdit");
    edit.selectAll();
    Type(edit, name);
    Push(nameDialog, "okButton");
}

/// Pictures of one round, named "sheet-KIND" with the language behind.
struct Round {
    Guide& guide;
    QString language;

    void Picture(const char* kind) const {
        guide.Picture(QString("sheet-%1-%2").arg(kind, language));
    }
};

/// Drags the second row of the list of groups to the top.
void DragSecondRow(QListWidget& list) {
    const QPoint from = list.visualItemRect(list.item(1)).center();
    const QPoint to = list.visualItemRect(list.item(0)).center();
    QWidget* rows = list.viewport();
    QTest::mousePress(rows, Qt::LeftButton, {}, from);
    QTest::mouseMove(rows, (from + to) / 2);
    QTest::mouseMove(rows, to);
    QTest::mouseRelease(rows, Qt::LeftButton, {}, to);
    Settle();
}

void ShowGroupPage(const Round& round) {
    const auto sheet = [&round](QWidget& dialog) {
        round.Picture("groups");
        auto& list = Find<QListWidget>(dialog, "groupList");
        const QString second = list.item(1)->text();
        DragSecondRow(list);
        Expect(list.item(0)->text() == second, "the dragged row does not move");
        round.Picture("groups-dragged");
        Dismiss(dialog);
    };
    round.guide.Choose(Command::EditSettings, {sheet, Deny});
}

void ShowAdd(const Round& round) {
    const auto sheet = [&round](QWidget& dialog) {
        Push(dialog, "addButton");
        round.Picture("groups-added");
        Push(dialog, "modifyButton");
        Push(dialog, "deleteButton");
        Dismiss(dialog);
    };
    const auto add = [&round](QWidget& dialog) {
        round.Picture("name-add");
        Enter(dialog, QString::fromUtf8("短線 Short"));
    };
    const auto modify = [&round](QWidget& dialog) {
        round.Picture("name-modify");
        Dismiss(dialog);
    };
    const auto question = [&round](QWidget& dialog) {
        round.Picture("groups-delete");
        Dismiss(dialog);
    };
    round.guide.Choose(Command::EditSettings, {sheet, add, modify, question, Deny});
}

/// No page asks which group is to be replaced; a chart module may.
void ShowReplace(const Round& round) {
    CTAGroupEditDlg dialog(&round.guide.Window());
    dialog.SetMode(CTAGroupEditDlg::kReplace);
    round.guide.WithDialogs([&dialog] { dialog.DoModal(); }, {[&round](QWidget& shown) {
                                round.Picture("name-replace");
                                Dismiss(shown);
                            }});
}

/// Types over what the first parameter's field holds.
void EnterFirstParam(QWidget& sheet, const QString& text) {
    auto& field = Find<QAbstractSpinBox>(sheet, {});
    field.selectAll();
    Type(field, text);
}

/// The moving averages of the first pane, opened as by a double click on their legend.
void ShowStudyPage(const Round& round) {
    const auto sheet = [&round](QWidget& dialog) {
        QWidget& view = Find(dialog, "settingView");
        EnterFirstParam(view, "7");
        round.Picture("studies-changed");
        EnterFirstParam(view, "2000");
        round.Picture("studies-fault");
        Push(dialog, "addButton");
        Dismiss(dialog);
    };
    const auto picker = [&round](QWidget& dialog) {
        Type(Find(dialog, "searchEdit"), round.language == "zh" ? "線" : "rsi");
        round.Picture("picker");
        Dismiss(dialog);
    };
    ChartView& chart = round.guide.Chart();
    round.guide.WithDialogs([&chart] { emit chart.legendDoubleClicked(0, 2); },
                            {sheet, picker, Deny});
}

void ShowNameInUse(Guide& guide) {
    const QString used = ui::ToQString(CTaSettingHandle::GetInstance().GetSystemDefaultGroup());
    const auto sheet = [](QWidget& dialog) {
        Push(dialog, "addButton");
        Dismiss(dialog);
    };
    const auto nameDialog = [&used](QWidget& dialog) { Enter(dialog, used); };
    const auto message = [&guide](QWidget& dialog) {
        guide.Picture("group-name-in-use");
        Confirm(dialog);
    };
    guide.Choose(Command::EditSettings, {sheet, nameDialog, message, Dismiss});
}

void ShowSheet(Guide& guide) {
    InBothLanguages(guide, [&guide](const QString& language) {
        const Round round{guide, language};
        ShowGroupPage(round);
        ShowAdd(round);
        ShowReplace(round);
        ShowStudyPage(round);
    });
}

}  // namespace

void AddGroupInSheet(Guide& guide, const QString& name, const char* picture) {
    const auto sheet = [&](QWidget& dialog) {
        Push(dialog, "addButton");
        Save(dialog);
    };
    const auto nameDialog = [&](QWidget& dialog) {
        if (picture != nullptr) {
            guide.Picture(picture);
        }
        Enter(dialog, name);
    };
    guide.Choose(Command::EditSettings, {sheet, nameDialog});
    Expect(guide.Chart().GroupName() == ui::FromQString(name), "the new group is not shown");
}

std::vector<Step> SheetSteps() {
    return {{"group name in use", ShowNameInUse}, {"sheet", ShowSheet}};
}

}  // namespace ta::tour
