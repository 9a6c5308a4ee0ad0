// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/changemark.h>

#include <QtCore/QEvent>

ChangeMark::ChangeMark(QWidget& marked) : QFrame(marked.parentWidget()) {
    setObjectName(QStringLiteral("ChangeMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Highlight);
    marked.installEventFilter(this);
    hide();
    Place(marked);
}

void ChangeMark::Place(const QWidget& marked) {
    constexpr int Width = 4;
    constexpr int Distance = 1;
    const QRect place = marked.geometry();
    const int left = marked.isRightToLeft() ? place.right() + 1 + Distance : place.left() - Width - Distance;
    setGeometry(left, place.top(), Width, place.height());
}

bool ChangeMark::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        Place(*static_cast<QWidget*>(watched));
    return false;
}
