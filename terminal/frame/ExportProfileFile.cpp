#include "terminal/frame/ExportProfileFile.h"

#include "platform/ui/FileAccess.h"
#include "platform/ui/TextBridge.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
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
    for (const QJsonValue& column : json["columns"].toArray()) {
        profile.columns.push_back(ui::FromQString(column.toString()));
    }
    profile.selectedRows = json["selectedRows"].toBool();
    profile.decimals = std::clamp(json["decimals"].toInt(-1), -1, 9);
    profile.codePage = json["codePage"].toInt();
    return true;
}

}  // namespace

bool ExportProfileFile::bLoadExportProfiles(std::vector<ExportProfile>& profiles) {
    std::vector<ExportProfile> found;
    if (QFile::exists(m_path)) {
        std::string bytes;
        QJsonParseError error{};
        const bool isRead = ui::ReadWholeFile(m_path, bytes).isEmpty();
        const QJsonDocument file =
            QJsonDocument::fromJson(QByteArray::fromStdString(bytes), &error);
        if (!isRead || error.error != QJsonParseError::NoError) {
            return false;
        }
        for (const QJsonValue& entry : file.array()) {
            ExportProfile profile;
            if (FromJson(entry.toObject(), profile)) {
                found.push_back(profile);
            }
        }
    }
    profiles = std::move(found);
    return true;
}

bool ExportProfileFile::bSaveExportProfiles(const std::vector<ExportProfile>& profiles) {
    QJsonArray entries;
    for (const ExportProfile& profile : profiles) {
        entries.append(ToJson(profile));
    }
    return ui::WriteWholeFile(m_path, QJsonDocument(entries).toJson().toStdString()).isEmpty();
}

}  // namespace ta::terminal
