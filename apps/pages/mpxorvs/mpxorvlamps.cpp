// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvs/mpxorvlamps.h>

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPixmap>

#include <array>
#include <cmath>

namespace {

using EState = MpxOrvContent::EState;

constexpr double Middle = mpxorvlamps::Size / 2.0;
constexpr double Radius = Middle - 1.5;

QColor LampColour(EState state) {
    switch (state) {
        case EState::Idle:
            return QColor(0x8c, 0x8c, 0x8c);
        case EState::AtWork:
        case EState::Tuned:
            return QColor(0x2f, 0xa0, 0x4e);
        case EState::Watching:
            return QColor(0xc0, 0x80, 0x20);
        case EState::Master:
            break;
    }
    return QColor(0x4c, 0x8f, 0xf0);
}

QPainterPath Star() {
    constexpr int Points = 5;
    constexpr double Pi = 3.14159265358979;
    constexpr double Inner = 0.45;
    QPolygonF star;
    for (int i = 0; i < 2 * Points; ++i) {
        const double angle = Pi * i / Points - Pi / 2;
        const double radius = (Radius + 1.0) * (i % 2 == 0 ? 1.0 : Inner);
        star << QPointF(Middle + radius * std::cos(angle), Middle + radius * std::sin(angle));
    }
    QPainterPath path;
    path.addPolygon(star);
    path.closeSubpath();
    return path;
}

QPainterPath Shape(EState state) {
    const QRectF round(Middle - Radius, Middle - Radius, 2 * Radius, 2 * Radius);
    QPainterPath path;
    switch (state) {
        case EState::Idle:  // a ring
            path.addEllipse(round);
            path.addEllipse(round.adjusted(2.5, 2.5, -2.5, -2.5));
            break;
        case EState::AtWork:  // a triangle
            path.addPolygon(QPolygonF(
                {round.topLeft(), QPointF(round.right(), Middle), round.bottomLeft(), round.topLeft()}));
            break;
        case EState::Tuned:  // a disc
            path.addEllipse(round);
            break;
        case EState::Watching:  // half a disc
            path.arcMoveTo(round, 0);
            path.arcTo(round, 0, 180);
            path.closeSubpath();
            break;
        case EState::Master:
            path = Star();
            break;
    }
    return path;
}

QPixmap Draw(EState state, bool isSelected, int ratio) {
    QPixmap pixmap(mpxorvlamps::Size * ratio, mpxorvlamps::Size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (isSelected) {
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(QRectF(0, 0, mpxorvlamps::Size, mpxorvlamps::Size), 3, 3);
    }
    painter.fillPath(Shape(state), LampColour(state));
    return pixmap;
}

QIcon Make(EState state) {
    QIcon icon;
    for (const int ratio : {1, 2}) {
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Disabled})
            icon.addPixmap(Draw(state, false, ratio), mode);
        icon.addPixmap(Draw(state, true, ratio), QIcon::Selected);
    }
    return icon;
}

}  // namespace

const QIcon& mpxorvlamps::Get(EState state) {
    // Used until the process ends, and so never destroyed.
    static const auto& lamps =
        *new std::array<QIcon, 5>{Make(EState::Idle), Make(EState::AtWork), Make(EState::Tuned),
                                  Make(EState::Watching), Make(EState::Master)};
    return lamps[static_cast<std::size_t>(state)];
}
