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
    const QString program = names.join(QStringLiteral(", "));
    // Where nobody has to say who they are, the user is called as the role.
    const QString user = peer.user != peer.role ? Shown(peer.user) : QString();
    const CodedText application = user.isEmpty()      ? CodedText(program)
                                  : program.isEmpty() ? CodedText(user)
                                                      : CodedText(ECode::OfUser, {program, user});
    const QString machine = Shown(peer.machine);
    if (application.IsEmpty() && machine.isEmpty()) return {ECode::NamelessPeer, {address}};
    if (application.IsEmpty()) return {ECode::NamelessPeerOnMachine, {machine, address}};
    if (machine.isEmpty()) return {ECode::Peer, {application, address}};
    return {ECode::PeerOnMachine, {application, machine, address}};
}

QString peertext::Name(const VtPeer& peer) {
    return Coded(peer).ToEnglish();
}
