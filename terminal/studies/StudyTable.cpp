#include "terminal/studies/StudyTable.h"

#include "platform/Text.h"
#include "terminal/studies/StudyCalculations.h"

#include <iterator>

namespace ta::terminal {
namespace {

using text::FromUtf8;
using Rows = std::vector<StudyDefinition>;
using enum StudyDrawKind;

// Every colour has a contrast of at least 3 to 1 to white and to black.
constexpr std::uint32_t kBlue = 0x1C7ED6;
constexpr std::uint32_t kOrange = 0xE8590C;
constexpr std::uint32_t kPurple = 0x9C36B5;
constexpr std::uint32_t kGreen = 0x2B8A3E;
constexpr std::uint32_t kBrown = 0x96691E;
constexpr std::uint32_t kGrey = 0x7C848C;

constexpr int kSolid = 0;
constexpr int kDash = 1;

constexpr double kLongestPeriod = 1000;

constexpr const char* kShortBelowLong = "IDS_TERMINAL-CHART_RULE_SHORT_BELOW_LONG";
constexpr const char* kFactorWithinMaximum = "IDS_TERMINAL-CHART_RULE_FACTOR_WITHIN_MAXIMUM";

StudyParamInfo Number(const char* chinese, const char* english, double value, double minimum,
                      double maximum, double step, int decimals) {
    return {FromUtf8(chinese), FromUtf8(english), value, minimum, maximum, step, decimals};
}

StudyParamInfo Period(const char* chinese, const char* english, double value, double minimum = 1,
                      double maximum = kLongestPeriod) {
    return Number(chinese, english, value, minimum, maximum, 1, 0);
}

StudyShapeInfo Shape(const char* chinese, const char* english, std::uint32_t colour,
                     StudyDrawKind kind = Line, int style = kSolid) {
    return {FromUtf8(chinese), FromUtf8(english), kind, {colour, 1, style, true}};
}

struct Names {
    const char* chinese;
    const char* english;
    const char* abbreviation;
};

enum class Scale { OfPrices, Own };

StudyDefinition Row(StudyType type, StudyCategory category, Scale scale, const Names& names,
                    StudyCalculation calculate, std::vector<StudyParamInfo> params,
                    std::vector<StudyShapeInfo> shapes, std::vector<StudyRule> rules = {}) {
    return {type,
            category,
            FromUtf8(names.chinese),
            FromUtf8(names.english),
            FromUtf8(names.abbreviation),
            scale == Scale::OfPrices,
            std::move(params),
            std::move(shapes),
            std::move(rules),
            calculate};
}

const StudyRule kFirstBelowSecond{0, 1, false, kShortBelowLong};

Rows PriceRows() {
    constexpr auto kCategory = StudyCategory::Price;
    constexpr auto kScale = Scale::OfPrices;
    return {
        Row(0, kCategory, kScale, {"K線", "Candlestick", "K"}, calculation::Candlesticks, {},
            {Shape("K線", "Candlestick", kGrey, Candlesticks)}),
        Row(4, kCategory, kScale, {"移動平均線", "Moving averages", "MA"},
            calculation::MovingAverages,
            {Period("期數1", "Period 1", 5), Period("期數2", "Period 2", 10),
             Period("期數3", "Period 3", 20), Period("期數4", "Period 4", 60)},
            {Shape("均線1", "MA1", kBlue), Shape("均線2", "MA2", kOrange),
             Shape("均線3", "MA3", kPurple), Shape("均線4", "MA4", kGreen)}),
        Row(5, kCategory, kScale, {"指數移動平均線", "Exponential moving averages", "EMA"},
            calculation::ExponentialAverages,
            {Period("短期", "Short period", 12), Period("長期", "Long period", 26)},
            {Shape("短期均線", "Short EMA", kBlue), Shape("長期均線", "Long EMA", kOrange)},
            {kFirstBelowSecond}),
        Row(6, kCategory, kScale, {"加權移動平均線", "Weighted moving averages", "WMA"},
            calculation::WeightedAverages,
            {Period("短期", "Short period", 10), Period("長期", "Long period", 20)},
            {Shape("短期均線", "Short WMA", kBlue), Shape("長期均線", "Long WMA", kOrange)},
            {kFirstBelowSecond}),
        Row(7, kCategory, kScale, {"布林通道", "Bollinger bands", "BBands"},
            calculation::BollingerBands,
            {Period("期數", "Period", 20, 2),
             Number("標準差倍數", "Standard deviations", 2, 0.1, 10, 0.1, 2)},
            {Shape("上軌", "Upper band", kOrange), Shape("中軌", "Middle band", kGrey, Line, kDash),
             Shape("下軌", "Lower band", kBlue)}),
        Row(8, kCategory, kScale, {"拋物線轉向指標", "Parabolic SAR", "SAR"},
            calculation::ParabolicSar,
            {Number("起始加速因子", "Start factor", 0.02, 0.001, 1, 0.01, 3),
             Number("加速因子遞增值", "Factor step", 0.02, 0.001, 1, 0.01, 3),
             Number("加速因子上限", "Largest factor", 0.2, 0.001, 1, 0.01, 3)},
            {Shape("轉向點", "SAR", kPurple, Dots)},
            {{0, 2, true, kFactorWithinMaximum}, {1, 2, true, kFactorWithinMaximum}}),
        Row(9, kCategory, kScale, {"一目均衡表", "Ichimoku cloud", "Ichimoku"},
            calculation::Ichimoku,
            {Period("轉換線期數", "Conversion period", 9), Period("基準線期數", "Base period", 26),
             Period("先行帶B期數", "Leading span B period", 52)},
            {Shape("轉換線", "Conversion line", kBlue), Shape("基準線", "Base line", kOrange),
             Shape("先行帶A", "Leading span A", kGreen), Shape("先行帶B", "Leading span B", kBrown),
             Shape("延遲線", "Lagging span", kPurple, Line, kDash)},
            {kFirstBelowSecond, {1, 2, false, kShortBelowLong}}),
        Row(10, kCategory, kScale, {"價格通道", "Price channel", "PC"}, calculation::PriceChannel,
            {Period("期數", "Period", 20)},
            {Shape("上軌", "Upper band", kOrange), Shape("中軌", "Middle band", kGrey, Line, kDash),
             Shape("下軌", "Lower band", kBlue)}),
        Row(11, kCategory, kScale, {"成交量加權均價", "Volume weighted average price", "VWAP"},
            calculation::VolumeWeightedPrice, {Period("期數", "Period", 20)},
            {Shape("加權均價", "VWAP", kPurple)}),
    };
}

Rows VolumeRows() {
    constexpr auto kCategory = StudyCategory::Volume;
    constexpr auto kScale = Scale::Own;
    return {
        Row(16, kCategory, kScale, {"成交量", "Volume", "VOL"}, calculation::Volume,
            {Period("短期", "Short period", 5), Period("長期", "Long period", 20)},
            {Shape("成交量", "Volume", kGrey, VolumeBars),
             Shape("短期均量", "Short average", kBlue), Shape("長期均量", "Long average", kOrange)},
            {kFirstBelowSecond}),
        Row(17, kCategory, kScale, {"能量潮", "On balance volume", "OBV"},
            calculation::OnBalanceVolume, {Period("均線期數", "Average period", 10)},
            {Shape("OBV", "OBV", kBlue), Shape("均線", "Average", kOrange)}),
        Row(18, kCategory, kScale, {"成交量比率", "Volume ratio", "VR"}, calculation::VolumeRatio,
            {Period("期數", "Period", 26)}, {Shape("VR", "VR", kBlue)}),
        Row(19, kCategory, kScale, {"資金流量指標", "Money flow index", "MFI"},
            calculation::MoneyFlowIndex, {Period("期數", "Period", 14)},
            {Shape("MFI", "MFI", kBlue)}),
        Row(20, kCategory, kScale, {"佳慶資金流量", "Chaikin money flow", "CMF"},
            calculation::ChaikinMoneyFlow, {Period("期數", "Period", 21)},
            {Shape("CMF", "CMF", kGreen, Histogram)}),
    };
}

Rows OscillatorRows() {
    constexpr auto kCategory = StudyCategory::Oscillator;
    constexpr auto kScale = Scale::Own;
    return {
        Row(22, kCategory, kScale,
            {"指數平滑異同移動平均線", "Moving average convergence divergence", "MACD"},
            calculation::Macd,
            {Period("短期", "Short period", 12), Period("長期", "Long period", 26),
             Period("訊號期數", "Signal period", 9)},
            {Shape("DIF", "DIF", kBlue), Shape("MACD", "MACD", kOrange),
             Shape("OSC", "OSC", kGrey, Histogram)},
            {kFirstBelowSecond}),
        Row(23, kCategory, kScale, {"隨機指標", "Stochastic oscillator", "KD"},
            calculation::Stochastic,
            {Period("RSV期數", "RSV period", 9), Period("K平滑期數", "K smoothing", 3, 1, 100),
             Period("D平滑期數", "D smoothing", 3, 1, 100)},
            {Shape("K值", "K", kBlue), Shape("D值", "D", kOrange)}),
        Row(24, kCategory, kScale, {"相對強弱指標", "Relative strength index", "RSI"},
            calculation::RelativeStrengthIndex,
            {Period("短期", "Short period", 6), Period("長期", "Long period", 12)},
            {Shape("短期RSI", "Short RSI", kBlue), Shape("長期RSI", "Long RSI", kOrange)},
            {kFirstBelowSecond}),
        Row(25, kCategory, kScale, {"威廉指標", "Williams percent range", "WMSR"},
            calculation::WilliamsRange, {Period("期數", "Period", 14)},
            {Shape("威廉指標", "WMSR", kBlue)}),
        Row(26, kCategory, kScale, {"順勢指標", "Commodity channel index", "CCI"},
            calculation::CommodityChannel, {Period("期數", "Period", 20, 2, 500)},
            {Shape("CCI", "CCI", kBlue)}),
        Row(27, kCategory, kScale, {"乖離率", "Bias ratio", "BIAS"}, calculation::Bias,
            {Period("短期", "Short period", 10), Period("長期", "Long period", 20)},
            {Shape("短期乖離", "Short bias", kBlue), Shape("長期乖離", "Long bias", kOrange)},
            {kFirstBelowSecond}),
        Row(28, kCategory, kScale, {"心理線", "Psychological line", "PSY"},
            calculation::PsychologicalLine,
            {Period("短期", "Short period", 12), Period("長期", "Long period", 24)},
            {Shape("短期PSY", "Short PSY", kBlue), Shape("長期PSY", "Long PSY", kOrange)},
            {kFirstBelowSecond}),
        Row(29, kCategory, kScale, {"動量指標", "Momentum", "MTM"}, calculation::Momentum,
            {Period("期數", "Period", 10), Period("均線期數", "Average period", 10)},
            {Shape("MTM", "MTM", kBlue), Shape("均線", "Average", kOrange)}),
        Row(30, kCategory, kScale, {"變動率指標", "Rate of change", "ROC"},
            calculation::RateOfChange,
            {Period("期數", "Period", 12), Period("均線期數", "Average period", 6)},
            {Shape("ROC", "ROC", kBlue), Shape("均線", "Average", kOrange)}),
        Row(31, kCategory, kScale, {"隨機強弱指標", "Stochastic RSI", "StochRSI"},
            calculation::StochasticRsi,
            {Period("RSI期數", "RSI period", 14), Period("隨機期數", "Stochastic period", 14),
             Period("K平滑期數", "K smoothing", 3, 1, 100),
             Period("D平滑期數", "D smoothing", 3, 1, 100)},
            {Shape("K值", "K", kBlue), Shape("D值", "D", kOrange)}),
    };
}

Rows TrendRows() {
    constexpr auto kCategory = StudyCategory::TrendAndVolatility;
    constexpr auto kScale = Scale::Own;
    return {
        Row(40, kCategory, kScale, {"趨向指標", "Directional movement index", "DMI"},
            calculation::DirectionalMovement, {Period("期數", "Period", 14)},
            {Shape("+DI", "+DI", kOrange), Shape("-DI", "-DI", kGreen),
             Shape("ADX", "ADX", kBlue)}),
        Row(41, kCategory, kScale, {"平均真實區間", "Average true range", "ATR"},
            calculation::AverageTrueRange, {Period("期數", "Period", 14)},
            {Shape("ATR", "ATR", kBlue)}),
        Row(42, kCategory, kScale, {"標準差", "Standard deviation", "STD"},
            calculation::StandardDeviation, {Period("期數", "Period", 20, 2)},
            {Shape("標準差", "STD", kBlue)}),
        Row(43, kCategory, kScale, {"三重指數平滑平均線", "Triple exponential average", "TRIX"},
            calculation::Trix,
            {Period("期數", "Period", 12), Period("訊號期數", "Signal period", 9)},
            {Shape("TRIX", "TRIX", kBlue), Shape("訊號線", "Signal", kOrange)}),
    };
}

}  // namespace

const std::vector<StudyDefinition>& StudyTable() {
    static const Rows table = [] {
        Rows rows;
        for (Rows part : {PriceRows(), VolumeRows(), OscillatorRows(), TrendRows()}) {
            std::ranges::move(part, std::back_inserter(rows));
        }
        return rows;
    }();
    return table;
}

}  // namespace ta::terminal
