// SPDX-License-Identifier: Apache-2.0
#include <apps/common/display.h>

#include <QtCore/QLibrary>

namespace {

/// Whether the toolkit will show windows by X11. Of what chooses more than one platform it is left to the
/// toolkit.
bool IsX11Taken() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.isEmpty()) return qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return platform == "xcb" || (platform.startsWith("xcb:") && !platform.contains(';'));
}

/// Asks by the library by which the toolkit's platform plugin will, so that both come to the same end. Where
/// it is not there the toolkit has another one, of which nothing is known.
bool DoesX11Answer() {
    struct Connection;
    using Connect = Connection* (*)(const char* display, int* screen);
    using HasError = int (*)(Connection*);
    using Disconnect = void (*)(Connection*);
    constexpr int version = 1;
    QLibrary xcb(QStringLiteral("xcb"), version);
    const auto connect = reinterpret_cast<Connect>(xcb.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(xcb.resolve("xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(xcb.resolve("xcb_disconnect"));
    if (connect == nullptr || hasError == nullptr || disconnect == nullptr) return true;
    Connection* const connection = connect(nullptr, nullptr);  // to DISPLAY
    const bool isAnswering = hasError(connection) == 0;
    disconnect(connection);
    return isAnswering;
}

}  // namespace

bool HasDisplay() {
    // Somebody who chose a platform plugin wants windows, even where nobody sees them.
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(variable)) return true;
    return false;
}

QString GetDisplayProblem() {
    if (!IsX11Taken() || DoesX11Answer()) return QString();
    return QStringLiteral("the display \"%1\" cannot be reached").arg(qEnvironmentVariable("DISPLAY"));
}
