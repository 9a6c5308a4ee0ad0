// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/cfgfile.h>

#include <platform/config/store/nativefile_windows.h>

namespace {

using cfgfile::EOutcome;
using cfgfile::Result;

Result Failure(DWORD error) {
    EOutcome outcome = EOutcome::Failed;
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) outcome = EOutcome::Missing;
    // A virus scanner's glance, or a file that goes once the last program has closed it.
    else if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
             error == ERROR_DELETE_PENDING || error == ERROR_ACCESS_DENIED || error == ERROR_USER_MAPPED_FILE)
        outcome = EOutcome::Busy;
    return {outcome, qt_error_string(int(error))};
}

/// A handle that is closed at the end, and that child processes do not inherit.
class Handle {
  public:
    Handle(const QString& name, DWORD access, DWORD sharing, DWORD disposition)
        : m_handle(CreateFileW(nativefile::Name(name).c_str(), access, sharing, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~Handle() { Close(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE Get() const { return m_handle; }
    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    void Close() {
        if (IsOpen()) CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE m_handle;
};

/// Something else than a file, or a file that may not be written; done for anything else.
Result Obstacle(const QString& file) {
    const DWORD attributes = GetFileAttributesW(nativefile::Name(file).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return {};
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return {EOutcome::NoFile, QStringLiteral("it is not a file")};
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return {EOutcome::Failed, qt_error_string(ERROR_ACCESS_DENIED)};
    return {};
}

bool WriteAll(HANDLE handle, const QByteArray& bytes) {
    int written = 0;
    while (written < bytes.size()) {
        DWORD count = 0;
        if (!WriteFile(handle, bytes.constData() + written, DWORD(bytes.size() - written), &count, nullptr))
            return false;
        written += int(count);
    }
    return FlushFileBuffers(handle) != 0;
}

}  // namespace

Result cfgfile::Read(const QString& file, qint64 maxBytes, QByteArray* bytes) {
    bytes->clear();
    const Result obstacle = Obstacle(file);
    if (obstacle.outcome == EOutcome::NoFile) return obstacle;
    const Handle handle(file, GENERIC_READ, nativefile::ShareAll, OPEN_EXISTING);
    LARGE_INTEGER size = {};
    if (!handle.IsOpen() || !GetFileSizeEx(handle.Get(), &size)) return Failure(GetLastError());
    bytes->resize(int(qMin<qint64>(size.QuadPart, maxBytes)));
    int read = 0;
    while (read < bytes->size()) {
        DWORD count = 0;
        if (!ReadFile(handle.Get(), bytes->data() + read, DWORD(bytes->size() - read), &count, nullptr)) {
            const DWORD error = GetLastError();
            bytes->clear();
            return Failure(error);
        }
        if (count == 0) break;
        read += int(count);
    }
    bytes->truncate(read);
    return {};
}

Result cfgfile::Replace(const QString& file, const QString& next, const QByteArray& bytes) {
    const Result obstacle = Obstacle(file);
    if (obstacle.outcome != EOutcome::Done) return obstacle;
    DWORD error = ERROR_SUCCESS;
    {
        const Handle handle(next, GENERIC_WRITE, 0, CREATE_ALWAYS);
        if (!handle.IsOpen() || !WriteAll(handle.Get(), bytes)) error = GetLastError();
    }
    if (error == ERROR_SUCCESS && !MoveFileExW(nativefile::Name(next).c_str(), nativefile::Name(file).c_str(),
                                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        error = GetLastError();
    if (error == ERROR_SUCCESS) return {};
    DeleteFileW(nativefile::Name(next).c_str());
    return Failure(error);
}
