// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/peertext.h>

#include <QtCore/QStringList>

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

CodedText peertext::Coded(const VtPeer& peer, const QString& mpxOrv) {
    const QString address = Shown(peer.address);
    QStringList names{Shown(mpxOrv), Shown(peer.application)};
    names.removeAll(QString());
    const QString application = names.join(QStringLiteral(", "));
    const QString machine = Shown(peer.machine);
    if (application.isEmpty() && machine.isEmpty()) return {ECode::NamelessPeer, {address}};
    if (application.isEmpty()) return {ECode::NamelessPeerOnMachine, {machine, address}};
    if (machine.isEmpty()) return {ECode::Peer, {application, address}};
    return {ECode::PeerOnMachine, {application, machine, address}};
}

QString peertext::Name(const VtPeer& peer) {
    return Coded(peer).ToEnglish();
}
