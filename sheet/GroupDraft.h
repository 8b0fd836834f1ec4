#pragma once

#include "settings/GroupRecord.h"
#include "sheet/StudyFacts.h"

#include <QStringList>

#include <map>
#include <optional>
#include <set>
#include <vector>

namespace ta::sheet {

/// The unsaved edits of one group: studies by pane, show count, and the studies' parameters and
/// shapes. It keeps what was edited and nothing else; all the rest is read from the repository, so
/// the draft stands on whatever the repository holds now, also after it was loaded again.
class GroupDraft {
public:
    /// What was written: studies in order of their types, names of the lines whose shapes changed;
    /// and the names of the studies whose settings the chart module refused.
    struct Saved {
        std::vector<StudyType> types;
        std::vector<CString> shapeNames;
        QStringList refused;
    };

    explicit GroupDraft(const CString& group);

    const CString& Group() const { return m_group; }
    int UniNum() const { return m_uniNum; }
    /// The group has another name or number now.
    void SetGroup(const CString& group);

    // Studies: 10 lists of 8 slots; as edited, else the repository's.
    StudyLists Studies() const;
    const StudyLists* EditedStudies() const { return m_studies ? &*m_studies : nullptr; }
    void SetStudies(const StudyLists& lists);
    void ForgetStudies() { m_studies.reset(); }
    /// Panes shown, 1 to 10.
    int ShowCount() const;
    std::optional<int> EditedShowCount() const { return m_showCount; }
    void SetShowCount(int count);

    /// Whether the group's draw info can tell and take the settings of studies.
    bool IsEditable() const;
    // The settings of a study, one value per parameter (shape): as edited, else the repository's.
    QStringList ParamTexts(const StudyFacts& study) const;
    std::vector<StudyShape> Shapes(const StudyFacts& study) const;
    /// The text may be anything; see Faults.
    void SetParamText(const StudyFacts& study, int index, const QString& text);
    void SetShape(const StudyFacts& study, int index, const StudyShape& shape);
    void RestoreDefaults(const StudyFacts& study);
    /// What that would change, a line each.
    QStringList ChangesToDefaults(const StudyFacts& study) const;

    /// Why each parameter cannot be saved; empty for one that can.
    QStringList Faults(const StudyFacts& study) const;
    /// The studies in the lists whose settings cannot be saved.
    std::set<StudyType> FaultyStudies() const;

    /// Whether saving would change the repository.
    bool IsChanged() const;
    /// Whether anything was edited, also when it is what the repository holds by now.
    bool HasEdits() const;
    /// Writes what differs into the repository; nothing of a study with a fault. What the
    /// repository then does not hold, because the chart module refused it or the settings were
    /// loaded again on the way, stays drafted.
    Saved Save();

private:
    struct Edits {
        std::map<int, QString> params;
        std::map<int, StudyShape> shapes;
    };

    std::vector<double> StoredParams(const StudyFacts& study) const;
    std::vector<StudyShape> StoredShapes(const StudyFacts& study) const;
    /// The values when every one can be saved.
    std::optional<std::vector<double>> Values(const StudyFacts& study) const;
    const Edits* EditsOf(StudyType type) const;
    bool IsStudyChanged(StudyType type) const;
    bool SaveStudy(const StudyFacts& study, Saved& saved);
    void DropWhatIsStored();

    CString m_group;
    int m_uniNum = -1;
    std::optional<StudyLists> m_studies;
    std::optional<int> m_showCount;
    std::map<StudyType, Edits> m_edits;
};

/// The studies of the lists, each once, in order.
std::vector<StudyType> StudiesIn(const StudyLists& lists);

}  // namespace ta::sheet
