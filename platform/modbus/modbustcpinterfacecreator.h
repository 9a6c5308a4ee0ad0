// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/modbusexport.h>

#include <QtCore/QString>

class IModbusTcpInterface;
class IModbusTcpInterfaceCallback;

/// Makes Modbus/TCP interfaces. How they ask is in the section "Modbus" of the configuration, read by
/// Configure(), since modules in the field differ.
class MCS_MODBUS_EXPORT ModbusTcpInterfaceCreator {
  public:
    ModbusTcpInterfaceCreator() = delete;

    /// \a address is "TCP:<ip>:<port>", zero-terminated. Opens nothing yet: the first request does. \a
    /// callback outlives the interface. From any thread; the interface belongs to the caller, and to its
    /// thread. \return null for an address that cannot be right; \a callback is then told of an error first.
    static IModbusTcpInterface* CreateInterface(const wchar_t* address,
                                                IModbusTcpInterfaceCallback* callback);
    /// Why CreateInterface() would refuse \a address; empty if it takes it. From any thread.
    static QString FaultOf(const QString& address);

    /// Reads "FunctionCode" (1 or 2; 2), "StartAddress" (0 to 65535; 0), "UnitId" (0 to 255; 1) and
    /// "ResponseTimeout" (10 to 60000 ms; 500) from the section "Modbus" of the application's configuration,
    /// for interfaces made from now on. What is out of range keeps its default, with a trace. Main thread.
    static void Configure();
};

/// One line of text for an error code of IModbusTcpInterfaceCallback: a Modbus exception, or the text that
/// the operating system has for it, in its neutral language. From any thread.
MCS_MODBUS_EXPORT QString ModbusErrorText(unsigned code);
