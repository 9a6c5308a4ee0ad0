// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/modbusexport.h>

/// A Modbus/TCP connection to one module of digital inputs, made by ModbusTcpInterfaceCreator and deleted by
/// whoever had it made. Belongs to the thread that made it, except for Abort().
///
/// An input that reads 0 stands for a keyed transmitter. So only a complete, matching and well-formed answer
/// with the number of bits that was asked for is a reading; everything else is an error.
class MCS_MODBUS_EXPORT IModbusTcpInterface {
  public:
    static constexpr unsigned short MaxInputs = 32;

    /// Closes the connection without telling the callback.
    virtual ~IModbusTcpInterface();

    /// Reads the states of the first \a count inputs (1 to MaxInputs), connecting first where there is no
    /// connection. Tells the callback of the outcome before it returns: one answer or one error. Returns
    /// within the response time-out. After an error the connection is made anew, by a later request.
    virtual void ReadInputDiscretes(unsigned short count) = 0;
    /// Ends the connection, and tells OnClosed() if there was one.
    virtual void Close() = 0;
    /// Ends a request that hangs, at once and for good: all that comes after it fails. From any thread.
    virtual void Abort() = 0;
};
