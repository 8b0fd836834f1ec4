// The settings sheet on fifty full groups, beside the toolkit's plain widgets.

#include "bench/SideBySide.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "sheet/TaSettingSheet.h"
#include "terminal/frame/Session.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <memory>

namespace {

constexpr int kGroups = 50;

/// A terminal without a window whose repository has fifty groups of ten full panes.
class FullRepository {
public:
    FullRepository() : m_session(Options(m_folder)) {
        m_session.Store().SetTAGroupMaxCount(kGroups);
        CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
        const StudyLists full(kPaneCount, {0, 4, 16, 22, 23, 5, 24, 25});
        for (int i = 1; i < kGroups; ++i) {
            repository.AddGroupSetting(fmt::format("group {}", i));
        }
        std::vector<CString> names;
        repository.GetGroupNameList(names);
        for (const CString& name : names) {
            repository.SetStudyListByGroupName(name, full);
            repository.SetStudyCountByGroupName(name, kPaneCount);
        }
        repository.SaveAllGroupSetting();
    }

    static CString FirstGroup() { return CTaSettingHandle::GetInstance().GetSystemDefaultGroup(); }

private:
    static ta::terminal::Options Options(const QTemporaryDir& folder) {
        ta::terminal::Options options;
        options.configFile = folder.filePath("settings.db");
        options.userFolder = folder.filePath("own");
        return options;
    }

    QTemporaryDir m_folder;
    ta::terminal::Session m_session;
};

/// Shows the window and waits until it is painted; its picture.
QImage Paint(QWidget& window) {
    window.show();
    QApplication::processEvents();
    return window.grab().toImage();
}

std::unique_ptr<CTaSettingSheet> MakeSheet(unsigned page) {
    return std::make_unique<CTaSettingSheet>(QString("Sheet"), nullptr, page,
                                             FullRepository::FirstGroup(), 0, 0, 0);
}

QSize SizeOfSheet(unsigned page) {
    const auto sheet = MakeSheet(page);
    Paint(*sheet);
    return sheet->size();
}

void OpenEmptyDialog(const QSize& size) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* tabs = new QTabWidget;
    tabs->addTab(new QWidget, "One");
    tabs->addTab(new QWidget, "Two");
    layout->addWidget(tabs);
    layout->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
    dialog.resize(size);
    Paint(dialog);
}

/// Argument: the page in front.
void OpenSheet(benchmark::State& state) {
    const FullRepository repository;
    const auto page = static_cast<unsigned>(state.range(0));
    const QSize size = SizeOfSheet(page);
    ta::bench::RunSideBySide(
        state, [page] { Paint(*MakeSheet(page)); }, [&size] { OpenEmptyDialog(size); });
}
BENCHMARK(OpenSheet)->Arg(0)->Arg(1)->Iterations(40)->Unit(benchmark::kMicrosecond);

/// Fills `list` with the rows of `model`.
void FillAlike(QListWidget& list, const QAbstractItemModel& model) {
    for (int row = 0; row < model.rowCount(); ++row) {
        list.addItem(model.index(row, 0).data().toString());
    }
}

/// The next group of the group page, painted, beside the next row of a plain list.
void SelectNextGroup(benchmark::State& state) {
    const FullRepository repository;
    const auto sheet = MakeSheet(0);
    Paint(*sheet);
    auto& groups = *sheet->findChild<QListWidget*>("groupList");
    QListWidget plain;
    FillAlike(plain, *groups.model());
    plain.resize(groups.size());
    Paint(plain);
    const auto next = [](QListWidget& list) {
        list.setCurrentRow((list.currentRow() + 1) % list.count());
        QApplication::processEvents();
    };
    ta::bench::RunSideBySide(
        state, [&] { next(groups), sheet->grab(); }, [&] { next(plain), plain.grab(); });
}
BENCHMARK(SelectNextGroup)->Iterations(200)->Unit(benchmark::kMicrosecond);

/// A plain tree with the rows that the picker shows.
void FillAlike(QTreeWidget& plain, const QTreeWidget& picker) {
    plain.setColumnCount(picker.columnCount());
    for (QTreeWidgetItemIterator item(const_cast<QTreeWidget*>(&picker)); *item != nullptr;
         ++item) {
        if (!(*item)->isHidden()) {
            QStringList texts;
            for (int column = 0; column < picker.columnCount(); ++column) {
                texts.append((*item)->text(column));
            }
            plain.addTopLevelItem(new QTreeWidgetItem(texts));
        }
    }
}

/// One letter in the picker's search box, until the list is painted, beside painting an equal list.
void MeasureTyping(benchmark::State& state, QWidget& picker) {
    auto& edit = *picker.findChild<QLineEdit*>("searchEdit");
    auto& list = *picker.findChild<QTreeWidget*>("studyList");
    edit.setText("m");
    QTreeWidget plain;
    FillAlike(plain, list);
    plain.resize(list.size());
    Paint(plain);
    const auto prepare = [&] {
        edit.clear();
        QApplication::processEvents();
    };
    const auto type = [&] {
        edit.insert("m");
        list.grab();
    };
    ta::bench::RunSideBySide(state, prepare, type, [&] { plain.grab(); });
}

void TypeInPicker(benchmark::State& state) {
    const FullRepository repository;
    StudyLists lists(kPaneCount);
    lists[0] = {0};
    CTaSettingHandle::GetInstance().SetStudyListByGroupName(FullRepository::FirstGroup(), lists);
    const auto sheet = MakeSheet(1);
    Paint(*sheet);
    QTimer::singleShot(0, [&state] {
        QWidget& picker = *QApplication::activeModalWidget();
        MeasureTyping(state, picker);
        picker.close();
    });
    for (QPushButton* button : sheet->findChildren<QPushButton*>("addButton")) {
        if (button->isVisible()) {
            button->click();
        }
    }
}
BENCHMARK(TypeInPicker)->Iterations(200)->Unit(benchmark::kMicrosecond);

}  // namespace
