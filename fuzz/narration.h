// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/message.h>

#include <QtCore/QByteArray>

#include <cstdio>

/// Tells what happens, if MCS_FUZZ_TELL is set: for whoever looks into an input that was found.
inline bool IsTelling() {
    static const bool isTelling = qEnvironmentVariableIsSet("MCS_FUZZ_TELL");
    return isTelling;
}

inline void Tell(const QString& what) {
    if (IsTelling()) std::fprintf(stderr, "%s\n", qPrintable(what));
}

inline void TellMessage(const char* from, const vt::Message& message, const QByteArray& bytes) {
    if (!IsTelling()) return;
    const QString numbers = QStringLiteral("%1 sends %2: sub %3, seq %4, req %5, result %6, %7 bytes")
                                .arg(QLatin1String(from))
                                .arg(static_cast<int>(message.type))
                                .arg(message.sub)
                                .arg(message.seq)
                                .arg(message.req)
                                .arg(static_cast<int>(message.result))
                                .arg(bytes.size());
    Tell(QStringLiteral("%1, '%2', %3: %4")
             .arg(numbers, message.path.left(100), message.reason.left(100),
                  QString::fromLatin1(bytes.left(200).toHex(' '))));
}
