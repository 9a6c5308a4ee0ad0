// SPDX-License-Identifier: Apache-2.0
#include <apps/common/eventdispatcher.h>

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

void UseQtEventDispatcher() {
    qputenv("QT_NO_GLIB", "1");  // Qt looks at it for each thread
}
