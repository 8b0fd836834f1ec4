#pragma once

#include "platform/Export.h"
#include "platform/Study.h"
#include "platform/Types.h"
#include "platform/ui/PropertySheet.h"
#include "sheet/SessionHost.h"

#include <QTimer>

#include <memory>
#include <vector>

class CTASetGroup;
class CTASetParam;

/// The settings sheet that a chart window opens: the group page, when the user may edit groups, and
/// the study and parameter page. Run it with DoModal; afterwards it tells what changed, so that
/// only the affected chart windows draw again.
///
/// What is pending in the store is committed when the sheet is made. OK saves both pages and the
/// repository, and commits. Cancel asks whether to save, at most once, when a page has unsaved
/// changes: Yes saves like OK; No gives the repository and the store back the state at the
/// beginning; no answer leaves the sheet open.
///
/// All texts of names in the code page. None of the operations reports an error.
class TADIALOGS_EXPORT CTaSettingSheet : public ta::ui::PropertySheet,
                                         public ta::sheet::SessionHost {
    Q_OBJECT

public:
    /// `captionKey`: a language key or a text. `parent` may be null. `firstPage`: index of the page
    /// in front. `group`: the group that the pages show. `nShowCount`: panes that the caller shows,
    /// 0 for the group's own number. `nSelPane` (from 0) and `nSelStudy` (from 1, 0 for the pane
    /// itself): what the study page selects at first; negative is 0.
    CTaSettingSheet(const char* captionKey, QWidget* parent, unsigned firstPage,
                    const CString& group, int nShowCount, int nSelPane, int nSelStudy);
    /// With a caption in the toolkit's text.
    CTaSettingSheet(const QString& caption, QWidget* parent, unsigned firstPage,
                    const CString& group, int nShowCount, int nSelPane, int nSelStudy);
    ~CTaSettingSheet() override;

    void SetActiveGroup(const CString& name);
    CString GetActiveGroup() const;

    /// Notes a changed group by its UniNum, once.
    void AddToChangeGroupList(const unsigned int& value);
    /// Replaces `out` by the UniNums reported and, behind them, the positions at which the list of
    /// groups now has another name than at first; leaves it as it is when nothing changed. Empty
    /// when the groups were reordered: every group may have changed. Always 0.
    int GetChangeGroupList(std::vector<unsigned int>& out);
    /// The studies saved and the names of their changed lines; an output without any stays as it
    /// is. 1 when there were any, else 0.
    int GetChangeStudy(std::vector<StudyType>& types, std::vector<CString>& names);
    /// For the study page.
    void SetStudySpecialType(VolumeAmountType type, bool first, bool second);

    /// The answer to the close-time question: 1 save, 0 discard or not asked.
    int IsAlwaysSave() const;
    void SetAlwaysSaveFlag(int save);
    /// 1 once an answer was recorded.
    int IsAskBeforeClose() const;

    /// 1 when the order of the groups was changed by dragging; 0 without a group page.
    int IsDragList() const;
    /// 1 when the list of groups was edited; 0 without a group page.
    int IsEditGroup() const;
    /// Whether study settings, or the places of studies, were edited.
    bool IsEditStudy() const;

    /// Writes what the pages hold into the repository, study page first. Always 0.
    int SaveChange() const;

    /// What the pages work on. For them alone.
    ta::sheet::SettingsSession& Session() const override;

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;

private:
    bool Save();
    void End(int result);
    QString ReloadText() const;
    void TellReload();

    std::unique_ptr<ta::sheet::SettingsSession> m_session;
    CTASetGroup* m_pGroupPage = nullptr;
    CTASetParam* m_pParamPage = nullptr;
    QTimer m_tellReload;
};
