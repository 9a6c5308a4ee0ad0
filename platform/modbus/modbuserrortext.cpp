// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>
#include <platform/modbus/client/systemmessage.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

QString ModbusErrorText(unsigned code) {
    constexpr int MaxLength = 2048;
    const char* const own = modbuserror::TextOf(code);
    const QString text = own != nullptr ? QString::fromUtf8(own) : SystemMessage(code);
    const QString line = text.left(MaxLength).simplified();
    return line.isEmpty() ? QStringLiteral("Unknown error %1").arg(code) : line;
}
