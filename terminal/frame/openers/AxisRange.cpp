#include "dialogs/SetXaxisRangeDlg.h"
#include "dialogs/SetYaxisRangeDlg.h"
#include "platform/Rounding.h"
#include "terminal/chart/ChartPage.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/lang/Language.h"

#include <QMainWindow>
#include <QMenu>

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

/// Digits behind the point that tell values of an axis apart.
int DecimalsOf(const AxisState& axis, int priceDecimals) {
    constexpr int kFinest = 6;
    if (axis.numbers == NumberKind::Price) {
        return priceDecimals;
    }
    const int ofTheRange = 3 - static_cast<int>(std::floor(std::log10(axis.high - axis.low)));
    return std::clamp(ofTheRange, axis.numbers == NumberKind::Volume ? 0 : 2, kFinest);
}

/// What the dialog takes of them. It counts a digit too many between -1 and 0, and those of a
/// number before the point from the eleventh on.
int DigitLimitOf(const AxisState& axis, int decimals) {
    const bool arePrices = axis.numbers == NumberKind::Price && axis.values.low >= 0;
    return arePrices ? decimals : decimals + 2;
}

/// What the user can choose from: the values of all bars with as much room again above and below,
/// outward to whole decimals.
YAxisRange BoundsOf(const AxisState& axis, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double height = axis.values.high - axis.values.low;
    const double room = height > 0 ? height : std::max(std::abs(axis.values.high), 1.0);
    return {false, std::floor((axis.values.low - room) * scale) / scale,
            std::ceil((axis.values.high + room) * scale) / scale};
}

void SetRangeOf(const Frame& frame, const AxisPlace& place) {
    ChartPage& chart = frame.tabs.Current();
    const auto axis = chart.AxisAt(place);
    if (!axis) {
        return frame.Notice(Tr("IDS_TERMINAL-FRAME_AXIS_EMPTY"));
    }
    const int decimals = DecimalsOf(*axis, chart.Model().Title().priceDecimals);
    const YAxisRange bounds = BoundsOf(*axis, decimals);
    TerminalDrawInfo& drawInfo = chart.Axes().DrawInfo();
    drawInfo.CommonProperty().iCurrentAxis = axis->index;
    CSetYaxisRangeDlg dialog(&drawInfo, bounds.maximum, bounds.minimum,
                             DigitLimitOf(*axis, decimals), &frame.window);
    const auto byHand = chart.Axes().RangeOf(axis->index);
    dialog.ShowRange(byHand ? byHand->maximum : RoundedTo(axis->high, decimals),
                     byHand ? byHand->minimum : RoundedTo(axis->low, decimals));
    if (dialog.DoModal() == ui::kIdOk) {
        chart.TakeRange(place);
        if (chart.Axes().RangeOf(axis->index)) {
            frame.Notice(Tr("IDS_TERMINAL-FRAME_AXIS_BY_HAND"));
        }
    }
    chart.setFocus();
}

template <int mode>
void SetPercent(const Frame& frame) {
    ChartPage& chart = frame.tabs.Current();
    const int barWidth = static_cast<int>(chart.Mapping().PixelsPerBar());
    CSetXaxisRangeDlg dialog(&chart.Axes().DrawInfo(), barWidth, mode, &frame.window);
    if (dialog.DoModal() == ui::kIdOk) {
        chart.TakeAxes();
    }
    chart.setFocus();
}

}  // namespace

void SetValueRange(const Frame& frame) {
    SetRangeOf(frame, frame.tabs.Current().AxisInHand());
}

void MakeRangesAutomatic(const Frame& frame) {
    frame.tabs.Current().MakeAxesAutomatic();
    frame.tabs.Current().setFocus();
}

void SetAxisWidth(const Frame& frame) {
    SetPercent<CSetXaxisRangeDlg::kAxisWidthMode>(frame);
}

void SetEdgeSpace(const Frame& frame) {
    SetPercent<CSetXaxisRangeDlg::kEdgeSpaceMode>(frame);
}

void ShowAxisMenu(const Frame& frame, int pane, int scale, const QPoint& position) {
    const AxisPlace place{pane, scale};
    const auto axis = frame.tabs.Current().AxisAt(place);
    auto* menu = new QMenu(&frame.window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const char* key, const auto& run) {
        return menu->addAction(Tr(key), menu, run);
    };
    add("IDS_TERMINAL-FRAME_AXIS_RANGE", [&frame, place] { SetRangeOf(frame, place); });
    add("IDS_TERMINAL-FRAME_AXIS_AUTOMATIC", [&frame, place] {
        frame.tabs.Current().MakeAxisAutomatic(place);
    })->setEnabled(axis && axis->byHand);
    menu->addSeparator();
    add("IDS_TERMINAL-FRAME_AXIS_WIDTH", [&frame] { SetAxisWidth(frame); });
    add("IDS_TERMINAL-FRAME_AXIS_EDGE", [&frame] { SetEdgeSpace(frame); });
    menu->popup(position);
}

}  // namespace ta::terminal
