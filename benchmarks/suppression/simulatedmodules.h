// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QProcess>

namespace bench {

/// The modules of the plant, in a process of their own.
class SimulatedModules {
  public:
    SimulatedModules();
    ~SimulatedModules();

    /// \return whether all of them listen, at one port
    bool Start();
    quint16 Port() const { return m_port; }

    /// Keys or releases the module's transmitter. Returns once the command is in the pipe.
    void Key(int module, bool isKeyed);

  private:
    bool StartAt(quint16 port);
    bool WaitUntilAllListen();

    QProcess m_process;
    quint16 m_port = 0;
};

}  // namespace bench
