// SPDX-License-Identifier: Apache-2.0
#include <apps/common/display.h>

#include <QtCore/QtGlobal>

#include <windows.h>

bool HasDisplay() {
    // Somebody who chose a platform plugin wants windows, even where nobody sees them.
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return true;
    // Services, and what is started through a remote shell, have a window station that nobody sees: a box
    // there waits for ever.
    USEROBJECTFLAGS station = {};
    return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &station, sizeof station,
                                     nullptr) != 0 &&
           (station.dwFlags & WSF_VISIBLE) != 0;
}

QString GetDisplayProblem() {
    return QString();  // a window station is there, or it is not
}
