#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/openers/CsvOpener.h"
#include "terminal/frame/openers/Openers.h"

#include <QMainWindow>
#include <QScopedValueRollback>

namespace ta::terminal {

void OpenPriceFile(const Frame& frame) {
    const QString path =
        ui::CurrentPrompts().OpenFile(&frame.window, Tr("IDS_TERMINAL-FRAME_OPEN_CSV_TITLE"), {},
                                      Tr("IDS_TERMINAL-FRAME_OPEN_CSV_FILTER"));
    if (!path.isEmpty()) {
        OpenPriceFile(frame, path);
    }
}

bool OpenPriceFile(const Frame& frame, const QString& path) {
    static bool opening = false;  // one at a time, as the window takes events meanwhile
    if (opening) {
        return false;
    }
    const QScopedValueRollback once(opening, true);
    const Symbol* symbol = CsvOpener(frame.session.Markets().User(), &frame.window).Open(path);
    if (symbol == nullptr) {
        return false;
    }
    frame.tabs.OpenSymbol(symbol->market, symbol->id);
    frame.Notice(Tr("IDS_TERMINAL-FRAME_CSV_OPENED")
                     .arg(ui::ToQString(NameOf(*symbol)))
                     .arg(frame.tabs.Current().BarCount()));
    return true;
}

}  // namespace ta::terminal
