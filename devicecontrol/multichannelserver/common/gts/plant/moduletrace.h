// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>

/// What data modules trace, in the name under which these traces are known.
namespace moduletrace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/gts/datamodule";

inline void Warn(const QString& message, int line) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) _Q_Trace(message, SourcePath, line);
}

}  // namespace moduletrace
