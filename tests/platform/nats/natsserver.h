// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>
#include <platform/nats/natsoptions.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/// A server of NATS of a test's own, on loopback. Killed with this object.
class NatsServer {
  public:
    /// Starts on a free port, or after the first time on that again. \a configuration is a file's content.
    /// False if it does not come up.
    bool Start(const QByteArray& configuration = QByteArray());
    /// As kill -9 does.
    void Kill() { m_program.Kill(); }
    /// Has it read \a configuration in place of its own, without an end of any connection.
    void Reload(const QByteArray& configuration) const;
    /// Keeps it from running, and lets it go on.
    void Freeze(bool isFrozen) const;

    int Port() const { return m_port; }
    nats::NatsOptions Options() const;
    /// "nats://127.0.0.1:PORT/STATION".
    QString Address(const QString& station) const;
    const QByteArray& Output() const { return m_program.GetOutput(); }

  private:
    QTemporaryDir m_folder;
    ChildProgram m_program{ChildProgram::EErrors::WithOutput};
    int m_port = 0;
};
