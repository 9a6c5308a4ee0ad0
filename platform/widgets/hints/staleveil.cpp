// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/staleveil.h>

#include <QtCore/QEvent>
#include <QtGui/QPainter>

namespace {

constexpr int DimAlpha = 120;    // of 255: what lies below can still be read
constexpr int HatchAlpha = 110;  // seen at a glance, also on a dark palette

}  // namespace

StaleVeil::StaleVeil(QWidget& veiled) : QWidget(&veiled) {
    setObjectName(QStringLiteral("StaleVeil"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    veiled.installEventFilter(this);
    resize(veiled.size());
    raise();
    show();
}

bool StaleVeil::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) resize(static_cast<QWidget*>(watched)->size());
    return false;
}

void StaleVeil::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // The active colours also over a disabled widget, on which the others would hardly be seen.
    QColor dim = palette().color(QPalette::Active, QPalette::Window);
    dim.setAlpha(DimAlpha);
    painter.fillRect(rect(), dim);
    QColor hatch = palette().color(QPalette::Active, QPalette::WindowText);
    hatch.setAlpha(HatchAlpha);
    painter.fillRect(rect(), QBrush(hatch, Qt::BDiagPattern));
}
