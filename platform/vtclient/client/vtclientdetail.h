// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>

#include <QtCore/QString>

/// What the sources of VtClient share.
namespace vt::vtclientdetail {

inline void Trace(const QString& message) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings))
        _Q_Trace(message, L"platform/vtclient/client/vtclient", __LINE__);
}

}  // namespace vt::vtclientdetail
