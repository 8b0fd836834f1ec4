#include "groupfile/GroupSummary.h"

#include "platform/ui/LangText.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"

namespace ta::groupfile {
namespace {

using ui::LangText;

QString DescribePane(CTaSettingHandle& repository, int pane, bool shown,
                     const std::vector<StudyType>& studies) {
    QStringList names;
    for (const StudyType type : studies) {
        names.append(StudyLabel(repository, type));
    }
    const QString text =
        names.isEmpty() ? LangText("IDS_TADIALOGS-GROUPFILE_NO_STUDY") : Listed(names);
    return LangText(shown ? "IDS_TADIALOGS-GROUPFILE_PANE" : "IDS_TADIALOGS-GROUPFILE_HIDDEN_PANE",
                    QString::number(pane), text);
}

}  // namespace

QString StudyLabel(CTaSettingHandle& repository, StudyType type) {
    const CString name = repository.StudyTypeToStudyName(type);
    return name.empty() ? LangText("IDS_TADIALOGS-GROUPFILE_UNKNOWN_STUDY", QString::number(type))
                        : ui::ToQString(name);
}

QString Listed(const QStringList& texts) {
    return texts.join(LangText("IDS_TADIALOGS-GROUPFILE_LIST_SEPARATOR"));
}

QString Listed(const std::vector<CString>& names) {
    QStringList texts;
    for (const CString& name : names) {
        texts.append(ui::ToQString(name));
    }
    return Listed(texts);
}

QString DescribeGroup(CTaSettingHandle& repository, const GroupContents& contents) {
    QStringList lines{
        LangText("IDS_TADIALOGS-GROUPFILE_SHOW_COUNT", QString::number(contents.showCount))};
    for (int pane = 1; pane <= kPaneCount; ++pane) {
        const auto studies = StudiesIn(contents, static_cast<std::size_t>(pane - 1));
        const bool shown = pane <= contents.showCount;
        if (shown || !studies.empty()) {
            lines.append(DescribePane(repository, pane, shown, studies));
        }
    }
    return lines.join('\n');
}

QString DescribeDifferences(const GroupContents& contents, const GroupContents& existing) {
    const GroupDifferences differences = Differences(contents, existing);
    if (!differences.Any()) {
        return LangText("IDS_TADIALOGS-GROUPFILE_SAME");
    }
    QStringList parts;
    if (differences.showCount) {
        parts.append(LangText("IDS_TADIALOGS-GROUPFILE_DIFFERENT_COUNT",
                              QString::number(existing.showCount),
                              QString::number(contents.showCount)));
    }
    for (const int pane : differences.panes) {
        parts.append(LangText("IDS_TADIALOGS-GROUPFILE_DIFFERENT_PANE", QString::number(pane)));
    }
    if (differences.params) {
        parts.append(LangText("IDS_TADIALOGS-GROUPFILE_DIFFERENT_PARAMS"));
    }
    if (differences.shapes) {
        parts.append(LangText("IDS_TADIALOGS-GROUPFILE_DIFFERENT_SHAPES"));
    }
    if (differences.wndShowKey) {
        parts.append(LangText("IDS_TADIALOGS-GROUPFILE_DIFFERENT_LAYOUT"));
    }
    return LangText("IDS_TADIALOGS-GROUPFILE_DIFFERENT", Listed(parts));
}

}  // namespace ta::groupfile
