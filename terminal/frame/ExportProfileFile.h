#pragma once

#include "platform/ExportProfiles.h"
#include "terminal/frame/JsonListFile.h"

#include <QString>

namespace ta::terminal {

/// The user's export profiles in a JSON file.
class ExportProfileFile : public ExportProfiles {
public:
    explicit ExportProfileFile(QString path) : m_file(std::move(path)) {}

    /// No file is no profile. Entries that are none are passed over; a file that holds no list
    /// cannot be read.
    bool bLoadExportProfiles(std::vector<ExportProfile>& profiles) override;
    /// The file as a whole or not at all. Entries of it that were passed over stay, behind the
    /// profiles; a file that cannot be read is left alone, with false.
    bool bSaveExportProfiles(const std::vector<ExportProfile>& profiles) override;

private:
    JsonListFile m_file;
};

}  // namespace ta::terminal
