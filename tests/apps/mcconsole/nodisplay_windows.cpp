// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcconsole/nodisplay.h>

#include <windows.h>

// A window station that nobody sees, as services have it. Programs begin in that of who starts them.
std::shared_ptr<void> WithoutDisplay(QProcessEnvironment& environment) {
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    const HWINSTA seen = ::GetProcessWindowStation();
    const HWINSTA unseen = ::CreateWindowStationW(L"mcstest-unseen", 0, GENERIC_ALL, nullptr);
    ::SetProcessWindowStation(unseen);
    ::CreateDesktopW(L"Default", nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    return {unseen, [seen](HWINSTA station) {
                ::SetProcessWindowStation(seen);
                ::CloseWindowStation(station);
            }};
}
