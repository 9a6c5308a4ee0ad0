// SPDX-License-Identifier: Apache-2.0
#include <apps/common/systemuser.h>

#include <windows.h>

QString SystemUser() {
    constexpr DWORD Longest = 257;  // with its end, as UNLEN has it
    wchar_t name[Longest];
    DWORD length = Longest;
    return ::GetUserNameW(name, &length) != 0 && length > 1
               ? QString::fromWCharArray(name, static_cast<int>(length) - 1)
               : QStringLiteral("?");
}
