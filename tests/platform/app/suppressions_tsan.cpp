// SPDX-License-Identifier: Apache-2.0
// What the thread sanitizer is not to report.
#include <QtCore/qglobal.h>

/// The C library guards its time zone, which every local time needs, by a lock that the sanitizer cannot see.
extern "C" Q_DECL_EXPORT const char* __tsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "race:tzset_internal\n";
}
