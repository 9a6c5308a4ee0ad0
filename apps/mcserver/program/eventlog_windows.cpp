// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/eventlog_windows.h>

#include <windows.h>

#include <string>

namespace {

// Of the texts that the log has for numbers, one is the line itself: that of each number of the system's own
// program for writing events.
constexpr DWORD LineItself = 1;
constexpr wchar_t TextsOfTheLog[] = L"%SystemRoot%\\System32\\EventCreate.exe";

constexpr int MaxLength = 30'000;  // characters that the log takes

std::wstring EventLogKey(const QString& name) {
    return (QStringLiteral("SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\") + name)
        .toStdWString();
}

WORD Native(EventLog::EKind kind) {
    switch (kind) {
        case EventLog::EKind::Information:
            return EVENTLOG_INFORMATION_TYPE;
        case EventLog::EKind::Warning:
            return EVENTLOG_WARNING_TYPE;
        case EventLog::EKind::Error:
            return EVENTLOG_ERROR_TYPE;
    }
    return EVENTLOG_ERROR_TYPE;
}

}  // namespace

EventLog::EventLog(const QString& name)
    : m_handle(RegisterEventSourceW(nullptr, name.toStdWString().c_str())) {}

EventLog::~EventLog() {
    if (m_handle != nullptr) DeregisterEventSource(m_handle);
}

void EventLog::Write(EKind kind, const QString& line) const {
    if (m_handle == nullptr) return;
    const std::wstring text = line.left(MaxLength).toStdWString();
    const wchar_t* texts[] = {text.c_str()};
    ReportEventW(m_handle, Native(kind), 0, LineItself, nullptr, 1, 0, texts, nullptr);
}

bool EventLog::Register(const QString& name) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, EventLogKey(name).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                        &key, nullptr) != ERROR_SUCCESS)
        return false;
    const DWORD kinds = EVENTLOG_ERROR_TYPE | EVENTLOG_WARNING_TYPE | EVENTLOG_INFORMATION_TYPE;
    const bool isSet =
        RegSetValueExW(key, L"EventMessageFile", 0, REG_EXPAND_SZ,
                       reinterpret_cast<const BYTE*>(TextsOfTheLog), sizeof TextsOfTheLog) == ERROR_SUCCESS &&
        RegSetValueExW(key, L"TypesSupported", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&kinds),
                       sizeof kinds) == ERROR_SUCCESS;
    RegCloseKey(key);
    return isSet;
}

void EventLog::Unregister(const QString& name) {
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, EventLogKey(name).c_str());
}
