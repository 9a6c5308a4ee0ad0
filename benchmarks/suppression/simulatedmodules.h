// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>

namespace bench {

/// The modules of the plant, in a process of their own.
class SimulatedModules {
  public:
    /// \return whether all of them listen, at one port
    bool Start();
    quint16 Port() const { return m_port; }

    /// Keys or releases the module's transmitter. Returns once the command is in the pipe.
    void Key(int module, bool isKeyed);

  private:
    bool StartAt(quint16 port);

    ChildProgram m_process{ChildProgram::EErrors::PassedOn};
    quint16 m_port = 0;
};

}  // namespace bench
