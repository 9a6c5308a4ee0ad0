// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

/// The error codes that are not of the operating system, and far away from those of any. The numbers are
/// those that libmodbus has for the same errors: logs of sites name them.
namespace modbuserror {

/// What is added to the number of a Modbus exception (1 to 8, 10, 11).
constexpr unsigned Base = 112345678;

constexpr unsigned InvalidAnswer = Base + 13;     ///< not the answer to what was asked, or none at all
constexpr unsigned UnknownException = Base + 15;  ///< an exception with a number that Modbus does not know
constexpr unsigned UnaskedBytes = Base + 16;      ///< something came that nobody had asked for
constexpr unsigned ForeignUnit = Base + 17;       ///< the answer of another unit

/// The code of the exception \a number, as a module sent it.
unsigned OfException(quint8 number);

/// The text of a code from here; null for all others.
const char* TextOf(unsigned code);

}  // namespace modbuserror
