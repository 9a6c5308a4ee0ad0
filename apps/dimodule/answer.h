// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/dimodule/inputs.h>

#include <QtCore/QByteArray>

namespace dimodule {

/// Modbus/TCP as a module speaks it: functions from bytes to bytes, which know no sockets.

constexpr int MaxFrameSize = 260;

/// The size of the frame that \a received begins with. 0 if it is not all there yet, -1 if this is no
/// Modbus/TCP.
int FrameSize(const QByteArray& received);

/// The answer to the question \a frame, a whole frame: the states that are asked for, or an exception.
QByteArray Answer(const QByteArray& frame, const Inputs& inputs);

/// The exception \a number as the answer to \a frame.
QByteArray Exception(const QByteArray& frame, int number);

}  // namespace dimodule
