// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <windows.h>

#include <mutex>

/// What the service manager is told of this process. Where that is no service, nothing. Any thread.
class ServiceStatus {
  public:
    enum class EState { Starting, Running, Stopping };

    static ServiceStatus& Instance();

    /// From now on the manager is told, by \a handle.
    void Begin(SERVICE_STATUS_HANDLE handle);
    void Tell(EState state);
    /// Says that a start or an end is still under way, which the manager wants to hear now and then; not for
    /// ever, since what calls this may be all that still works.
    void TellProgress();
    /// The last thing that is told: the process may be ended at once.
    void TellStopped(int exitCode);

  private:
    ServiceStatus() = default;
    void Send();

    std::mutex m_mutex;  ///< guards all that follows
    SERVICE_STATUS_HANDLE m_handle = nullptr;
    SERVICE_STATUS m_status = {};
};
