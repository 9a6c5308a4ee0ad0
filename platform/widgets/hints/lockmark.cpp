// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/lockmark.h>

#include <QtCore/QEvent>
#include <QtGui/QPainter>

namespace {

constexpr int Distance = 3;  // pixels from the mark to the widget's edge
constexpr int Width = LockMark::Room - Distance - 1;
constexpr int Height = 16;

}  // namespace

LockMark::LockMark(QWidget& locked) : QWidget(&locked) {
    setObjectName(QStringLiteral("LockMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    locked.installEventFilter(this);
    hide();
    Place(locked);
}

void LockMark::Place(const QWidget& locked) {
    const int x = locked.isRightToLeft() ? Distance : locked.width() - Width - Distance;
    setGeometry(x, (locked.height() - Height) / 2, Width, Height);
}

bool LockMark::eventFilter(QObject* watched, QEvent* event) {
    const bool isMoved = event->type() == QEvent::Resize || event->type() == QEvent::LayoutDirectionChange;
    if (isMoved) Place(*static_cast<QWidget*>(watched));
    return false;
}

void LockMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Window));  // hides the widget's arrows and text below
    painter.drawRoundedRect(rect(), 2, 2);
    const QColor ink = palette().color(QPalette::WindowText);
    painter.setBrush(ink);
    painter.drawRoundedRect(QRectF(3, 7.5, 8, 6), 1, 1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.4));
    painter.drawArc(QRectF(4.5, 3, 5, 7), 0, 180 * 16);
    painter.drawLine(QPointF(4.5, 6.5), QPointF(4.5, 8));
    painter.drawLine(QPointF(9.5, 6.5), QPointF(9.5, 8));
}
