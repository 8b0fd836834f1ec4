#include "terminal/plot/PaneRepaint.h"

#include <qcustomplot.h>

namespace ta::terminal {
namespace {

// The plotter draws layers as a whole alone. A layer for each pane would have a buffer of the
// plot's size, and each move of the cursor line would put all of them together. Here the pane's
// part of the common buffer is painted, with what the plotter shows its heirs.

struct LayerAccess : QCPLayer {
    static QSharedPointer<QCPAbstractPaintBuffer> BufferOf(QCPLayer& layer) {
        return (layer.*&LayerAccess::mPaintBuffer).toStrongRef();
    }
};

struct LayerableAccess : QCPLayerable {
    static void Draw(QCPLayerable& child, QCPPainter& painter, const QRect& within) {
        painter.save();
        painter.setClipRect((child.*&LayerableAccess::clipRect)().translated(0, -1) & within);
        (child.*&LayerableAccess::applyDefaultAntialiasingHint)(&painter);
        (child.*&LayerableAccess::draw)(&painter);
        painter.restore();
    }
};

/// The pane that something is drawn in; null when that cannot be told.
const QCPAxisRect* RectOf(const QCPLayerable& child) {
    if (const auto* plottable = qobject_cast<const QCPAbstractPlottable*>(&child)) {
        return plottable->keyAxis()->axisRect();
    }
    if (const auto* item = qobject_cast<const QCPAbstractItem*>(&child)) {
        return item->clipAxisRect();
    }
    for (const QCPLayerable* each = &child; each; each = each->parentLayerable()) {
        if (const auto* rect = qobject_cast<const QCPAxisRect*>(each)) {
            return rect;
        }
    }
    return nullptr;
}

void DrawLayer(QCPLayer& layer, QCPPainter& painter, const QCPAxisRect& rect, const QRect& within) {
    for (QCPLayerable* child : layer.children()) {
        const QCPAxisRect* of = RectOf(*child);
        if ((of == &rect || of == nullptr) && child->realVisibility()) {
            LayerableAccess::Draw(*child, painter, within);
        }
    }
}

}  // namespace

bool RepaintPane(QCustomPlot& plot, QCPAxisRect& rect) {
    const auto buffer = LayerAccess::BufferOf(*plot.layer(QStringLiteral("main")));
    if (!buffer || buffer->invalidated() || buffer->size() != plot.viewport().size()) {
        return false;
    }
    QCPPainter* painter = buffer->startPainting();
    if (painter == nullptr || !painter->isActive()) {
        delete painter;
        return false;
    }
    const QRect row(plot.viewport().left(), rect.top(), plot.viewport().width(), rect.height());
    painter->setCompositionMode(QPainter::CompositionMode_Source);
    painter->fillRect(row, Qt::transparent);
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    for (int i = 0; i < plot.layerCount(); ++i) {
        QCPLayer& layer = *plot.layer(i);
        if (LayerAccess::BufferOf(layer) == buffer) {
            DrawLayer(layer, *painter, rect, row);
        }
    }
    delete painter;
    buffer->donePainting();
    return true;
}

}  // namespace ta::terminal
