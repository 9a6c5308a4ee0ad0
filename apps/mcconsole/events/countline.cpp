// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/countline.h>

#include <QtGui/QPainter>
#include <QtGui/QStaticText>

CountLine::CountLine(QWidget* parent) : SteadyLabel(parent) {
    setAutoFillBackground(true);  // or each new text has all drawn anew that lies below it
}

void CountLine::paintEvent(QPaintEvent* event) {
    // What is cut, or greyed, is left to the style.
    if (!Fits() || !isEnabled() || layoutDirection() == Qt::RightToLeft)
        return SteadyLabel::paintEvent(event);
    QStaticText line(text());
    line.setTextFormat(Qt::PlainText);
    line.setPerformanceHint(QStaticText::ModerateCaching);
    line.prepare(QTransform(), font());
    QPainter painter(this);
    const QRect room = contentsRect();
    painter.drawStaticText(QPointF(room.left(), room.top() + (room.height() - line.size().height()) / 2),
                           line);
}
