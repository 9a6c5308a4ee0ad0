// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <chrono>

/// What the server's configuration says about its device.
struct OrvDeviceSettings {
    QString address;
    QString name;
    bool force = false;  ///< take the device also from somebody who uses it
    int channels = 0;    ///< frequency channels that clients may use
    int maxProtocolLevel = 0;
    std::chrono::milliseconds scanAveragingTime{};
};
