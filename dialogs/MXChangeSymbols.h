#pragma once

#include "platform/ComparisonSets.h"
#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Ui {
class MXChangeSymbols;
}

/// Chooses the symbols that a comparison chart draws together, the history to load for them, and
/// the day on which the comparison is based. Modal: construct it with the chart's choice, run
/// DoModal, and after kIdOk read the new one back; after kIdCancel the results mean nothing.
class TADIALOGS_EXPORT MXChangeSymbols : public ta::ui::DialogBase {
    Q_OBJECT

public:
    using Symbol = ta::ComparedSymbol;
    using HisDataType = ta::ComparedHistory;

    /// `symbols`: the choice so far; equal ones and more than the limit stay as they are until the
    /// user changes them. `limit`: the most symbols that can be chosen; 0 and below takes none.
    /// `baseDateMode`: 0 no base date, 1 date and time, 2 the date alone; any other number hides
    /// the pickers. `baseDate`: days since 1970-01-01 with the time of day as the fraction; 0.0
    /// makes the mode 0. `parent` may be null.
    MXChangeSymbols(const std::vector<Symbol>& symbols, int limit, const HisDataType& history,
                    unsigned baseDateMode, double baseDate, QWidget* parent = nullptr);
    ~MXChangeSymbols() override;

    // ---- Results ----

    /// In the order of the list; two to `limit` of them.
    const std::vector<Symbol>& GetSymbols() const;
    const HisDataType& GetHisDataType() const { return m_history; }
    /// A whole day number, also where the user set a time of day; today's without a base date.
    double GetBaseDate() const { return m_baseDate; }
    /// Whether there is a base date: not in mode 0, and neither after the user has brought back a
    /// set without one.
    bool HasBaseDate() const { return m_shownMode != 0; }

    // ---- Symbols and markets; where memory is short they find nothing ----

    /// Makes the tree of all symbols anew from the quote back-end. When memory is short the user is
    /// told, and the tree stays as it was.
    void vFillLeftTreeCtrl();
    /// What the back-end shows of a symbol; false, and nothing set, when it does not know it. Which
    /// of its names that is, is settled by the first call in the process.
    static bool bGetSymbolItem(CString& symbolText, CString& nameText, unsigned char market,
                               const CString& code);
    /// The list's text of a symbol: "[market]text name", or "[market]code ???".
    CString getSetSymbolString(std::uint8_t market, const CString& code) const;
    /// The id of the first market with the label, whose closing bracket may be missing; 0 when
    /// there is none, or for null.
    std::uint8_t marketNameToId(const char* label) const;
    /// "[name]" of a market with daily history; empty for any other.
    CString cszMarketIDToName(std::uint8_t market) const;

protected:
    bool OnInitDialog() override;
    void vLoadLanguageString() override;
    void OnOK() override;

private:
    struct TADIALOGS_HIDDEN Parts;

    CString TextOf(const Symbol& symbol) const;
    void ConnectControls();
    void ConnectKeys();
    void ShowBaseDate();
    void setDataDescription();
    // The tree and its search.
    void OnAdd();
    void OnDblclkTreeAllsymbols();
    void OnChangeEditSymbolsSearch();
    void FindNext(int step);
    void ShowLeaf(int node);
    void ShowNoLeaf();
    /// Adds the symbols among the nodes, until the limit, which the user is told of.
    void AddLeaves(const std::vector<int>& leaves);
    /// False when the limit did not let it in, which the user is told.
    bool AddSymbol(const Symbol& symbol);
    void PasteCodes();
    void FillRecentMenu();
    // The list of chosen symbols.
    void FillChosenList(int selectedRow);
    int SelectedRow() const;
    void OnDblclkSetSymbols();
    void OnDel();
    void OnDelall();
    void OnMoveUp();
    void OnMoveDown();
    void MoveSelected(int step);
    void OnRowDragged();
    void OnSetfocusSetSymbols();
    // The rest.
    void OnSetting();
    void OnSets();
    bool TakeBaseDate();
    void UseSet(const ta::ComparisonSet& set);

    HisDataType m_history;
    unsigned m_baseDateMode;   ///< as given
    unsigned m_shownMode = 0;  ///< 0 without a base date
    double m_baseDate;
    std::unique_ptr<Parts> m_parts;
    std::unique_ptr<Ui::MXChangeSymbols> m_ui;
};
