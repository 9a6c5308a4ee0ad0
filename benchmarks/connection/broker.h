// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <QtCore/QTemporaryDir>

namespace bench {

/// An MQTT broker of our own on loopback. Ends with this object.
class Broker {
  public:
    ~Broker();

    /// False if there is none on this machine.
    bool Start();
    int GetPort() const { return m_port; }

  private:
    bool WriteConfiguration(const QString& file) const;

    QTemporaryDir m_directory;
    ChildProgram m_process{ChildProgram::EErrors::WithOutput};
    int m_port = 0;
};

}  // namespace bench
