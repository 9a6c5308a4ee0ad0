// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/hamlib/hamlibsettings.h>

#include <QtCore/QString>

#include <memory>

class IClock;
class IOrvDevice;

/// Which device the server is to own.
struct DeviceChoice {
    enum class EKind { Simulated, Hamlib, Plugin };

    EKind kind = EKind::Simulated;
    HamlibSettings hamlib;
    QString pluginFile;
    QString pluginOptions;  ///< for the plugin, as they are

    /// What is wrong with \a text, in one line; empty if nothing is.
    QString Parse(const QString& text);
    /// \a text, which Parse takes, for whoever starts the server in another folder.
    static QString WithWholePath(const QString& text);
    /// Null with the reason, one line, in \a error. \a clock is not owned and outlives the device.
    std::unique_ptr<IOrvDevice> Make(IClock& clock, QString* error) const;
};
