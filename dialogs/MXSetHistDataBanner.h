#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <vector>

namespace Ui {
class MXSetHistDataBanner;
}

/// A thin bar above a chart that switches its data period in place: buttons for days, weeks,
/// months, minutes and seconds, and a box for how many minutes or seconds a bar has. Only what the
/// symbol has and the user may see is enabled.
class TADIALOGS_EXPORT MXSetHistDataBanner : public QWidget {
    Q_OBJECT

public:
    /// Shows a chart's state; arguments as for SetState. `parent` may be null.
    MXSetHistDataBanner(std::uint8_t market, const CString& symbol, int dataType, int count,
                        QWidget* parent = nullptr);
    ~MXSetHistDataBanner() override;

    /// Shows what a chart has loaded; periodChosen is not sent. `dataType`: 0 daily, 1 weekly, 2
    /// monthly, 3 minutes, 4 seconds; none is marked for another number. `count`: minutes or
    /// seconds of a bar, 1 to 999, for types 3 and 4. Market 0 or an empty symbol: every period.
    /// `only`: where it is not empty, the data types beside which none is enabled. When memory is
    /// short the user is told.
    void SetState(std::uint8_t market, const CString& symbol, int dataType, int count,
                  const std::vector<int>& only = {});
    int GetDataType() const { return m_dataType; }
    /// Of a bar of the type shown; 0 for days, weeks and months.
    int GetCount() const;

    /// Bar lengths that the user keeps at the top of the box, in his order. The setter takes those
    /// from 1 to 999, each once, and does not send favouritesChanged.
    void SetFavourites(const std::vector<int>& favourites);
    const std::vector<int>& GetFavourites() const { return m_favourites; }

signals:
    /// The user wants this period; `count` as GetCount. It is shown as chosen already.
    void periodChosen(int dataType, int count);
    /// The user has added or removed a favourite.
    void favouritesChanged();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct TADIALOGS_HIDDEN Parts;

    bool IsSeconds() const;
    int CountInBox() const { return IsSeconds() ? m_seconds : m_minutes; }
    void ShowFavourite(int count);
    void Choose(int dataType);
    /// What stands in the box; nothing is no choice.
    void TakeCount();
    void ChooseCount(int count);
    void ToggleFavourite();
    void FillCounts();
    void ShowCount();

    int m_dataType = 0;
    int m_minutes;
    int m_seconds;
    std::vector<int> m_favourites;
    std::unique_ptr<Parts> m_parts;
    std::unique_ptr<Ui::MXSetHistDataBanner> m_ui;
};
