#include "dialogs/MXExportTAParameter.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/frame/openers/ParameterPreviewDialog.h"
#include "terminal/parameters/GroupParameters.h"
#include "terminal/parameters/ParameterReader.h"
#include "terminal/parameters/ParameterWriter.h"
#include "terminal/studies/StudyCatalogue.h"

#include <QFileInfo>
#include <QMainWindow>

#include <algorithm>

namespace ta::terminal {
namespace {

void Tell(const Frame& frame, ui::PromptIcon icon, const QString& text) {
    ui::CurrentPrompts().Message(&frame.window, icon, Tr("IDS_TERMINAL-FRAME_TITLE"), text);
}

void TellGroupGone(const Frame& frame, const CString& group) {
    Tell(frame, ui::PromptIcon::Warning,
         Tr("IDS_TERMINAL-PARAMETERS_GROUP_GONE").arg(ui::ToQString(group)));
}

QString Filter() {
    return Tr("IDS_TERMINAL-PARAMETERS_FILES") + " (*.csv)";
}

// ---- Export ----

/// The studies of a group that the user checks; nothing when he cancels.
std::optional<std::vector<StudyType>> AskStudies(const Frame& frame, const CString& group) {
    const std::vector<StudyType> offered = StudiesOfGroup(group);
    std::vector<std::vector<CString>> rows;
    for (const StudyType type : offered) {
        const StudyInfo& study = *FindStudy(type);
        rows.push_back({study.cszGetChineseName(), study.cszGetEnglishName()});
    }
    MXExportTAParameter dialog(rows, &frame.window);
    if (dialog.DoModal() != ui::kIdOk) {
        return std::nullopt;
    }
    std::vector<CString> names;
    dialog.vGetCheckBoxStatus(names);
    std::vector<StudyType> chosen;
    std::ranges::copy_if(offered, std::back_inserter(chosen), [&names](StudyType type) {
        return std::ranges::find(names, FindStudy(type)->cszGetChineseName()) != names.end();
    });
    return chosen;
}

void WriteFile(const Frame& frame, const CString& group, const std::vector<StudyType>& studies,
               const QString& path) {
    const std::vector<StudySettings> settings = ReadGroup(group, studies);
    if (settings.empty()) {
        return TellGroupGone(frame, group);
    }
    const QString fault = ui::WriteWholeFile(path, WriteParameters(settings));
    if (!fault.isEmpty()) {
        return Tell(frame, ui::PromptIcon::Warning, fault);
    }
    frame.Notice(Tr("IDS_TERMINAL-PARAMETERS_EXPORTED")
                     .arg(QString::number(settings.size()), QFileInfo(path).fileName()));
}

// ---- Import ----

/// Nothing, and the user was told why, when the file cannot be read.
std::optional<std::vector<StudySettings>> ReadFile(const Frame& frame, const QString& path) {
    std::string bytes;
    const QString unreadable = ui::ReadWholeFile(path, bytes, kMaxParameterFile);
    if (!unreadable.isEmpty()) {
        Tell(frame, ui::PromptIcon::Warning, unreadable);
        return std::nullopt;
    }
    ParameterFile file = ReadParameters(bytes);
    if (file.fault) {
        Tell(frame, ui::PromptIcon::Warning,
             Tr("IDS_TERMINAL-PARAMETERS_DAMAGED")
                 .arg(QFileInfo(path).fileName(), FaultText(*file.fault)));
        return std::nullopt;
    }
    return std::move(file.studies);
}

void TakeSettings(const Frame& frame, const CString& group,
                  const std::vector<StudySettings>& settings) {
    ParameterPreviewDialog preview(group, settings, &frame.window);
    if (Repository().FindGroup(group) == 0) {
        return TellGroupGone(frame, group);
    }
    const QString name = ui::ToQString(group);
    if (!preview.HasChanges()) {
        return Tell(frame, ui::PromptIcon::Information,
                    Tr("IDS_TERMINAL-PARAMETERS_SAME").arg(name));
    }
    if (preview.DoModal() == ui::kIdOk) {
        Repository().SendMsg2AllTechView(kGroupChangeMessage,
                                         Repository().GetGroupIndexByName(group));
        frame.Notice(Tr("IDS_TERMINAL-PARAMETERS_IMPORTED")
                         .arg(QString::number(preview.TakenCount()), name));
    }
}

}  // namespace

void ExportParameters(const Frame& frame) {
    const CString group = frame.tabs.CurrentChart()->GroupName();
    const auto studies = AskStudies(frame, group);
    if (!studies) {
        return;
    }
    if (studies->empty()) {
        return Tell(frame, ui::PromptIcon::Information, Tr("IDS_TERMINAL-PARAMETERS_NONE_CHECKED"));
    }
    const QString path =
        ui::AskSaveFile(&frame.window, {.title = Tr("IDS_TERMINAL-PARAMETERS_EXPORT_TITLE"),
                                        .name = ui::FileNameOf(ui::ToQString(group)) + ".csv",
                                        .filter = Filter()});
    if (!path.isEmpty()) {
        WriteFile(frame, group, *studies, path);
    }
}

void ImportParameters(const Frame& frame) {
    const CString group = frame.tabs.CurrentChart()->GroupName();
    const QString path = ui::CurrentPrompts().OpenFile(
        &frame.window, Tr("IDS_TERMINAL-PARAMETERS_IMPORT_TITLE"), {}, Filter());
    if (path.isEmpty()) {
        return;
    }
    if (const auto settings = ReadFile(frame, path)) {
        TakeSettings(frame, group, *settings);
    }
}

}  // namespace ta::terminal
