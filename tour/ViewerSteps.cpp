#include "dialogs/MXTechDataDlg.h"
#include "platform/Text.h"
#include "platform/ui/LongWork.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/DataViewer.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>

#include <iterator>

namespace ta::tour {
namespace {

using Answer = Guide::Answers::value_type;

// The forms of files, as the export dialog lists them.
constexpr const char* kForms[] = {"fixed", "spreadsheet", "codepage", "analysis"};
// When the progress of copying and saving shows, in milliseconds.
constexpr int kUsualDelay = 500;
constexpr int kNoProgress = 1000000;  // a slow machine must not show it in between

constexpr int kSpreadsheetForm = 1;
constexpr int kCodePageForm = 2;

/// A viewer in one language, with the user's hands and the camera.
struct Visit {
    Guide& guide;
    MXTechDataDlg& viewer;
    QString language;

    void Picture(const QString& name) const { guide.Picture("data-" + name + '-' + language); }
    /// Takes a picture of a dialog before it is answered.
    Answer Pictured(const QString& name, const Answer& answer) const {
        return [this, name, answer](QWidget& dialog) {
            Picture(name);
            answer(dialog);
        };
    }
    void Do(const std::function<void()>& action, const Guide::Answers& answers) const {
        viewer.activateWindow();
        Expect(QTest::qWaitForWindowActive(&viewer), "the data viewer does not get active");
        guide.WithDialogs(action, answers);
    }
    void Press(Qt::Key key, const Guide::Answers& answers = {}) const {
        Do([this, key] { QTest::keyClick(&List(), key, Qt::ControlModifier); }, answers);
    }
    void PushButton(const char* button, const Guide::Answers& answers) const {
        Do([this, button] { Push(viewer, button); }, answers);
    }
    QTableView& List() const { return Find<QTableView>(viewer, "dataTable"); }
    /// A file beside the pictures, which is not there.
    QString FreshFile(const QString& name) const {
        QString path = guide.FileBeside("data-" + language + '-' + name);
        QFile::remove(path);
        return path;
    }
};

/// Does what the viewer's timer does, without waiting for it.
void Fill(MXTechDataDlg& viewer) {
    constexpr int kMostTicks = 10000;
    const auto& button = Find<QPushButton>(viewer, "profileButton");
    for (int tick = 0; !button.isEnabled(); ++tick) {
        Expect(tick < kMostTicks, "the data viewer is never full");
        viewer.ShowData();
    }
}

// ---- The window ----

void ShowFill(const Visit& visit) {
    const QAbstractItemModel& rows = *visit.List().model();
    Expect(QTest::qWaitFor([&] { return rows.rowCount() > 0; }), "no rows come");
    visit.Picture("viewer-filling");
    Fill(visit.viewer);
    Expect(rows.rowCount() == visit.guide.Chart().BarCount(), "the data viewer lacks bars");
    visit.Picture("viewer");
}

void ShowContextMenu(const Visit& visit) {
    QTableView& list = visit.List();
    const QPoint place(240, 120);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list.viewport(), &event);
    Settle();
    auto& menu = Find<QMenu>(visit.viewer, "");
    visit.Picture("context-menu");
    menu.close();
}

void ShowWidths(const Visit& visit) {
    visit.Press(Qt::Key_2);
    visit.Picture("widths-of-data");
    visit.Press(Qt::Key_1);
    Fill(visit.viewer);
    visit.Picture("widths-of-headings");
}

void ShowGoToDate(const Visit& visit) {
    const auto outside = [&](QWidget& dialog) {
        Find<QDateEdit>(dialog, "dateEdit").setDate({1999, 12, 31});
        Push(dialog, "okButton");
        Find<QDateEdit>(dialog, "dateEdit").setDate(QDate::currentDate());
        Dismiss(dialog);
    };
    visit.Press(Qt::Key_G, {visit.Pictured("go-to-date", outside),
                            visit.Pictured("go-to-date-outside", Confirm)});
    const QModelIndex row = visit.List().model()->index(60, 0);
    visit.Press(
        Qt::Key_G, {[&](QWidget& dialog) {
            const QString date = row.data().toString().left(10);
            Find<QDateEdit>(dialog, "dateEdit").setDate(QDate::fromString(date, "yyyy/MM/dd"));
            Confirm(dialog);
        }});
    const QString shown = visit.List().currentIndex().siblingAtColumn(0).data().toString();
    Expect(shown.left(10) == row.data().toString().left(10), "the date is not shown");
    Expect(visit.guide.Chart().CursorBar() >= 0, "the chart does not go to the date");
    visit.Picture("gone-to-date");
}

// ---- Copy and save ----

void ShowCopied(const Visit& visit) {
    visit.PushButton("copyButton", {visit.Pictured("copied", Confirm)});
}

void ShowSaved(const Visit& visit) {
    const QString path = visit.FreshFile("saved.csv");
    visit.PushButton("saveButton",
                     {visit.Pictured("save-file", ChooseFile(path)),
                      visit.Pictured("save-creates", Confirm), visit.Pictured("saved", Confirm)});
    visit.PushButton("saveButton", {ChooseFile(path), Confirm});  // replaced without a question
    visit.PushButton("saveButton", {ChooseFile(path + "/in-a-file.csv"), Confirm,
                                    visit.Pictured("save-fails", Confirm)});
}

/// Saves the table in a form of the export dialog.
void SaveAs(const Visit& visit, int form) {
    const char* const name = kForms[form];
    const auto choose = [&visit, form, name](QWidget& dialog) {
        Find<QComboBox>(dialog, "formCombo").setCurrentIndex(form);
        visit.Picture(QString("export-") + name);
        Push(dialog, "okButton");
    };
    const QString path = visit.FreshFile(QString(name) + ".csv");
    visit.PushButton("profileButton", {choose, ChooseFile(path), Confirm, Confirm});
    Expect(QFile::exists(path), "the file is not saved");
}

/// What a person sees in the table, for those who compare it with the files.
void WriteShown(const Visit& visit) {
    const QAbstractItemModel& cells = *visit.List().model();
    QJsonArray headings;
    for (int column = 0; column < cells.columnCount(); ++column) {
        headings.append(cells.headerData(column, Qt::Horizontal).toString());
    }
    QJsonArray rows;
    for (int row = 0; row < cells.rowCount(); ++row) {
        QJsonArray texts;
        for (int column = 0; column < cells.columnCount(); ++column) {
            texts.append(cells.index(row, column).data().toString());
        }
        rows.append(texts);
    }
    const QString title = Find<QLabel>(visit.viewer, "titleLabel").text();
    QFile file(visit.FreshFile("shown.json"));
    const QByteArray text =
        QJsonDocument(QJsonObject{{"title", title}, {"headings", headings}, {"rows", rows}})
            .toJson();
    Expect(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(),
           "what is shown cannot be written");
}

void ShowExports(const Visit& visit) {
    for (int form = 0; form < static_cast<int>(std::size(kForms)); ++form) {
        SaveAs(visit, form);
    }
    WriteShown(visit);
}

/// A profile without a name, kept, kept again, and deleted.
void ShowProfiles(const Visit& visit) {
    const auto keep = [&visit](QWidget& dialog) {
        Push(dialog, "keepButton");
        Type(Find<QLineEdit>(dialog, "nameEdit"), "Excel");
        Push(dialog, "keepButton");
        visit.Picture("profile-kept");
        Push(dialog, "keepButton");
        Push(dialog, "deleteButton");
        Dismiss(dialog);
    };
    visit.PushButton("profileButton", {keep, visit.Pictured("profile-without-name", Confirm),
                                       visit.Pictured("profile-replaced", Confirm)});
}

constexpr void (*kStates[])(const Visit& visit) = {
    ShowFill,   ShowContextMenu, ShowWidths,  ShowGoToDate,
    ShowCopied, ShowSaved,       ShowExports, ShowProfiles,
};

void ShowViewer(Guide& guide, const QString& language) {
    guide.Choose(Command::ViewData);
    MXTechDataDlg* const viewer = terminal::DataViewer::Of(guide.Chart()).Window();
    Expect(viewer != nullptr, "the data viewer does not open");
    viewer->move(guide.Middle(*viewer));
    const Visit visit{guide, *viewer, language};
    ui::SetProgressDelay(kNoProgress);
    for (const auto state : kStates) {
        state(visit);
    }
    ui::SetProgressDelay(kUsualDelay);
    Push(*viewer, "closeButton");
}

// ---- More than a spreadsheet takes ----

/// One line more than a spreadsheet takes, with headings that a western code page lacks.
struct LargeTable {
    techdata::Headers headers{{text::FromUtf8("日期"), 0, 0, -1},
                              {text::FromUtf8("收盤價"), 0, 0, 2}};
    techdata::Records records{std::size_t{1} << 20U, OneRecord{18000, {12.5}}};
};

void ShowLosses(const Visit& visit) {
    const auto loseCharacters = [&visit](QWidget& dialog) {
        Find<QComboBox>(dialog, "formCombo").setCurrentIndex(kCodePageForm);
        auto& codePage = Find<QComboBox>(dialog, "codePageCombo");
        codePage.setCurrentIndex(codePage.findData(1252));
        visit.Picture("export-losses");
        Push(dialog, "okButton");
        Dismiss(dialog);
    };
    visit.PushButton("profileButton", {loseCharacters, visit.Pictured("lost-characters", Deny)});
    const auto chooseSpreadsheet = [](QWidget& dialog) {
        Find<QComboBox>(dialog, "formCombo").setCurrentIndex(kSpreadsheetForm);
        Push(dialog, "okButton");
        Dismiss(dialog);
    };
    visit.PushButton("profileButton", {chooseSpreadsheet, visit.Pictured("too-many-rows", Deny)});
}

void ShowProgress(const Visit& visit) {
    ui::SetProgressDelay(0);
    visit.PushButton("copyButton", {visit.Pictured("progress", [](QWidget& progress) {
                         QTest::mouseClick(&Find<QPushButton>(progress, ""), Qt::LeftButton);
                     })});
    ui::SetProgressDelay(kUsualDelay);
}

void ShowLargeTable(Guide& guide, const QString& language) {
    LargeTable table;
    MXTechDataDlg viewer("2^20", "", techdata::kDailyData, table.headers, table.records, 0, 0, 0, 0,
                         "", 0, 0, nullptr, &guide.Window());
    viewer.show();
    Fill(viewer);
    const Visit visit{guide, viewer, language};
    ShowLosses(visit);
    ShowProgress(visit);
}

void ShowInChinese(Guide& guide) {
    ShowViewer(guide, "zh");
    ShowLargeTable(guide, "zh");
}

/// On the minutes of the second tab.
void ShowInEnglish(Guide& guide) {
    guide.Choose(Command::English);
    const int before = guide.Tabs().currentIndex();
    guide.Tabs().setCurrentIndex(1);
    ShowViewer(guide, "en");
    ShowLargeTable(guide, "en");
    guide.Tabs().setCurrentIndex(before);
    guide.Choose(Command::Chinese);
}

}  // namespace

std::vector<Step> ViewerSteps() {
    return {{"data viewer in Chinese", ShowInChinese}, {"data viewer in English", ShowInEnglish}};
}

}  // namespace ta::tour
