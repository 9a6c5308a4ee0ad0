// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/systemmessage.h>

#include <windows.h>

QString SystemMessage(unsigned code) {
    constexpr DWORD MaxLength = 2048;
    wchar_t text[MaxLength];
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                         MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL), text, MaxLength, nullptr);
    return QString::fromWCharArray(text, static_cast<int>(length));
}
