// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <chrono>

/// The time from one question to a data module to the next. Without a sign, and of 32 bits, as modules keep
/// it.
using PollInterval = std::chrono::duration<quint32, std::milli>;
