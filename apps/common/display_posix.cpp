// SPDX-License-Identifier: Apache-2.0
#include <apps/common/display.h>

#include <QtCore/QtGlobal>

bool HasDisplay() {
    // Somebody who chose a platform plugin wants windows, even where nobody sees them.
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(variable)) return true;
    return false;
}
