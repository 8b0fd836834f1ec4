#include "platform/ui/PlainRows.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <list>
#include <utility>

namespace ta::ui {
namespace {

constexpr qsizetype kMostTexts = 4096;
constexpr QStringView kTallText = u"\u529FAg";  // of both the fonts that a text may be in

bool IsPlain(const QStyleOptionViewItem& row) {
    constexpr QStyle::State kSpecial =
        QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver;
    constexpr QStyleOptionViewItem::ViewItemFeatures kMore =
        QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasCheckIndicator;
    return (row.state & kSpecial) == QStyle::State_None && (row.features & kMore) == 0 &&
           row.backgroundBrush.style() == Qt::NoBrush && row.widget != nullptr &&
           row.font == row.widget->font() && !row.text.contains(QChar::LineSeparator) &&
           row.direction == Qt::LeftToRight && row.displayAlignment.testFlag(Qt::AlignLeft);
}

/// At each side of a row's text.
int MarginOf(const QWidget& view) {
    return view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view) + 1;
}

QPalette::ColorGroup ColorsOf(const QStyleOptionViewItem& row) {
    if (!row.state.testFlag(QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return row.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

}  // namespace

PlainRows::PlainRows(QAbstractItemView& view) : QStyledItemDelegate(&view) {
    view.setItemDelegate(this);
}

PlainRows::Texts& PlainRows::TextsIn(const QFont& font) {
    // They go with the application, to which the fonts belong.
    static std::list<std::pair<QFont, Texts>> all;
    const auto found = std::ranges::find(all, font, &std::pair<QFont, Texts>::first);
    if (found != all.end()) {
        return found->second;
    }
    if (all.empty()) {
        qAddPostRoutine([] { all.clear(); });
    }
    return all.emplace_back(font, Texts()).second;
}

const QStaticText& PlainRows::LaidOut(const QString& text, const QFont& font) const {
    if (m_texts == nullptr || m_font != font) {
        m_texts = &TextsIn(font);
        m_font = font;
        m_height = 0;
    }
    if (m_texts->size() > kMostTexts) {
        m_texts->clear();
    }
    QStaticText& laidOut = (*m_texts)[text];
    if (laidOut.text() != text) {
        laidOut.setTextFormat(Qt::PlainText);
        laidOut.setText(text);
        laidOut.prepare({}, font);
    }
    return laidOut;
}

int PlainRows::WidthOf(const QString& text) const {
    const auto& view = static_cast<const QAbstractItemView&>(*parent());
    return static_cast<int>(std::ceil(LaidOut(text, view.font()).size().width()));
}

void PlainRows::paint(QPainter* painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const int margin = row.widget == nullptr ? 0 : MarginOf(*row.widget);
    const QRect place = row.rect.adjusted(margin, 0, -margin, 0);
    if (!IsPlain(row) || WidthOf(row.text) > place.width()) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    row.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &row, painter, row.widget);
    const QStaticText& text = LaidOut(row.text, row.font);
    painter->setFont(row.font);
    painter->setPen(row.palette.color(ColorsOf(row), QPalette::Text));
    const int height = static_cast<int>(std::ceil(text.size().height()));
    painter->drawStaticText(place.left(), place.top() + (place.height() - height) / 2, text);
}

QSize PlainRows::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    if (!IsPlain(row) || index.data(Qt::SizeHintRole).isValid()) {
        return QStyledItemDelegate::sizeHint(option, index);
    }
    const int width = WidthOf(row.text) + 2 * MarginOf(*row.widget);
    if (m_height == 0) {  // since the font is this one
        row.text = kTallText.toString();
        const auto* style = row.widget->style();
        m_height = style->sizeFromContents(QStyle::CT_ItemViewItem, &row, {}, row.widget).height();
    }
    return {width, m_height};
}

}  // namespace ta::ui
