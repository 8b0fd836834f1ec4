// The chooser of studies for the export of their parameters, beside an empty dialog of its size.

#include "bench/SideBySide.h"
#include "dialogs/MXExportTAParameter.h"
#include "terminal/studies/StudyCatalogue.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

namespace {

/// Shows the window and waits until it is painted.
void Paint(QWidget& window) {
    window.show();
    QApplication::processEvents();
    window.grab();
}

std::vector<std::vector<CString>> AllStudies() {
    std::vector<std::vector<CString>> rows;
    for (const StudyInfo* study : ta::terminal::AllStudies()) {
        rows.push_back({study->cszGetChineseName(), study->cszGetEnglishName()});
    }
    return rows;
}

void OpenEmptyDialog(const QSize& size) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QTableWidget(0, 3));
    layout->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
    dialog.resize(size);
    Paint(dialog);
}

void OpenChooser(benchmark::State& state) {
    const auto rows = AllStudies();
    MXExportTAParameter first(rows);
    Paint(first);
    const QSize size = first.size();
    first.hide();
    const auto open = [&rows] {
        MXExportTAParameter chooser(rows);
        Paint(chooser);
    };
    ta::bench::RunSideBySide(state, open, [&size] { OpenEmptyDialog(size); });
}
BENCHMARK(OpenChooser)->Iterations(100)->Unit(benchmark::kMicrosecond);

}  // namespace
