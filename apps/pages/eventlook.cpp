// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/eventlook.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

namespace {

constexpr int EventIconSize = 32;  // pixels: drawn once, and shown smaller

bool IsDone(ECode code) {
    switch (code) {
        case ECode::RequestDone:
        case ECode::Tuned:
        case ECode::ConfigSaved:
        case ECode::DeviceConnected:
        case ECode::ModulesConnectedAnew:
        case ECode::ModuleReconnected:
        case ECode::EntriesAreSafe:
        case ECode::StationOffered:
            return true;
        default:
            return false;
    }
}

QPixmap EmptyIcon() {
    QPixmap room(EventIconSize, EventIconSize);
    room.fill(Qt::transparent);
    return room;
}

/// No style has a sign for "no" that is no alarm: a ring with a bar, amber on light and on dark.
QPixmap RefusedIcon() {
    QPixmap sign = EmptyIcon();
    QPainter painter(&sign);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xc7, 0x77, 0x00), 4));
    painter.drawEllipse(QRectF(4, 4, 24, 24));
    painter.drawLine(QPointF(8, 24), QPointF(24, 8));
    return sign;
}

}  // namespace

EEventLook eventlook::Of(const Event& event) {
    switch (event.severity) {
        case EEventSeverity::Alarm:
            return EEventLook::Alarm;
        case EEventSeverity::Warning:
            return EEventLook::Warning;
        case EEventSeverity::Notice:
        case EEventSeverity::Info:
        case EEventSeverity::Count:
            break;
    }
    // One of the arguments may be unknown here; then there is the word on the wire.
    const ECode code = event.said.IsEmpty() ? eventcodes::Find(event.code) : event.said.GetCode();
    if (code == ECode::RequestRefused) return EEventLook::Refused;
    if (IsDone(code)) return EEventLook::Done;
    return event.severity == EEventSeverity::Notice ? EEventLook::Notice : EEventLook::Told;
}

QString eventlook::Word(const Event& event) {
    if (Of(event) == EEventLook::Refused) return QCoreApplication::translate("EventLook", "Refused");
    switch (event.severity) {
        case EEventSeverity::Notice:
            return QCoreApplication::translate("EventLook", "Notice");
        case EEventSeverity::Warning:
            return QCoreApplication::translate("EventLook", "Warning");
        case EEventSeverity::Alarm:
            return QCoreApplication::translate("EventLook", "Alarm");
        case EEventSeverity::Info:
        case EEventSeverity::Count:
            break;
    }
    return QCoreApplication::translate("EventLook", "Info");
}

eventlook::Icons::Icons() {
    // As wide as the others, whatever the style has: what stands behind them is in line.
    const auto standard = [](QStyle::StandardPixmap icon) {
        QPixmap sign = EmptyIcon();
        QPainter painter(&sign);
        QApplication::style()->standardIcon(icon).paint(&painter, sign.rect());
        return QIcon(sign);
    };
    const auto set = [this](EEventLook look, const QIcon& icon) {
        m_icons.at(static_cast<std::size_t>(look)) = icon;
    };
    set(EEventLook::Told, QIcon(EmptyIcon()));
    set(EEventLook::Done, standard(QStyle::SP_DialogApplyButton));
    set(EEventLook::Notice, standard(QStyle::SP_MessageBoxInformation));
    set(EEventLook::Refused, QIcon(RefusedIcon()));
    set(EEventLook::Warning, standard(QStyle::SP_MessageBoxWarning));
    set(EEventLook::Alarm, standard(QStyle::SP_MessageBoxCritical));
}
