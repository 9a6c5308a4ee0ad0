// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <cstdio>
#include <cstdlib>

/// Ends the program, which is how a fuzzer says that it has found something.
[[noreturn]] inline void FailCheck(const QString& what) {
    std::fprintf(stderr, "check failed: %s\n", qPrintable(what));
    std::abort();
}

inline void Check(bool isTrue, const char* what) {
    if (!isTrue) FailCheck(QString::fromUtf8(what));
}
inline void Check(bool isTrue, const char* what, const QString& detail) {
    if (!isTrue) FailCheck(QString::fromUtf8(what) + QStringLiteral(": ") + detail);
}
