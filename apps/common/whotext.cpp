// SPDX-License-Identifier: Apache-2.0
#include <apps/common/whotext.h>

#include <apps/common/codedtext.h>

QString whotext::Translated(const QString& who) {
    const QLatin1String atServer(" at the server's window");
    if (who.endsWith(atServer))
        return CodedText(ECode::AtServerWindow, {who.left(who.size() - atServer.size())}).Translated();
    const int address = who.lastIndexOf(QLatin1String(" ("));
    if (address < 0 || !who.endsWith(QLatin1Char(')'))) return who;
    const QString where = who.mid(address + 2, who.size() - address - 3);
    const QString name = who.left(address);
    const QLatin1String on(" on ");
    const QLatin1String nobody("a client");
    const int machine = name.lastIndexOf(on);
    const QString application = machine < 0 ? name : name.left(machine);
    const QString host = machine < 0 ? QString() : name.mid(machine + on.size());
    if (application == nobody)
        return (host.isEmpty() ? CodedText(ECode::NamelessPeer, {where})
                               : CodedText(ECode::NamelessPeerOnMachine, {host, where}))
            .Translated();
    return host.isEmpty() ? who : CodedText(ECode::PeerOnMachine, {application, host, where}).Translated();
}
