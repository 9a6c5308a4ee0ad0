// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace vt {

/// Says in \a error why no server could have sent a change. False, for who returns it.
inline bool FailChange(QString* error, const QString& what) {
    *error = what;
    return false;
}

}  // namespace vt
