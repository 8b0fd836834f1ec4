#include "terminal/frame/ExportProfileFile.h"

#include "platform/ui/TextBridge.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace ta::terminal {
namespace {

using FormName = std::pair<ExportForm, const char*>;

constexpr FormName kForms[] = {
    {ExportForm::Fixed, "fixed"},
    {ExportForm::Spreadsheet, "spreadsheet"},
    {ExportForm::CodePage, "codePage"},
    {ExportForm::Analysis, "analysis"},
};

QJsonObject ToJson(const ExportProfile& profile) {
    QJsonArray columns;
    for (const CString& column : profile.columns) {
        columns.append(ui::ToQString(column));
    }
    const auto* const form = std::ranges::find(kForms, profile.form, &FormName::first);
    return {{"name", ui::ToQString(profile.name)},
            {"form", form->second},
            {"columns", columns},
            {"selectedRows", profile.selectedRows},
            {"decimals", profile.decimals},
            {"codePage", profile.codePage}};
}

/// false for an entry without a name or with an unknown form.
bool FromJson(const QJsonObject& json, ExportProfile& profile) {
    const auto* const form = std::ranges::find_if(
        kForms,
        [form = json["form"].toString()](const auto& known) { return form == known.second; });
    profile.name = ui::FromQString(json["name"].toString());
    if (form == std::end(kForms) || profile.name.empty()) {
        return false;
    }
    profile.form = form->first;
    for (const auto& column : json["columns"].toArray()) {
        profile.columns.push_back(ui::FromQString(column.toString()));
    }
    profile.selectedRows = json["selectedRows"].toBool();
    profile.decimals = std::clamp(json["decimals"].toInt(-1), -1, 9);
    profile.codePage = json["codePage"].toInt();
    return true;
}

}  // namespace

bool ExportProfileFile::bLoadExportProfiles(std::vector<ExportProfile>& profiles) {
    QJsonArray entries;
    if (!m_file.Read(entries)) {
        return false;
    }
    profiles.clear();
    for (const auto& entry : entries) {
        ExportProfile profile;
        if (FromJson(entry.toObject(), profile)) {
            profiles.push_back(profile);
        }
    }
    return true;
}

bool ExportProfileFile::bSaveExportProfiles(const std::vector<ExportProfile>& profiles) {
    QJsonArray before;
    if (!m_file.Read(before)) {
        return false;
    }
    QJsonArray entries;
    for (const ExportProfile& profile : profiles) {
        entries.append(ToJson(profile));
    }
    for (const auto& entry : before) {
        if (ExportProfile known; !FromJson(entry.toObject(), known)) {
            entries.append(entry);
        }
    }
    return m_file.Write(entries);
}

}  // namespace ta::terminal
