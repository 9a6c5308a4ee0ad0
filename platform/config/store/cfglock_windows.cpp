// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfglock.h>

#include <platform/config/store/nativefile_windows.h>

namespace {

/// Whether \a error means that somebody else has the file. One that is about to go may not be opened either,
/// and is told from one that may never be by being there.
bool IsTaken(DWORD error, const std::wstring& name) {
    if (error == ERROR_SHARING_VIOLATION || error == ERROR_DELETE_PENDING) return true;
    if (error != ERROR_ACCESS_DENIED) return false;
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return GetLastError() == ERROR_ACCESS_DENIED;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;  // a folder is nobody's lock
}

}  // namespace

// Who has the file open for writing holds the lock: nobody else may open it so. The system removes the file
// when it is closed, also that of a process that was killed.
CfgLock::EOutcome CfgLock::Try() {
    if (IsHeld()) return EOutcome::Held;
    const std::wstring name = nativefile::Name(m_name);
    const HANDLE file =
        CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        m_reason = qt_error_string(int(error));
        return IsTaken(error, name) ? EOutcome::Taken : EOutcome::Impossible;
    }
    const QByteArray line = OwnLine();
    DWORD written = 0;
    WriteFile(file, line.constData(), DWORD(line.size()), &written, nullptr);  // for people, not for the lock
    m_native = reinterpret_cast<Native>(file);
    return EOutcome::Held;
}

void CfgLock::Release() {
    if (!IsHeld()) return;
    CloseHandle(reinterpret_cast<HANDLE>(m_native));
    m_native = None;
}

QByteArray CfgLock::ReadHolder() const {
    QByteArray bytes(MaxHolderBytes, '\0');
    const HANDLE file = CreateFileW(nativefile::Name(m_name).c_str(), GENERIC_READ, nativefile::ShareAll,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return QByteArray();
    DWORD count = 0;
    if (!ReadFile(file, bytes.data(), DWORD(bytes.size()), &count, nullptr)) count = 0;
    CloseHandle(file);
    bytes.truncate(int(count));
    return bytes;
}
