// The chooser of studies for the export of their parameters, beside an empty dialog of its size.

#include "bench/SideBySide.h"
#include "dialogs/MXExportTAParameter.h"
#include "platform/Text.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

namespace {

/// Shows the window and waits until it is painted.
void Paint(QWidget& window) {
    window.show();
    QApplication::processEvents();
    window.grab();
}

/// As many studies as a terminal has, with long names.
std::vector<std::vector<CString>> ManyStudies() {
    constexpr int kStudies = 30;
    std::vector<std::vector<CString>> rows;
    for (int i = 0; i < kStudies; ++i) {
        rows.push_back({ta::text::FromUtf8(fmt::format("指數平滑異同移動平均線 {}", i)),
                        fmt::format("Moving average convergence divergence {}", i)});
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
    const auto rows = ManyStudies();
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
