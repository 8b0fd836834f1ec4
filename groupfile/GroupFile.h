#pragma once

#include "platform/ProfileFile.h"
#include "platform/Types.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class CTaSettingHandle;

/// The "TASG" group file: indicator groups carried from one installation to another, as a
/// profile-string file. Section "Common" has the version and the group names, joined by ","; each
/// group has a section of its name, in which "$" joins the elements of lists. Neither separator is
/// escaped.
namespace ta::groupfile {

inline const CString kCommonSection = "Common";
inline const CString kFileVersion = "TAS Ver3.0";

/// true when the file says that it is of the version that this program reads.
bool CheckImportFile(const ProfileReader& file);

/// The names in the file, in its order. An empty list has none; two "," in a row have an empty name
/// between them.
std::vector<CString> GetGroupNameListFromFile(const ProfileReader& file);

/// Replaces `out` by the parts of `text` between the separators, empty ones included; an empty text
/// is one empty part. Returns how many.
std::size_t SplitString(std::string_view text, std::string_view separator,
                        std::vector<CString>& out);

/// A value of any length, read into a buffer that grows in steps of 260 characters until the value
/// fits.
CString GetPrivateProfileStringEx(const CString& section, const CString& key,
                                  const CString& defaultValue, const ProfileReader& file);

/// The key of a pane's studies, pane from 1: "StudyType01".
CString StudyTypeKey(std::size_t pane);

/// The file's bytes for these groups, read from the repository.
std::string ExportGroups(CTaSettingHandle& repository, const std::vector<CString>& names);

/// The groups of `names` that come back from the file other than the repository has them: names
/// with a "," or blanks at their ends, names equal but for case, strings with a "$", and the like.
std::vector<CString> GroupsNotCarried(CTaSettingHandle& repository,
                                      const std::vector<CString>& names, const ProfileReader& file);

/// Loads one group of the file into the repository, which is not saved. The group is added when it
/// is not there.
void ImportGroupSetting(CTaSettingHandle& repository, const CString& name,
                        const ProfileReader& file);

}  // namespace ta::groupfile
