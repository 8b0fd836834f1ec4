#pragma once

#include "platform/ProfileFile.h"
#include "platform/Types.h"

#include <cstddef>
#include <limits>
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

/// The most names of a file's list that are read. No repository can hold as many groups, and a list
/// of commas alone would make millions of them.
inline constexpr std::size_t kMaxNamesInFile = 1000;

/// true when the file says that it is of the version that this program reads.
bool CheckImportFile(const ProfileReader& file);

// Whoever reads values may hand in a flag. It is set when memory lacked for one; the value is then
// empty, and the reading goes on.

/// Replaces `out` by the names in the file, in its order, the first kMaxNamesInFile of them.
/// Returns how many the file lists. An empty list has none; two "," in a row have an empty name
/// between them.
std::size_t GetGroupNameListFromFile(const ProfileReader& file, std::vector<CString>& out,
                                     bool* noMemory = nullptr);

/// Replaces `out` by the parts of `text` between the separators, empty ones included, the first
/// `most` of them; an empty text is one empty part. Returns how many parts the text has; 0, and an
/// empty `out`, when memory lacks for them.
std::size_t SplitString(std::string_view text, std::string_view separator,
                        std::vector<CString>& out,
                        std::size_t most = std::numeric_limits<std::size_t>::max());

/// A value of any length, read into a buffer of 260 characters at first, doubled until the value
/// fits.
CString GetPrivateProfileStringEx(const CString& section, const CString& key,
                                  const CString& defaultValue, const ProfileReader& file,
                                  bool* noMemory = nullptr);

/// The key of a pane's studies, pane from 1: "StudyType01".
CString StudyTypeKey(std::size_t pane);

/// The file's bytes for these groups, read from the repository.
std::string ExportGroups(CTaSettingHandle& repository, const std::vector<CString>& names);

/// The groups of `names` that come back from the file other than the repository has them: names
/// with a "," or blanks at their ends, names equal but for case, strings with a "$", and the like.
std::vector<CString> GroupsNotCarried(CTaSettingHandle& repository,
                                      const std::vector<CString>& names, const ProfileReader& file);

/// Loads one group of the file into the repository, which is not saved. The group is added when it
/// is not there. Reloads are held off meanwhile: one would take the new group away half-loaded.
void ImportGroupSetting(CTaSettingHandle& repository, const CString& name,
                        const ProfileReader& file, bool* noMemory = nullptr);

}  // namespace ta::groupfile
