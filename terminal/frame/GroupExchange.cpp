#include "terminal/frame/GroupExchange.h"

#include "groupfile/TAGroupExport.h"
#include "groupfile/TAGroupImport.h"
#include "platform/ui/Prompts.h"
#include "terminal/frame/SettingsOpener.h"
#include "terminal/lang/Language.h"

#include <QFileInfo>
#include <QWidget>

namespace ta::terminal {

bool IsGroupFile(const QString& path) {
    return QFileInfo(path).suffix().compare("TASG", Qt::CaseInsensitive) == 0;
}

void ExportGroups(QWidget& parent) {
    CTAGroupExport(&parent).DoModal();
}

bool ImportGroups(QWidget& parent, QString path) {
    ui::Prompts& prompts = ui::CurrentPrompts();
    const QString title = Tr("IDS_TERMINAL-FRAME_TITLE");
    if (path.isEmpty()) {
        path = prompts.OpenFile(&parent, Tr("IDS_TERMINAL-FRAME_GROUP_IMPORT_TITLE"), {},
                                Tr("IDS_TERMINAL-FRAME_GROUP_FILES") + " (*.TASG *.tasg)");
        if (path.isNull()) {
            return false;
        }
    }
    if (!QFileInfo::exists(path)) {
        prompts.Message(&parent, ui::PromptIcon::Warning, title,
                        Tr("IDS_TECHVIEW-STRING_GROUPIMPORT_NOSELECT_FILE"));
        return false;
    }
    CTAGroupImport dialog(path, &parent);
    if (dialog.DoModal() != ui::kIdOk) {
        return false;
    }
    TellChartsOfGroups();
    prompts.Message(&parent, ui::PromptIcon::None, title, dialog.ResultText());
    return true;
}

}  // namespace ta::terminal
