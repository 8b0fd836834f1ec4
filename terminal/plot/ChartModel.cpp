#include "terminal/plot/ChartModel.h"

#include "platform/DrawInfo.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "terminal/lang/NameIn.h"
#include "terminal/plot/ChartLegend.h"
#include "terminal/plot/ChartStudyLook.h"

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

std::vector<ValueSpan> SpansOf(const StudyValues& values) {
    std::vector<ValueSpan> spans(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (const double value : values[i]) {
            spans[i].Add(value);
        }
    }
    return spans;
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
        m_facts = BarFacts::Of(*bars);
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
    m_groupPanes.clear();
    for (std::size_t list = 0; list < lists.size(); ++list) {
        const std::vector<StudyType>& types = lists[list];
        if (!IsShown(types, known)) {
            continue;
        }
        m_groupPanes.push_back(static_cast<int>(list));
        ChartPane& pane = panes.emplace_back();
        for (const StudyType type : types) {
            if (type >= 0) {
                pane.push_back(MakeStudy(type, known, taDrawInfo, used));
            }
        }
    }
    if (panes.empty()) {
        panes.resize(1);
        m_groupPanes = {0};
    }
    m_panes = std::move(panes);
    m_options = drawInfo ? drawInfo->CommonProperty() : CommonProp{};
    m_calculated = std::move(used);
}

bool ChartModel::IsShown(const std::vector<StudyType>& studies, const KnownStudies& known) const {
    if (m_facts.hasVolume || m_bars->empty()) {
        return true;
    }
    const auto isOfVolume = [&known](StudyType type) {
        const auto found = known.find(type);
        return found != known.end() && found->second->GetCategory() == StudyCategory::Volume;
    };
    const auto isStudy = [](StudyType type) { return type >= 0; };
    const auto needsNoVolume = [&](StudyType type) { return isStudy(type) && !isOfVolume(type); };
    return std::ranges::none_of(studies, isStudy) || std::ranges::any_of(studies, needsNoVolume);
}

ChartStudy ChartModel::MakeStudy(StudyType type, const KnownStudies& known,
                                 const TaDrawInfo* drawInfo, Calculations& used) {
    ChartStudy study;
    study.type = type;
    const auto found = known.find(type);
    if (found == known.end()) {
        study.name = study.legend = QStringLiteral("#%1").arg(type);
        return study;
    }
    const StudyInfo& info = *found->second;
    const std::vector<double> params = ParamsOf(info, drawInfo);
    study.name = ui::ToQString(info.cszGetDisplayName());
    study.parameters = ParametersText(params);
    study.outputs = OutputsOf(info, drawInfo);
    study.onPriceScale = info.bIsOverlay() || study.HasCandlesticks();
    study.numbers = NumbersOf(study);
    const Calculation& calculation = Calculate(info, params, used);
    study.values = calculation.values;
    TakeLook(study, info, params);
    FitToBars(study, m_facts);
    MeasureTexts(study, calculation.spans, m_facts, m_title.priceDecimals);
    return study;
}

const ChartModel::Calculation& ChartModel::Calculate(const StudyInfo& info,
                                                     const std::vector<double>& params,
                                                     Calculations& used) {
    Calculation& calculation = used[{info.GetStudyType(), params}];
    if (calculation.values) {
        return calculation;
    }
    const auto before = m_calculated.find({info.GetStudyType(), params});
    if (before != m_calculated.end()) {
        calculation = before->second;
    } else {
        calculation.values =
            std::make_shared<const StudyValues>(info.GetStudy().vecCalculate(*m_bars, params));
        calculation.spans = SpansOf(*calculation.values);
        ++m_calculations;
    }
    return calculation;
}

std::optional<LastPrice> ChartModel::Last() const {
    if (m_bars->empty()) {
        return std::nullopt;
    }
    const Bar& last = m_bars->back();
    const double before = m_bars->size() > 1 ? (*m_bars)[m_bars->size() - 2].close : last.open;
    return LastPrice{last.close, last.close - before};
}

std::vector<LegendEntry> ChartModel::Legend(int pane, int bar, const PlotTheme& theme) const {
    return MakeLegend(*this, pane, bar, theme);
}

QString ChartModel::BarText(int bar) const {
    return MakeBarText(*this, bar);
}

/// Prices of the bar by the mode, or the values of the pane's first study.
std::vector<double> ChartModel::LockValues(const PlotCursor& cursor, bool prices) const {
    using enum CursorLock;
    const CursorLock lock = CursorLockOf(Options());
    const Bar& bar = Bars()[static_cast<std::size_t>(cursor.bar)];
    if (prices) {
        switch (lock) {
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
            case None:
                return {};
        }
    }
    std::vector<double> values;
    if (lock == Intelligent) {
        for (const ChartStudy& study : Panes()[static_cast<std::size_t>(cursor.pane)]) {
            for (std::size_t i = 0; i < study.outputs.size(); ++i) {
                if (study.outputs[i].shape.visible) {
                    values.push_back(study.ValueAt(i, cursor.bar));
                }
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
