// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

class IDllInstance;

/// How the application framework loads this library as a module (fixed: entry-points). GUI thread only.
extern "C" {

/// A new instance of the module that knows \a argument, a zero-terminated text (null: empty). The caller
/// gives it back to ARDestroy. Null if memory runs out.
MCS_COMMON_EXPORT IDllInstance* ARCreateEx(const wchar_t* argument);

/// Destroys \a instance; null does nothing.
MCS_COMMON_EXPORT void ARDestroy(IDllInstance* instance);
}
