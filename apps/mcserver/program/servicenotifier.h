// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>

/// Tells the service manager that started the process, if one did and wants to know, how far it is. What
/// cannot be told is left untold.
class ServiceNotifier {
  public:
    /// Takes note of where to tell it.
    ServiceNotifier();

    void Ready(const QString& status);
    void Stopping();

    /// How long it waits for a sign of life before it takes the process for stuck and ends it; zero if it
    /// does not.
    std::chrono::milliseconds GetWatchdogTime() const { return m_watchdogTime; }
    /// Gives that sign.
    void Alive();

  private:
    void Tell(const QByteArray& message) const;

    QByteArray m_socket;  ///< empty: nobody wants to know
    std::chrono::milliseconds m_watchdogTime{};
};
