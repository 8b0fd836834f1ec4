#include "terminal/frame/GroupEditor.h"

#include "platform/ui/Prompts.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/TaSettingHandle.h"
#include "terminal/lang/Language.h"

namespace ta::terminal {
namespace {

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

int GroupCount() {
    std::vector<CString> names;
    return static_cast<int>(Repository().GetGroupNameList(names));
}

void SaveAndTellCharts() {
    Repository().SaveAllGroupSetting();
    TellChartsOfGroups();
}

/// Why a name cannot be a group's; empty when it can.
QString FaultOf(const CString& name) {
    if (name.empty()) {
        return Tr("IDS_TERMINAL-FRAME_GROUP_NAME_EMPTY");
    }
    if (name.size() > kMaxGroupNameBytes) {
        return Tr("IDS_TERMINAL-FRAME_GROUP_NAME_LONG").arg(kMaxGroupNameBytes);
    }
    if (Repository().FindGroup(name) != 0) {
        return Tr("IDS_TERMINAL-FRAME_GROUP_NAME_EXISTS").arg(ui::ToQString(name));
    }
    return {};
}

}  // namespace

void TellChartsOfGroups() {
    const int count = GroupCount();
    for (int i = 0; i < count; ++i) {
        Repository().SendMsg2AllTechView(kGroupChangeMessage, static_cast<unsigned>(i));
    }
}

struct GroupEditor::Question {
    QString title;
    QString label;
    QString preset;
};

CString GroupEditor::Add() {
    if (IsFull()) {
        return {};
    }
    const CString name = AskName(
        {Tr("IDS_TERMINAL-FRAME_GROUP_ADD_TITLE"), Tr("IDS_TERMINAL-FRAME_GROUP_NAME"), {}});
    // Another terminal may have added groups while the user was typing.
    if (name.empty() || IsFull() || Repository().AddGroupSetting(name) == 0) {
        return {};
    }
    SaveAndTellCharts();
    return name;
}

CString GroupEditor::Rename(const CString& name) {
    const CString newName = AskName({Tr("IDS_TERMINAL-FRAME_GROUP_RENAME_TITLE"),
                                     Tr("IDS_TERMINAL-FRAME_GROUP_NAME"), ui::ToQString(name)});
    if (newName.empty()) {
        return {};
    }
    if (Repository().ModifyGroupName(name, newName) == 0) {
        Tell(Tr("IDS_TERMINAL-FRAME_GROUP_GONE").arg(ui::ToQString(name)));
        return {};
    }
    SaveAndTellCharts();
    return newName;
}

bool GroupEditor::Delete(const CString& name) {
    if (GroupCount() <= 1) {
        Tell(Tr("IDS_TERMINAL-FRAME_GROUP_LAST"));
        return false;
    }
    const QString question = Tr("IDS_TERMINAL-FRAME_GROUP_ASK_DELETE").arg(ui::ToQString(name));
    if (!ui::CurrentPrompts().AskYesNo(m_parent, ui::PromptIcon::Question,
                                       Tr("IDS_TERMINAL-FRAME_TITLE"), question)) {
        return false;
    }
    if (GroupCount() <= 1 || Repository().DeleteGroupSetting(name) == 0) {
        return false;
    }
    SaveAndTellCharts();
    return true;
}

CString GroupEditor::AskName(const Question& question) const {
    QString text = question.preset;
    for (;;) {
        text = ui::CurrentPrompts().AskText(m_parent, question.title, question.label, text);
        if (text.isNull()) {
            return {};
        }
        const CString name = ui::FromQString(text);
        const QString asStored = ui::ToQString(name);
        const QString fault =
            asStored == text ? FaultOf(name) : Tr("IDS_TERMINAL-FRAME_GROUP_NAME_CHARACTERS");
        if (fault.isEmpty()) {
            return name;
        }
        Tell(fault);
        text = asStored;
    }
}

bool GroupEditor::IsFull() const {
    const int maximum = Repository().GetMaxTAGroupCount();
    if (maximum < 0 || GroupCount() < maximum) {
        return false;
    }
    Tell(Tr("IDS_TERMINAL-FRAME_GROUP_MAXIMUM").arg(maximum));
    return true;
}

void GroupEditor::Tell(const QString& text) const {
    ui::CurrentPrompts().Message(m_parent, ui::PromptIcon::Warning, Tr("IDS_TERMINAL-FRAME_TITLE"),
                                 text);
}

}  // namespace ta::terminal
