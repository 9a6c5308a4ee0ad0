// SPDX-License-Identifier: Apache-2.0
// What the thread sanitizer is not to report.
#include <QtCore/qglobal.h>

/// How Qt waits for the end of a thread, wakes the loop of another and hands events over is in libraries that
/// the sanitizer cannot see into.
extern "C" Q_DECL_EXPORT const char* __tsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "race:QWaitCondition::~QWaitCondition\nrace:libglib-2.0.so\ncalled_from_lib:libQt5Core.so\n";
}
