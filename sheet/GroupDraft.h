#pragma once

#include "sheet/GroupValues.h"

#include <optional>
#include <set>

namespace ta::sheet {

/// The unsaved edits of one group: its full value beside the base, which is what was stored when
/// the draft was made. It is changed when the two differ.
class GroupDraft {
public:
    /// What was written into the repository.
    struct Written {
        bool any = false;
        std::vector<StudyType> types;     ///< studies whose settings were, in order of their types
        std::vector<CString> shapeNames;  ///< names of the lines whose shapes were
        QStringList refused;              ///< names of the studies that the chart module refused

        void Add(const Written& other);
    };

    /// Of what the repository holds; of nothing for an unknown group.
    explicit GroupDraft(const CString& group);

    const CString& Group() const { return m_group; }
    int UniNum() const { return m_uniNum; }
    /// The group has another name now.
    void SetGroup(const CString& group) { m_group = group; }

    const StudyLists& Studies() const { return m_value.studies; }
    /// A study that came with an edit and goes again leaves no looks of its own behind.
    void SetStudies(const StudyLists& lists);
    int ShowCount() const { return m_value.showCount; }
    void SetShowCount(int count) { m_value.showCount = count; }

    /// Whether the group's draw info can tell and take the settings of studies.
    bool IsEditable() const;
    const StudyValues& SettingsOf(const StudyFacts& study);
    /// The text may be anything; see Faults.
    void SetParamText(const StudyFacts& study, int index, const QString& text);
    void SetShape(const StudyFacts& study, int index, const StudyShape& shape);
    void RestoreDefaults(const StudyFacts& study);

    /// Why each parameter cannot be saved; empty for one that can.
    QStringList Faults(const StudyFacts& study);
    /// The studies in the lists that were edited and whose settings cannot be saved.
    std::set<StudyType> FaultyStudies();

    /// Whether the user has edited anything that is not stored.
    bool IsChanged() const { return m_value != m_base; }
    bool AreStudiesChanged() const { return m_value.studies != m_base.studies; }
    /// Writes what the repository holds otherwise into it; nothing of a study with a fault.
    Written Write();
    /// The repository was loaded again: its state is the new base, on which the edits stand.
    void Rebase(const CString& group);

private:
    StudyValues& Values(const StudyFacts& study);
    std::optional<std::vector<double>> Numbers(const StudyFacts& study);
    bool WriteSettings(const StudyFacts& study, Written& written);

    CString m_group;
    int m_uniNum = -1;
    GroupValues m_base;
    GroupValues m_value;
};

}  // namespace ta::sheet
