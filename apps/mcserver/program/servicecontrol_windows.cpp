// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicecontrol.h>

#include <apps/common/shutdownrequests_windows.h>
#include <apps/common/terminal.h>
#include <apps/mcserver/program/eventlog_windows.h>
#include <apps/mcserver/program/servicestatus_windows.h>

#include <windows.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

namespace {

constexpr int ExitNoService = 1;

constexpr std::chrono::seconds ProgressInterval(3);  // less than ServiceStatus tells the manager to wait for

/// What the manager's thread and the program's wait for. The manager may call at any time to the end.
struct Service {
    std::wstring name;
    std::promise<bool> isStarted;  ///< false: by something else than the manager
    std::promise<void> isOver;
};
Service* running = nullptr;

DWORD WINAPI OnControl(DWORD control, DWORD /*type*/, void* /*data*/, void* /*context*/) {
    switch (control) {
        case SERVICE_CONTROL_STOP:
        case SERVICE_CONTROL_SHUTDOWN:
        case SERVICE_CONTROL_PRESHUTDOWN:
            ServiceStatus::Instance().Tell(ServiceStatus::EState::Stopping);
            shutdownrequests::End();
            return NO_ERROR;
        case SERVICE_CONTROL_PARAMCHANGE:
            shutdownrequests::HangUp();
            return NO_ERROR;
        case SERVICE_CONTROL_INTERROGATE:
            return NO_ERROR;
        default:
            return ERROR_CALL_NOT_IMPLEMENTED;
    }
}

/// What the manager takes for the service: it may do as long as this runs. The program itself runs on the
/// main thread, as it would without the manager.
void WINAPI RunService(DWORD /*count*/, wchar_t** /*arguments*/) {
    ServiceStatus::Instance().Begin(RegisterServiceCtrlHandlerExW(running->name.c_str(), OnControl, nullptr));
    running->isStarted.set_value(true);
    const std::future<void> isOver = running->isOver.get_future();
    while (isOver.wait_for(ProgressInterval) == std::future_status::timeout)
        ServiceStatus::Instance().TellProgress();
}

void Dispatch() {
    const SERVICE_TABLE_ENTRYW table[] = {{&running->name.front(), RunService}, {nullptr, nullptr}};
    if (!StartServiceCtrlDispatcherW(table)) running->isStarted.set_value(false);
}

void SendLinesToEventLog(const QString& name) {
    const auto log = std::make_shared<EventLog>(name);
    terminal::SendLinesTo([log](terminal::EStream stream, const QByteArray& lines) {
        const bool isError = stream == terminal::EStream::Error;
        for (const QByteArray& line : lines.split('\n'))
            if (!line.isEmpty())
                log->Write(isError ? EventLog::EKind::Warning : EventLog::EKind::Information,
                           QString::fromUtf8(line));
    });
}

}  // namespace

QString servicecontrol::Obstacle() {
    return QString();
}

int servicecontrol::Run(const QString& name, const std::function<int()>& run) {
    running = new Service;
    running->name = name.toStdWString();
    std::future<bool> isStarted = running->isStarted.get_future();
    std::thread dispatcher(Dispatch);
    if (!isStarted.get()) {
        dispatcher.join();
        return terminal::Complain(QStringLiteral("--service is for the service manager alone"),
                                  ExitNoService);
    }
    SendLinesToEventLog(name);
    const int code = run();
    terminal::Drain();
    running->isOver.set_value();
    ServiceStatus::Instance().TellStopped(code);
    dispatcher.join();
    return code;
}
