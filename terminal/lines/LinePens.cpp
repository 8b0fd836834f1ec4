#include "terminal/lines/LinePens.h"

#include "platform/ui/PenSamples.h"
#include "terminal/plot/PlotTheme.h"

#include <QSettings>

#include <utility>

namespace ta::terminal {
namespace {

constexpr const char* kSection = "linePens";

LinePens* g_instance = nullptr;

QString KeyOf(TrendLineKind kind) {
    return QString::number(static_cast<int>(kind));
}

/// Only lines of one pixel have styles.
LinePen Allowed(LinePen pen) {
    pen.style = pen.width > 1 ? 0 : pen.style;
    return pen;
}

}  // namespace

LinePens::LinePens(QString iniFile) : m_iniFile(std::move(iniFile)) {
    g_instance = this;
    QSettings file(m_iniFile, QSettings::IniFormat);
    file.beginGroup(kSection);
    for (const TrendLineKindInfo& info : TrendLineKinds()) {
        if (const auto pen = DecodePen(file.value(KeyOf(info.kind)).toString().toStdString())) {
            m_pens[info.kind] = Allowed(*pen);
        }
    }
}

LinePens::~LinePens() {
    g_instance = nullptr;
}

LinePens* LinePens::Instance() {
    return g_instance;
}

LinePen LinePens::Of(TrendLineKind kind) const {
    const auto found = m_pens.find(kind);
    return found == m_pens.end() ? InfoOf(kind).pen : found->second;
}

void LinePens::Remember(TrendLineKind kind, LinePen pen) {
    m_pens[kind] = Allowed(pen);
    QSettings file(m_iniFile, QSettings::IniFormat);
    file.beginGroup(kSection);
    file.setValue(KeyOf(kind), QString::fromStdString(EncodePen(m_pens[kind])));
}

LinePen PenOfNewLine(TrendLineKind kind) {
    const LinePens* pens = LinePens::Instance();
    return pens ? pens->Of(kind) : InfoOf(kind).pen;
}

QIcon LinePenIcon(const LinePen& pen, const QPalette& palette) {
    return ui::PenIcon(pen.style, pen.width,
                       PlotTheme::FromPalette(palette, true).Readable(pen.colour));
}

}  // namespace ta::terminal
