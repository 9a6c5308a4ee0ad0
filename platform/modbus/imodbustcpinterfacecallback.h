// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/modbusexport.h>

/// Is told what becomes of a Modbus/TCP interface, on the thread that made the
/// interface.
class MCS_MODBUS_EXPORT IModbusTcpInterfaceCallback {  // fixed: virtual-order
  public:
    virtual ~IModbusTcpInterfaceCallback();

    virtual void OnOpened() = 0;  ///< The first answer of a connection came; it is told next.
    /// \a code is an error of the operating system or a Modbus exception: ModbusErrorText() has its text.
    virtual void OnError(unsigned code) = 0;
    virtual void OnClosed() = 0;                      ///< The connection has ended that was told to be open.
    virtual void OnCoils(unsigned bits);              ///< not used by input modules
    virtual void OnHoldingRegisters(unsigned value);  ///< not used by input modules
    /// A whole, matching answer came: bit i of \a bits is input i, and bits beyond those asked for are 0.
    virtual void OnInputDiscretes(unsigned bits) = 0;
    virtual void OnInputRegisters(unsigned value);  ///< not used by input modules
};
