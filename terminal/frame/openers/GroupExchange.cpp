#include "groupfile/TAGroupExport.h"
#include "groupfile/TAGroupImport.h"
#include "platform/ui/Prompts.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/lang/Language.h"

#include <QFileInfo>
#include <QMainWindow>

namespace ta::terminal {

bool IsGroupFile(const QString& path) {
    return QFileInfo(path).suffix().compare("TASG", Qt::CaseInsensitive) == 0;
}

void ExportGroups(const Frame& frame) {
    CTAGroupExport(&frame.window).DoModal();
}

void ImportGroups(const Frame& frame) {
    const QString path = ui::CurrentPrompts().OpenFile(
        &frame.window, Tr("IDS_TERMINAL-FRAME_GROUP_IMPORT_TITLE"), {},
        Tr("IDS_TERMINAL-FRAME_GROUP_FILES") + " (*.TASG *.tasg)");
    if (!path.isNull()) {
        ImportGroups(frame, path);
    }
}

bool ImportGroups(const Frame& frame, const QString& path) {
    ui::Prompts& prompts = ui::CurrentPrompts();
    const QString title = Tr("IDS_TERMINAL-FRAME_TITLE");
    if (!QFileInfo::exists(path)) {
        prompts.Message(&frame.window, ui::PromptIcon::Warning, title,
                        Tr("IDS_TECHVIEW-STRING_GROUPIMPORT_NOSELECT_FILE"));
        return false;
    }
    CTAGroupImport dialog(path, &frame.window);
    if (dialog.DoModal() != ui::kIdOk) {
        return false;
    }
    TellChartsOfGroups();
    prompts.Message(&frame.window, ui::PromptIcon::None, title, dialog.ResultText());
    return true;
}

}  // namespace ta::terminal
