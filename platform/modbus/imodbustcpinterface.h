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
    /// connection. Returns within the response time-out, having told the callback of the outcome: one answer
    /// or one error. OnOpened() comes before the first answer of a connection, and not earlier: what only
    /// takes connections is no module. After an error the connection is closed, and OnClosed() follows if it
    /// was told to be open. A later request connects again; those that come too soon after an error (100 ms,
    /// up to 10 s after further errors) ask nothing and tell that error once more, at once.
    ///
    /// Modules that drop idle connections are connected again within the request, and nothing is told of it.
    virtual void ReadInputDiscretes(unsigned short count) = 0;
    /// Ends the connection, and tells OnClosed() if it was told to be open.
    virtual void Close() = 0;
    /// Ends a request that hangs, at once and for good. It and all that come after it read nothing and tell
    /// nothing. From any thread.
    virtual void Abort() = 0;
};
