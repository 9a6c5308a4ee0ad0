// SPDX-License-Identifier: Apache-2.0
#include <apps/common/terminal.h>

#include <QtCore/QtGlobal>

#include <windows.h>

namespace terminal {

namespace {

HANDLE Output() {
    return GetStdHandle(STD_OUTPUT_HANDLE);
}

bool WriteAll(HANDLE handle, const QByteArray& bytes) {
    DWORD done = 0;
    const DWORD size = static_cast<DWORD>(bytes.size());
    while (done < size) {
        DWORD written = 0;
        if (!WriteFile(handle, bytes.constData() + done, size - done, &written, nullptr)) return false;
        done += written;
    }
    return true;
}

}  // namespace

void system::PrepareStreams() {
    SetConsoleOutputCP(CP_UTF8);
}

bool IsOutputTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(Output(), &mode) != 0;
}

bool TakesColour() {
    DWORD mode = 0;
    if (!qEnvironmentVariableIsEmpty("NO_COLOR") || !GetConsoleMode(Output(), &mode)) return false;
    return SetConsoleMode(Output(), mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
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
