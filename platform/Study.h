#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

/// One record of price history.
struct Bar {
    double time = 0;  ///< integer part: days since 1970-01-01; fraction: time of day of 24 hours
    double open = 0;
    double high = 0;
    double low = 0;
    double close = 0;
    double volume = 0;

    bool operator==(const Bar&) const = default;
};

/// Oldest bar first, times strictly ascending.
using BarSeries = std::vector<Bar>;

/// What a volume study of the chart module counts. The values are the chart module's; the library
/// only hands them on.
enum class VolumeAmountType : int;

/// How a line of a study looks.
struct StudyShape {
    std::uint32_t colour = 0;  ///< 0xRRGGBB
    int width = 1;             ///< pixels, 1 to 5
    int style = 0;             ///< 0 solid, 1 dash, 2 dot, 3 dash dot, 4 dash dot dot
    bool visible = true;

    bool operator==(const StudyShape&) const = default;
};

/// What a study draws with one of its outputs.
enum class StudyDrawKind {
    Line,
    Histogram,     ///< bars from zero, coloured by their sign
    VolumeBars,    ///< bars from zero, coloured as the candle of the same time
    Candlesticks,  ///< the price bars themselves; the output holds the closes
    Dots,
};

/// What of a StudyShape, besides its visibility, is used where this kind is drawn; the rest comes
/// from the chart's theme.
struct StudyShapeUse {
    bool colour = false;
    bool width = false;
    bool style = false;
};

constexpr StudyShapeUse ShapeUseOf(StudyDrawKind kind) {
    const bool isLine = kind == StudyDrawKind::Line;
    const bool isGraph = isLine || kind == StudyDrawKind::Dots;
    return {.colour = isGraph, .width = isGraph, .style = isLine};
}

/// A parameter of a study, as an editor needs it.
struct StudyParamInfo {
    CString chineseName;
    CString englishName;
    double defaultValue = 0;
    double minimum = 0;  ///< allowed itself, as is the maximum
    double maximum = 0;
    double step = 1;   ///< of a click on a spin button
    int decimals = 0;  ///< digits after the point that a value keeps
};

/// An output of a study and the looks of what is drawn with it.
struct StudyShapeInfo {
    CString chineseName;
    CString englishName;
    StudyDrawKind kind = StudyDrawKind::Line;
    StudyShape defaultShape;
};

/// A rule between two parameters of a study that their values break.
struct StudyParamFault {
    int parameter = 0;   ///< index of the parameter to show the fault at
    CString messageKey;  ///< language key of the reason
};

/// The categories that a draw info lists its studies by.
enum class StudyCategory { Price = 1, Volume = 2, Oscillator = 3, TrendAndVolatility = 4 };
inline constexpr std::array kStudyCategories{StudyCategory::Price, StudyCategory::Volume,
                                             StudyCategory::Oscillator,
                                             StudyCategory::TrendAndVolatility};

/// A study calculated over bars. Stateless: one object serves any number of calculations.
class TADIALOGS_EXPORT Study {
public:
    virtual ~Study() = default;

    virtual StudyType GetStudyType() const = 0;

    /// One vector per shape of the study's StudyInfo, in that order, each as long as `bars`; NaN
    /// where the study has no value yet (warm-up). `params` has one value per parameter; values
    /// that are missing, out of range or against a rule are replaced by the defaults.
    virtual std::vector<std::vector<double>> vecCalculate(
        const BarSeries& bars, const std::vector<double>& params) const = 0;
};

/// What there is to know about one study type. Owned by the chart module, alive as long as the
/// draw info that named it.
class TADIALOGS_EXPORT StudyInfo {
public:
    virtual ~StudyInfo() = default;

    virtual StudyType GetStudyType() const = 0;
    virtual StudyCategory GetCategory() const = 0;
    /// The name in the language in use. Never begins with "*" and holds no "-" and no "(", which
    /// decorate names in legends.
    virtual CString cszGetDisplayName() const = 0;
    virtual CString cszGetChineseName() const = 0;
    virtual CString cszGetEnglishName() const = 0;
    virtual CString cszGetAbbreviation() const = 0;
    virtual const std::vector<StudyParamInfo>& GetParams() const = 0;
    virtual const std::vector<StudyShapeInfo>& GetShapes() const = 0;
    /// true when the study is drawn over the prices, on their scale.
    virtual bool bIsOverlay() const = 0;
    /// The rules between parameters that `params` (one value per parameter) breaks; empty when
    /// none. Ranges are not looked at.
    virtual std::vector<StudyParamFault> vecCheckParams(
        const std::vector<double>& params) const = 0;
    virtual const Study& GetStudy() const = 0;
};
