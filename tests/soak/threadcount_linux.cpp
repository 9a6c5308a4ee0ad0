// SPDX-License-Identifier: Apache-2.0
#include <tests/soak/threadcount.h>

#include <QtCore/QDir>

int CountThreads() {
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}
