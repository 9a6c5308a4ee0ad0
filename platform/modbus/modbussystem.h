// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/modbus/modbusexport.h>

/// What the operating system makes of connections to modules: the numbers of its errors, and how many
/// connections it allows.
namespace modbussystem {

/// The errors that are told without the operating system having had one.
enum class EError {
    InvalidArgument,
    NoAddress,
    AddressNotAvailable,
    NoSuchFamily,
    TimedOut,
    ConnectionReset,
    Interrupted,
    TooManyFiles,
    NoResources
};
MCS_MODBUS_EXPORT unsigned CodeOf(EError error);  ///< this system's number, as OnError() is told it

/// How many connections, each polled by a thread of its own, a process may have at a time and still have
/// descriptors for everything else.
MCS_MODBUS_EXPORT int MostConnections();

}  // namespace modbussystem
