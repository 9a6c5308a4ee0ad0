// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>

#include <QtCore/QString>

namespace vt {

/// Traces what went wrong with a client's connection.
inline void TraceClient(const QString& message) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(message, L"platform/vtclient/client/vtclient", __LINE__);
}

}  // namespace vt
