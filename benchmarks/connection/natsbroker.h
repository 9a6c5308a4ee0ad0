// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

#include <QtCore/QTemporaryDir>

namespace bench {

/// A server of NATS of our own on loopback, which keeps nothing. Ends with this object.
class NatsBroker {
  public:
    ~NatsBroker();

    /// False if there is none on this machine.
    bool Start();
    int GetPort() const { return m_port; }

  private:
    ChildProgram m_process{ChildProgram::EErrors::WithOutput};
    int m_port = 0;
};

}  // namespace bench
