// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QDir>

#include <string>

#include <windows.h>

namespace nativefile {

/// Others may read, write, rename and remove the file while it is open here.
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// As the system names it.
inline std::wstring Name(const QString& name) {
    return QDir::toNativeSeparators(name).toStdWString();
}

}  // namespace nativefile
