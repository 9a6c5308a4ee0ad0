// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/moduleaddress.h>

#include <devicecontrol/multichannelserver/common/gts/pollthread.h>

#include <platform/modbus/modbustcpinterfacecreator.h>

#include <QtCore/QStringList>

namespace {

/// What is said of addresses in English.
constexpr const char* AddressFaults[] = {
    QT_TRANSLATE_NOOP("ModuleAddress", "an IPv4 address has four numbers"),
    QT_TRANSLATE_NOOP("ModuleAddress", "no module can have this address"),
    QT_TRANSLATE_NOOP("ModuleAddress", "it has no IP address"),
    QT_TRANSLATE_NOOP("ModuleAddress", "the port does not belong to it"),
    QT_TRANSLATE_NOOP("ModuleAddress", "modules have no IPv6 addresses"),
    QT_TRANSLATE_NOOP("ModuleAddress", "names are not resolved: give the IPv4 address of the module"),
    QT_TRANSLATE_NOOP("ModuleAddress", "it is too long"),
};

constexpr char NumberFault[] =
    QT_TRANSLATE_NOOP("ModuleAddress", "'%1' is no number from 0 to 255 without leading zeros");

}  // namespace

QString ModuleAddress::GetFault(const QString& address) {
    const QString fault = ModbusTcpInterfaceCreator::FaultOf(PollThread::InterfaceAddress(address));
    for (const char* const known : AddressFaults)
        if (fault == QLatin1String(known)) return tr(known);
    for (const QString& part : address.trimmed().split(QLatin1Char('.')))
        if (fault == QString::fromLatin1(NumberFault).arg(part)) return tr(NumberFault).arg(part);
    return fault;
}

QString ModuleAddress::ToInterfaceAddress(const QString& address) {
    return PollThread::InterfaceAddress(address);
}
