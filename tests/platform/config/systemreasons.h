// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <cerrno>

/// Why a file cannot be written, in the words of the system.
namespace systemreasons {

#ifdef Q_OS_WIN
constexpr int PathNotFound = 3;
constexpr int AccessDenied = 5;
inline QString NotADirectory() {
    return qt_error_string(PathNotFound);
}
inline QString AFolderIsInTheWay() {
    return qt_error_string(AccessDenied);
}
#else
inline QString NotADirectory() {
    return qt_error_string(ENOTDIR);
}
inline QString AFolderIsInTheWay() {
    return qt_error_string(EEXIST);
}
#endif

}  // namespace systemreasons
