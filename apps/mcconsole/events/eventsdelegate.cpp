// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventsdelegate.h>

#include <platform/widgets/valuetext.h>

#include <QtGui/QFontMetrics>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QTransform>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <memory>

namespace {

constexpr int MostKeptTexts = 2000;  // some screens full
constexpr int MostOfACell = 500;     // characters: more would not fit any screen

/// As the style has it for texts of cells.
int CellMarginOf(const QWidget* widget) {
    const QStyle& style = widget != nullptr ? *widget->style() : *QApplication::style();
    return style.pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
}

bool IsForTheStyle(const QStyleOptionViewItem& option) {
    constexpr QStyle::State marked =
        QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver;
    const bool isEnabled = (option.state & QStyle::State_Enabled) != QStyle::State_None;
    return (option.state & marked) != QStyle::State_None || !isEnabled || option.direction == Qt::RightToLeft;
}

}  // namespace

EventsDelegate::EventsDelegate(QObject* parent) : QStyledItemDelegate(parent), m_texts(MostKeptTexts) {}

void EventsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    if (m_region && !m_region->intersects(option.rect)) return;
    if (IsForTheStyle(option)) return QStyledItemDelegate::paint(painter, option, index);
    const int margin = CellMarginOf(option.widget);
    QRect room = option.rect.adjusted(margin, 0, -margin, 0);
    const QVariant decoration = index.data(Qt::DecorationRole);
    if (decoration.isValid()) {
        const QRect place = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignLeft | Qt::AlignVCenter,
                                                option.decorationSize, room);
        qvariant_cast<QIcon>(decoration).paint(painter, place);
        room.setLeft(place.right() + 1 + 2 * margin);
    }
    if (room.width() <= 0) return;
    const QStaticText& text = TextFor(index.data().toString(), room.width(), option.font);
    const bool isActive = (option.state & QStyle::State_Active) != QStyle::State_None;
    painter->setFont(option.font);
    painter->setPen(option.palette.color(isActive ? QPalette::Active : QPalette::Inactive, QPalette::Text));
    painter->drawStaticText(QPointF(room.left(), room.top() + (room.height() - text.size().height()) / 2),
                            text);
}

const QStaticText& EventsDelegate::TextFor(const QString& text, int width, const QFont& font) const {
    if (font != m_font) m_texts.clear();
    m_font = font;
    const QPair<QString, int> key(text, width);
    if (const QStaticText* const kept = m_texts.object(key)) return *kept;
    const QString line = valuetext::Shortened(text, MostOfACell);
    auto shown = std::make_unique<QStaticText>(line);
    shown->setTextFormat(Qt::PlainText);
    shown->prepare(QTransform(), font);
    if (shown->size().width() > width) {
        shown->setText(QFontMetrics(font).elidedText(line, Qt::ElideRight, width));
        shown->prepare(QTransform(), font);
    }
    QStaticText* const made = shown.release();
    m_texts.insert(key, made);  // which keeps the newest whatever goes for it
    return *made;
}
