// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/steadylabel.h>

#include <platform/widgets/spokenlabel.h>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>

namespace {

constexpr int MaxWidth = 600;         // pixels: a long text must not push the others aside
constexpr int MaxMinimumWidth = 200;  // pixels: nor hold a window open
constexpr int MaxSpare = 100;         // pixels that are kept for texts to come

}  // namespace

SteadyLabel::SteadyLabel(QWidget* parent, Qt::WindowFlags windowFlags) : QLabel(parent, windowFlags) {
    setTextFormat(Qt::PlainText);
    spokenlabel::Install(*this);
}

SteadyLabel::~SteadyLabel() = default;

void SteadyLabel::ShowText(const QString& text) {
    if (text == this->text()) return;
    // The base class asks for a new layout with every text, unless it is hidden.
    const bool wasHidden = testAttribute(Qt::WA_WState_Hidden);
    setAttribute(Qt::WA_WState_Hidden);
    spokenlabel::SetText(*this, text);
    setAttribute(Qt::WA_WState_Hidden, wasHidden);
    Measure();
}

void SteadyLabel::Measure() {
    m_needed = fontMetrics().horizontalAdvance(text()) + Borders().width();
    if (m_needed <= m_room && m_needed + MaxSpare >= m_room) return;
    m_room = m_needed;
    updateGeometry();
}

QSize SteadyLabel::Borders() const {
    const QMargins margins = contentsMargins();
    return QSize(margins.left() + margins.right() + 2 * margin() + qMax(0, indent()),
                 margins.top() + margins.bottom() + 2 * margin());
}

bool SteadyLabel::Fits() const {
    return m_needed <= width();
}

QSize SteadyLabel::sizeHint() const {
    return WithRoom(QLabel::sizeHint(), MaxWidth);
}

QSize SteadyLabel::minimumSizeHint() const {
    return WithRoom(QLabel::minimumSizeHint(), MaxMinimumWidth);
}

/// As high as a line also without a text.
QSize SteadyLabel::WithRoom(const QSize& hint, int maxWidth) const {
    const int height = fontMetrics().height() + Borders().height();
    return QSize(qMin(qMax(hint.width(), m_room), maxWidth), qMax(hint.height(), height));
}

void SteadyLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    m_room = 0;
    Measure();
}

/// A number of which the end is cut off would be read as another number.
void SteadyLabel::paintEvent(QPaintEvent* event) {
    if (Fits()) return QLabel::paintEvent(event);
    QPainter painter(this);
    drawFrame(&painter);
    const QRect room = contentsRect().marginsRemoved(QMargins(margin(), margin(), margin(), margin()));
    const int flags = int(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine;
    style()->drawItemText(&painter, room, flags, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), foregroundRole());
}
