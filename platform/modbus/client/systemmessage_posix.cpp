// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/systemmessage.h>

#include <clocale>
#include <cstring>

QString SystemMessage(unsigned code) {
    // Of all languages the one that every system has. Kept for the process's life: threads may still ask.
    static const locale_t neutral = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return QString::fromLocal8Bit(::strerror_l(static_cast<int>(code), neutral));
}
