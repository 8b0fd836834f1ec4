#include "terminal/plot/ChartModel.h"

#include "platform/DrawInfo.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/lang/NameIn.h"
#include "terminal/plot/ChartLegend.h"

#include <QStringList>

#include <algorithm>

namespace ta::terminal {
namespace {

std::map<StudyType, StudyInfo*> StudiesOf(const ChartBaseDrawInfo& drawInfo) {
    std::map<StudyType, StudyInfo*> studies;
    for (const StudyCategory category : kStudyCategories) {
        std::vector<StudyInfo*> infos;
        drawInfo.vGetStudyInfoVec(infos, static_cast<int>(category));
        for (StudyInfo* info : infos) {
            studies.emplace(info->GetStudyType(), info);
        }
    }
    return studies;
}

QString ParametersText(const std::vector<double>& params) {
    QStringList texts;
    for (const double value : params) {
        texts << QString::number(value, 'g', 10);
    }
    return texts.join(',');
}

std::vector<double> ParamsOf(const StudyInfo& info, const TaDrawInfo* drawInfo) {
    std::vector<double> params;
    if (drawInfo) {
        params = drawInfo->vecGetStudyParams(info.GetStudyType());
    }
    for (std::size_t i = params.size(); i < info.GetParams().size(); ++i) {
        params.push_back(info.GetParams()[i].defaultValue);
    }
    return params;
}

std::vector<ChartOutput> OutputsOf(const StudyInfo& info, const TaDrawInfo* drawInfo) {
    std::vector<StudyShape> shapes;
    if (drawInfo) {
        shapes = drawInfo->vecGetStudyShapes(info.GetStudyType());
    }
    std::vector<ChartOutput> outputs;
    for (const StudyShapeInfo& shape : info.GetShapes()) {
        const std::size_t i = outputs.size();
        outputs.push_back({shape.kind, ui::ToQString(NameIn(shape)),
                           i < shapes.size() ? shapes[i] : shape.defaultShape});
    }
    return outputs;
}

NumberKind NumbersOf(const ChartStudy& study) {
    if (study.onPriceScale) {
        return NumberKind::Price;
    }
    const bool volumes = std::ranges::find(study.outputs, StudyDrawKind::VolumeBars,
                                           &ChartOutput::kind) != study.outputs.end();
    return volumes ? NumberKind::Volume : NumberKind::Plain;
}

}  // namespace

void ChartModel::SetBars(std::shared_ptr<const BarSeries> bars, ChartTitle title) {
    if (!bars) {
        bars = std::make_shared<const BarSeries>();
    }
    if (bars != m_bars) {
        m_calculated.clear();
    }
    m_bars = std::move(bars);
    m_title = std::move(title);
}

void ChartModel::LoadGroup(const CString& name) {
    const int shown = std::clamp(Repository().GetStudyCountByGroupName(name), 1, kPaneCount);
    StudyLists lists;
    Repository().GetStudyListByGroupName(name, lists);
    lists.resize(static_cast<std::size_t>(shown));

    // The draw info last: the questions above may reload and destroy it.
    ChartBaseDrawInfo* drawInfo = Repository().GetDrawInfo(name);
    const auto* taDrawInfo = dynamic_cast<const TaDrawInfo*>(drawInfo);
    const KnownStudies known = drawInfo ? StudiesOf(*drawInfo) : KnownStudies{};
    Calculations used;
    std::vector<ChartPane> panes;
    for (const std::vector<StudyType>& types : lists) {
        ChartPane& pane = panes.emplace_back();
        for (const StudyType type : types) {
            if (type >= 0) {
                pane.push_back(MakeStudy(type, known, taDrawInfo, used));
            }
        }
    }
    m_panes = std::move(panes);
    m_options = drawInfo ? drawInfo->CommonProperty() : CommonProp{};
    m_calculated = std::move(used);
}

ChartStudy ChartModel::MakeStudy(StudyType type, const KnownStudies& known,
                                 const TaDrawInfo* drawInfo, Calculations& used) {
    ChartStudy study;
    study.type = type;
    const auto found = known.find(type);
    if (found == known.end()) {
        study.name = QStringLiteral("#%1").arg(type);
        return study;
    }
    const StudyInfo& info = *found->second;
    const std::vector<double> params = ParamsOf(info, drawInfo);
    study.name = ui::ToQString(info.cszGetDisplayName());
    study.parameters = ParametersText(params);
    study.outputs = OutputsOf(info, drawInfo);
    study.onPriceScale = info.bIsOverlay() || study.HasCandlesticks();
    study.numbers = NumbersOf(study);
    study.values = Calculate(info, params, used);
    return study;
}

std::shared_ptr<const StudyValues> ChartModel::Calculate(const StudyInfo& info,
                                                         const std::vector<double>& params,
                                                         Calculations& used) {
    auto& values = used[{info.GetStudyType(), params}];
    if (values) {
        return values;
    }
    const auto before = m_calculated.find({info.GetStudyType(), params});
    if (before != m_calculated.end()) {
        values = before->second;
    } else {
        values = std::make_shared<const StudyValues>(info.GetStudy().vecCalculate(*m_bars, params));
        ++m_calculations;
    }
    return values;
}

std::vector<LegendEntry> ChartModel::Legend(int pane, int bar, const PlotTheme& theme) const {
    return MakeLegend(*this, pane, bar, theme);
}

QString ChartModel::BarText(int bar) const {
    return MakeBarText(*this, bar);
}

/// Prices of the bar by the mode, or the values of the pane's first study.
std::vector<double> ChartModel::LockValues(const PlotCursor& cursor, bool prices) const {
    enum Mode { Intelligent, Open, High, Low, Close };
    const auto mode = Options().uCursorLineLockMode;
    const Bar& bar = Bars()[static_cast<std::size_t>(cursor.bar)];
    if (prices) {
        switch (mode) {
            case Intelligent:
                return {bar.open, bar.high, bar.low, bar.close};
            case Open:
                return {bar.open};
            case High:
                return {bar.high};
            case Low:
                return {bar.low};
            case Close:
                return {bar.close};
            default:
                return {};
        }
    }
    std::vector<double> values;
    if (mode == Intelligent) {
        for (const ChartStudy& study : Panes()[static_cast<std::size_t>(cursor.pane)]) {
            for (std::size_t i = 0; i < study.outputs.size(); ++i) {
                values.push_back(study.ValueAt(i, cursor.bar));
            }
            if (!study.outputs.empty()) {
                break;
            }
        }
    }
    return values;
}

double ChartModel::CursorValue(int bar) const {
    return Bars()[static_cast<std::size_t>(bar)].close;
}

}  // namespace ta::terminal
