// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicestatus_windows.h>

namespace {

constexpr DWORD PendingWaitMs = 10'000;  // to the next word of a start or an end
constexpr DWORD MaxCheckPoints = 20;     // of each

DWORD Native(ServiceStatus::EState state) {
    switch (state) {
        case ServiceStatus::EState::Starting:
            return SERVICE_START_PENDING;
        case ServiceStatus::EState::Running:
            return SERVICE_RUNNING;
        case ServiceStatus::EState::Stopping:
            return SERVICE_STOP_PENDING;
    }
    return SERVICE_STOP_PENDING;
}

}  // namespace

ServiceStatus& ServiceStatus::Instance() {
    static auto& status = *new ServiceStatus;
    return status;
}

void ServiceStatus::Begin(SERVICE_STATUS_HANDLE handle) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_handle = handle;
    m_status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    m_status.dwCurrentState = SERVICE_START_PENDING;
    Send();
}

void ServiceStatus::Tell(EState state) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    // Who was told to stop while it started is not running any more, whatever comes late.
    if (m_status.dwCurrentState == SERVICE_STOP_PENDING || m_status.dwCurrentState == SERVICE_STOPPED) return;
    m_status.dwCurrentState = Native(state);
    m_status.dwCheckPoint = 0;
    Send();
}

void ServiceStatus::TellProgress() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const DWORD state = m_status.dwCurrentState;
    if (state != SERVICE_START_PENDING && state != SERVICE_STOP_PENDING) return;
    if (m_status.dwCheckPoint == MaxCheckPoints) return;
    ++m_status.dwCheckPoint;
    Send();
}

void ServiceStatus::TellStopped(int exitCode) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_status.dwCurrentState = SERVICE_STOPPED;
    m_status.dwWin32ExitCode = exitCode == 0 ? NO_ERROR : DWORD{ERROR_SERVICE_SPECIFIC_ERROR};
    m_status.dwServiceSpecificExitCode = static_cast<DWORD>(exitCode);
    m_status.dwCheckPoint = 0;
    Send();
}

void ServiceStatus::Send() {
    if (m_handle == nullptr) return;
    const DWORD state = m_status.dwCurrentState;
    const bool isPending = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
    m_status.dwWaitHint = isPending ? PendingWaitMs : 0;
    m_status.dwControlsAccepted =
        state == SERVICE_RUNNING
            ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PRESHUTDOWN | SERVICE_ACCEPT_PARAMCHANGE
            : 0;
    SetServiceStatus(m_handle, &m_status);
    if (state == SERVICE_STOPPED) m_handle = nullptr;
}
