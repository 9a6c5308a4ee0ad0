// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What this system calls an error that it numbers \a posix or \a windows.
inline QString SystemText(int posix, int windows) {
#ifdef Q_OS_WIN
    Q_UNUSED(posix)
    return qt_error_string(windows);
#else
    Q_UNUSED(windows)
    return qt_error_string(posix);
#endif
}

constexpr int WindowsHasNoSuchPath = 3;
constexpr int WindowsDeniesAccess = 5;
