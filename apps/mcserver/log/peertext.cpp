// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertext.h>

QString peertext::Shown(const QString& text) {
    QString shown = text.left(MaxLength);
    for (QChar& character : shown) {
        if (character == QLatin1Char('<'))
            character = QLatin1Char('(');
        else if (character == QLatin1Char('>'))
            character = QLatin1Char(')');
        else if (!character.isPrint() && !character.isSurrogate())
            character = QLatin1Char('?');
    }
    if (text.size() > MaxLength) shown += QStringLiteral("...");
    return shown;
}

QString peertext::Name(const VtPeer& peer) {
    const QString application =
        peer.application.isEmpty() ? QStringLiteral("a client") : Shown(peer.application);
    const QString machine = peer.machine.isEmpty() ? QString() : QStringLiteral(" on ") + Shown(peer.machine);
    return QStringLiteral("%1%2 (%3)").arg(application, machine, Shown(peer.address));
}
