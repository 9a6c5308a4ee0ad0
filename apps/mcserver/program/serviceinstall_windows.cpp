// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicecontrol.h>

#include <apps/mcserver/program/eventlog_windows.h>
#include <apps/mcserver/program/servicecommand.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>

#include <windows.h>

#include <sddl.h>
#include <shlobj.h>

#include <chrono>
#include <memory>
#include <string>
#include <type_traits>

namespace {

constexpr std::chrono::seconds StopPatience(60);
constexpr unsigned long StopPollMs = 100;
constexpr DWORD PreshutdownMs = 60'000;

struct CloseService {
    void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, CloseService>;

struct FreeLocal {
    void operator()(void* memory) const { LocalFree(memory); }
};

QString LastReason() {
    const DWORD error = GetLastError();
    if (error == ERROR_ACCESS_DENIED) return QStringLiteral("this needs an administrator");
    if (error == ERROR_SERVICE_EXISTS)
        return QStringLiteral("there is one already; --remove-service removes it");
    if (error == ERROR_SERVICE_DOES_NOT_EXIST) return QStringLiteral("there is none");
    if (error == ERROR_SERVICE_MARKED_FOR_DELETE)
        return QStringLiteral(
            "the old one is about to go: close the programs that show it, or start the system anew");
    return qt_error_string(static_cast<int>(error));
}

QString Failure(const char* what, const QString& name) {
    return QStringLiteral("the service '%1' cannot be %2: %3").arg(name, QLatin1String(what), LastReason());
}

std::wstring AccountName(const QString& name) {
    return (QStringLiteral("NT SERVICE\\") + name).toStdWString();
}

/// The account as texts about rights name it; empty if it is not known.
QString AccountSid(const QString& name) {
    BYTE sid[SECURITY_MAX_SID_SIZE];
    wchar_t domain[256];
    DWORD sidSize = sizeof sid;
    DWORD domainSize = 256;
    SID_NAME_USE use = SidTypeUnknown;
    if (!LookupAccountNameW(nullptr, AccountName(name).c_str(), sid, &sidSize, domain, &domainSize, &use))
        return QString();
    wchar_t* text = nullptr;
    if (!ConvertSidToStringSidW(sid, &text)) return QString();
    const std::unique_ptr<wchar_t, FreeLocal> owned(text);
    return QString::fromWCharArray(text);
}

/// The folder of the service's files, which administrators and the service may use, and nobody else: anybody
/// may make folders beside it.
bool MakeFolder(const QString& name) {
    const QString folder = QFileInfo(servicecontrol::ConfigFile(name)).absolutePath();
    if (!QDir().mkpath(folder)) return false;
    const QString sid = AccountSid(name);
    if (sid.isEmpty()) return true;  // no account of its own: it runs as somebody who may
    const QString rights =
        QStringLiteral("D:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1301bf;;;%1)").arg(sid);
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(rights.toStdWString().c_str(), SDDL_REVISION_1,
                                                              &descriptor, nullptr))
        return false;
    const std::unique_ptr<void, FreeLocal> owned(descriptor);
    return SetFileSecurityW(QDir::toNativeSeparators(folder).toStdWString().c_str(),
                            DACL_SECURITY_INFORMATION, descriptor) != 0;
}

/// What an installed service is besides its command: started anew when it fails, given time when the system
/// ends, and without the rights that services have by default. Where a system does not know one of them, it
/// has to do without.
void Describe(SC_HANDLE service) {
    wchar_t text[] = L"Owns a direction finder and offers it to many clients at once.";
    SERVICE_DESCRIPTIONW description = {text};
    ChangeServiceConfig2W(service, SERVICE_CONFIG_DESCRIPTION, &description);
    SC_ACTION actions[] = {
        {SC_ACTION_RESTART, 2'000}, {SC_ACTION_RESTART, 2'000}, {SC_ACTION_RESTART, 60'000}};
    SERVICE_FAILURE_ACTIONSW failure = {};
    failure.dwResetPeriod = 24 * 60 * 60;  // seconds
    failure.cActions = 3;
    failure.lpsaActions = actions;
    ChangeServiceConfig2W(service, SERVICE_CONFIG_FAILURE_ACTIONS, &failure);
    // Also when it ends by itself with an exit code, as where the interface that it listens on is not there
    // yet.
    SERVICE_FAILURE_ACTIONS_FLAG always = {TRUE};
    ChangeServiceConfig2W(service, SERVICE_CONFIG_FAILURE_ACTIONS_FLAG, &always);
    SERVICE_PRESHUTDOWN_INFO preshutdown = {PreshutdownMs};
    ChangeServiceConfig2W(service, SERVICE_CONFIG_PRESHUTDOWN_INFO, &preshutdown);
    SERVICE_SID_INFO sid = {SERVICE_SID_TYPE_UNRESTRICTED};
    ChangeServiceConfig2W(service, SERVICE_CONFIG_SERVICE_SID_INFO, &sid);
    wchar_t privileges[] = L"SeChangeNotifyPrivilege\0";  // a list, which an empty text ends
    SERVICE_REQUIRED_PRIVILEGES_INFOW required = {privileges};
    ChangeServiceConfig2W(service, SERVICE_CONFIG_REQUIRED_PRIVILEGES_INFO, &required);
}

/// Asks it to stop, again and again, since one that is about to start does not take that yet, and waits until
/// it has. False if it goes on.
bool Stop(SC_HANDLE service) {
    QElapsedTimer waited;
    waited.start();
    SERVICE_STATUS status = {};
    while (ControlService(service, SERVICE_CONTROL_STOP, &status) ||
           GetLastError() != ERROR_SERVICE_NOT_ACTIVE) {
        if (std::chrono::milliseconds(waited.elapsed()) > StopPatience) return false;
        QThread::msleep(StopPollMs);
    }
    return true;
}

}  // namespace

QString servicecontrol::ConfigFile(const QString& name) {
    wchar_t* path = nullptr;
    QString folder = QStringLiteral("C:\\ProgramData");
    if (SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &path) == S_OK)
        folder = QString::fromWCharArray(path);
    CoTaskMemFree(path);
    return QStringLiteral("%1\\MultiChannelServer\\%2\\%2.ini").arg(folder, name);
}

QString servicecontrol::Install(const QString& name, const QStringList& arguments) {
    const ServiceHandle manager(
        OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE));
    if (!manager) return Failure("installed", name);
    const QString program = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    const std::wstring command = servicecommand::Line(QStringList(program) + arguments).toStdWString();
    const std::wstring title = QStringLiteral("MultiChannel Server (%1)").arg(name).toStdWString();
    const ServiceHandle service(CreateServiceW(manager.get(), name.toStdWString().c_str(), title.c_str(),
                                               SERVICE_CHANGE_CONFIG | SERVICE_START | DELETE,
                                               SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START,
                                               SERVICE_ERROR_NORMAL, command.c_str(), nullptr, nullptr,
                                               nullptr, AccountName(name).c_str(), nullptr));
    if (!service) return Failure("installed", name);
    Describe(service.get());
    if (EventLog::Register(name) && MakeFolder(name)) return QString();
    const QString failure = Failure("installed", name);
    DeleteService(service.get());
    EventLog::Unregister(name);
    return failure;
}

QString servicecontrol::Remove(const QString& name) {
    const ServiceHandle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
    if (!manager) return Failure("removed", name);
    const ServiceHandle service(
        OpenServiceW(manager.get(), name.toStdWString().c_str(),
                     SERVICE_STOP | SERVICE_QUERY_STATUS | SERVICE_QUERY_CONFIG | DELETE));
    if (!service) return Failure("removed", name);
    if (!Stop(service.get())) return QStringLiteral("the service '%1' does not stop").arg(name);
    if (!DeleteService(service.get())) return Failure("removed", name);
    EventLog::Unregister(name);
    return QString();
}
