#pragma once

#include "platform/Types.h"

#include <QString>

class QWidget;

namespace ta::terminal {

/// The longest name of a group, in bytes of the code page.
constexpr std::size_t kMaxGroupNameBytes = 30;

/// Tells every chart view of every group, as after an edit that may have moved groups.
void TellChartsOfGroups();

/// The group menu's commands: ask by prompts, change the repository, save, and tell every chart
/// view. A name that is empty, too long or in use is refused with a message and asked again; so is
/// one with characters that the code page lacks, which come back as "?" for the user to see.
class GroupEditor {
public:
    /// `parent` is the window under the prompts; not owned.
    explicit GroupEditor(QWidget* parent) : m_parent(parent) {}

    /// The name of the new group; empty when there is none: the user cancelled, or the maximum is
    /// reached.
    CString Add();
    /// Renames `name`. The new name; empty when it stays.
    CString Rename(const CString& name);
    /// Deletes `name` after a question. false when it stays, as the last group always does.
    bool Delete(const CString& name);

private:
    struct Question;

    CString AskName(const Question& question) const;
    bool IsFull() const;
    void Tell(const QString& text) const;

    QWidget* m_parent;
};

}  // namespace ta::terminal
