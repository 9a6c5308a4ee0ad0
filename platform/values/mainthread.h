// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <QtCore/qglobal.h>

namespace values {

/// True on the thread of the application object; without one, on the thread that asked first.
MCS_PLATFORM_EXPORT bool IsMainThread();

}  // namespace values

/// Values, nodes and observables live on the main thread alone; a debug build holds callers to it.
#define MCS_ASSERT_MAIN_THREAD() Q_ASSERT_X(values::IsMainThread(), Q_FUNC_INFO, "called off the main thread")
