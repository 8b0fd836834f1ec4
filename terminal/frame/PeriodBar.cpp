#include "terminal/frame/PeriodBar.h"

#include "dialogs/MXSetHistDataBanner.h"
#include "platform/ui/LangText.h"
#include "terminal/chart/ChartPage.h"
#include "terminal/lang/Language.h"

#include <QCoreApplication>
#include <QEvent>

namespace ta::terminal {

PeriodBar::PeriodBar(QWidget* parent)
    : QToolBar(parent), m_banner(new MXSetHistDataBanner(0, "", 0, 0, this)) {
    setObjectName("periodBar");
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    addWidget(m_banner);
    connect(m_banner, &MXSetHistDataBanner::periodChosen, this, &PeriodBar::periodChosen);
    Retranslate();
}

void PeriodBar::Show(const ChartPage& chart, const PeriodSet& available) {
    const BarsKey& shown = chart.Shown();
    std::vector<int> only;
    for (std::size_t i = 0; shown.symbol.empty() && i < kPeriods.size(); ++i) {
        if (available[i]) {
            only.push_back(kPeriods[i].code);
        }
    }
    m_banner->SetState(shown.market, shown.symbol, shown.period, shown.count, only);
}

QList<int> PeriodBar::Favourites() const {
    const std::vector<int>& favourites = m_banner->GetFavourites();
    return QList<int>(favourites.begin(), favourites.end());
}

void PeriodBar::SetFavourites(const QList<int>& favourites) {
    m_banner->SetFavourites({favourites.begin(), favourites.end()});
}

void PeriodBar::Retranslate() {
    setWindowTitle(ui::WithoutMnemonic(Tr("IDS_TERMINAL-FRAME_PERIOD_BAR")));
    QEvent change(QEvent::LanguageChange);  // the toolkit's own comes later
    QCoreApplication::sendEvent(m_banner, &change);
}

}  // namespace ta::terminal
