// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Which receivers there are: "MODEL[,PORT...][,NAME=VALUE...]", one frequency channel for each port.
struct HamlibSettings {
    static constexpr int MaxReceivers = 64;

    int model = 0;      ///< as Hamlib counts
    QStringList ports;  ///< a serial port or "host:port" each; none: one receiver that needs no port
    QString mode = QStringLiteral("AM");
    int width = 0;  ///< of what is received around a frequency, in Hz; 0: as the receiver has it
    int speed = 0;  ///< of serial ports, in bit/s; 0: as the receiver has it

    /// What is wrong with \a text, in one line; empty if nothing is.
    QString Parse(const QString& text);
};
