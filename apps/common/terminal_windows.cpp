// SPDX-License-Identifier: Apache-2.0
#include <apps/common/terminal.h>

#include <QtCore/QtGlobal>

#include <windows.h>

#include <algorithm>
#include <array>
#include <istream>
#include <optional>
#include <streambuf>
#include <string>

namespace terminal {

namespace {

HANDLE Output() {
    return GetStdHandle(STD_OUTPUT_HANDLE);
}

bool IsConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

bool IsOpen(HANDLE handle) {
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return false;
    SetLastError(NO_ERROR);
    return GetFileType(handle) != FILE_TYPE_UNKNOWN || GetLastError() == NO_ERROR;
}

HANDLE Open(const wchar_t* name, DWORD access) {
    const HANDLE handle = CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return handle != INVALID_HANDLE_VALUE ? handle : nullptr;
}

/// A program with windows has no console and no streams, but was perhaps started from one, where its answer
/// to
/// --help is waited for. A program for the console whose stream was closed writes nowhere.
void OpenStream(DWORD which, const wchar_t* consoleName, bool isAttached) {
    if (IsOpen(GetStdHandle(which))) return;
    constexpr DWORD Both = GENERIC_READ | GENERIC_WRITE;
    HANDLE handle = isAttached ? Open(consoleName, Both) : nullptr;
    if (handle == nullptr) handle = Open(L"NUL", Both);
    SetStdHandle(which, handle);
}

bool WriteBytes(HANDLE handle, const QByteArray& bytes) {
    DWORD done = 0;
    const DWORD size = static_cast<DWORD>(bytes.size());
    while (done < size) {
        DWORD written = 0;
        if (!WriteFile(handle, bytes.constData() + done, size - done, &written, nullptr)) return false;
        done += written;
    }
    return true;
}

/// The console takes UTF-16, whatever its code page, which then need not be changed for all who share it.
bool WriteText(HANDLE console, const QString& text) {
    constexpr int MaxAtOnce = 8192;  // some consoles have no room for more
    for (int done = 0; done < text.size();) {
        int count = std::min(text.size() - done, MaxAtOnce);
        if (count > 1 && text.at(done + count - 1).isHighSurrogate()) --count;
        DWORD written = 0;
        const auto* const from = reinterpret_cast<const wchar_t*>(text.utf16()) + done;
        if (!WriteConsoleW(console, from, static_cast<DWORD>(count), &written, nullptr) || written == 0)
            return false;
        done += static_cast<int>(written);
    }
    return true;
}

bool WriteAll(HANDLE handle, const QByteArray& bytes) {
    return IsConsole(handle) ? WriteText(handle, QString::fromUtf8(bytes)) : WriteBytes(handle, bytes);
}

/// Of the console, what is typed, as UTF-8; of anything else the bytes as they come. Reads past the C
/// library, which would keep the process from ending while a thread waits in it.
class InputBuffer final : public std::streambuf {
  protected:
    int_type underflow() override {
        const HANDLE handle = GetStdHandle(STD_INPUT_HANDLE);
        m_bytes = IsConsole(handle) ? ReadTyped(handle) : ReadBytes(handle);
        if (m_bytes.empty()) return traits_type::eof();
        setg(&m_bytes.front(), &m_bytes.front(), &m_bytes.front() + m_bytes.size());
        return traits_type::to_int_type(*gptr());
    }

  private:
    static constexpr std::size_t MaxAtOnce = 8192;

    static std::string ReadBytes(HANDLE handle) {
        std::string bytes(MaxAtOnce, '\0');
        DWORD count = 0;
        const BOOL isRead = ReadFile(handle, &bytes.front(), static_cast<DWORD>(MaxAtOnce), &count, nullptr);
        bytes.resize(isRead ? count : 0);
        return bytes;
    }

    std::string ReadTyped(HANDLE console) {
        constexpr wchar_t CtrlZ = 0x1A;  // at the beginning of a line, for the end
        std::array<wchar_t, MaxAtOnce> typed;
        for (;;) {
            DWORD count = 0;
            SetLastError(NO_ERROR);
            if (!ReadConsoleW(console, typed.data(), static_cast<DWORD>(typed.size()), &count, nullptr))
                return {};
            if (count == 0 && GetLastError() == ERROR_OPERATION_ABORTED)
                continue;  // Ctrl+C, which is told elsewhere
            const bool isEnd = count == 0 || (m_isLineBegin && typed[0] == CtrlZ);
            if (isEnd) return {};
            m_isLineBegin = typed[count - 1] == L'\n';
            m_typed += QString::fromWCharArray(typed.data(), static_cast<int>(count));
            const bool isSplit = m_typed.at(m_typed.size() - 1).isHighSurrogate();
            if (isSplit) continue;
            std::string bytes = m_typed.toUtf8().toStdString();
            m_typed.clear();
            return bytes;
        }
    }

    std::string m_bytes;
    QString m_typed;  ///< half of a character
    bool m_isLineBegin = true;
};

std::optional<DWORD> modeBefore;  ///< of the output, where it was changed

}  // namespace

void system::PrepareStreams() {
    // Boxes of the system's own, about a missing medium or a crash, wait for somebody, who need not be there.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    // Which fails where there is a console already.
    const bool isAttached = !IsOpen(Output()) && AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    OpenStream(STD_INPUT_HANDLE, L"NUL", false);
    OpenStream(STD_OUTPUT_HANDLE, L"CONOUT$", isAttached);
    OpenStream(STD_ERROR_HANDLE, L"CONOUT$", isAttached);
}

void system::RestoreStreams() {
    if (modeBefore) SetConsoleMode(Output(), *modeBefore);
    modeBefore.reset();
}

std::istream& GetInput() {
    // Never destroyed: a thread may wait for it to the end of the process.
    static auto& input = *new std::istream(new InputBuffer);
    return input;
}

bool IsOutputTerminal() {
    return IsConsole(Output());
}

bool TakesColour() {
    DWORD mode = 0;
    if (!qEnvironmentVariableIsEmpty("NO_COLOR") || !GetConsoleMode(Output(), &mode)) return false;
    const DWORD wanted = mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING;
    if (wanted == mode) return true;
    if (!SetConsoleMode(Output(), wanted)) return false;
    if (!modeBefore) modeBefore = mode;  // of all who share the console, so it is given back
    return true;
}

int GetWidth() {
    CONSOLE_SCREEN_BUFFER_INFO screen = {};
    if (!GetConsoleScreenBufferInfo(Output(), &screen)) return 0;
    return screen.srWindow.Right - screen.srWindow.Left + 1;
}

bool WriteOutput(const QByteArray& bytes, QString* error) {
    if (WriteAll(Output(), bytes)) return true;
    const DWORD code = GetLastError();
    if (code != ERROR_BROKEN_PIPE && code != ERROR_NO_DATA) *error = qt_error_string(static_cast<int>(code));
    return false;
}

void system::WriteError(const QByteArray& bytes) {
    WriteAll(GetStdHandle(STD_ERROR_HANDLE), bytes);
}

}  // namespace terminal
