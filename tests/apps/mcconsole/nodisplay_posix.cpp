// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcconsole/nodisplay.h>

std::shared_ptr<void> WithoutDisplay(QProcessEnvironment& environment) {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    return nullptr;
}
