// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownrequests_windows.h>
#include <apps/common/shutdownsignals.h>

#include <windows.h>

#include <future>
#include <memory>
#include <mutex>
#include <thread>

namespace {

// The system tells on threads of its own, at any time, also while the process ends.
std::mutex& mutex = *new std::mutex;
ShutdownSignals* current = nullptr;
bool isToldOfHangUps = false;
bool wasTold = false;      ///< to the current one
bool isRequested = false;  ///< by the system, for which the one to come counts too

bool IsKey(DWORD kind) {
    return kind == CTRL_C_EVENT || kind == CTRL_BREAK_EVENT;
}

/// With the mutex held.
void TellCurrent() {
    if (current == nullptr) return;
    wasTold = true;
    QMetaObject::invokeMethod(current, &ShutdownSignals::ShutdownRequested, Qt::QueuedConnection);
}

/// As soon as whoever told of the end returns, the system ends the process, or thinks that it is no hurry any
/// more. So nobody returns: the process ends when its last changes are saved, and this thread with it.
[[noreturn]] void WaitForEndOfProcess() {
    for (;;)
        Sleep(INFINITE);
}

BOOL WINAPI OnConsoleEvent(DWORD kind) {
    // Services hear that somebody logs off, which is nothing to them. All others are told as windows are.
    if (kind == CTRL_LOGOFF_EVENT) return TRUE;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        // A second key, or one that nobody waits for: the system shall do what it does without a handler.
        if (IsKey(kind) && (current == nullptr || wasTold)) return FALSE;
        TellCurrent();
    }
    if (!IsKey(kind)) WaitForEndOfProcess();
    return TRUE;
}

LRESULT CALLBACK OnWindowMessage(HWND window, UINT message, WPARAM wide, LPARAM large) {
    switch (message) {
        case WM_CLOSE:
            shutdownrequests::End();
            return 0;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            if (wide == FALSE) return 0;
            ShutdownBlockReasonCreate(window, L"The last changes are being saved.");
            shutdownrequests::End();
            WaitForEndOfProcess();
        default:
            return DefWindowProcW(window, message, wide, large);
    }
}

/// A window that nobody sees: a process without one is asked by nobody to end, neither at the end of the
/// session nor by taskkill or QProcess::terminate(). On a thread of its own, since the end of the session is
/// over when its answer comes, and the main thread still has to save.
void RunWindow(std::promise<void>& isReady) {
    const wchar_t* const name = L"MultiChannelServerShutdown";
    WNDCLASSW description = {};
    description.lpfnWndProc = OnWindowMessage;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = name;
    RegisterClassW(&description);
    // Of the desktop, since windows that only take messages are not told of the end of the session.
    CreateWindowExW(0, name, name, WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr, description.hInstance,
                    nullptr);
    isReady.set_value();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
}

/// Both stay for as long as the process: they may be at work when they were to be taken back.
bool Listen() {
    SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
    const auto isReady = std::make_shared<std::promise<void>>();
    std::thread([isReady] { RunWindow(*isReady); }).detach();
    isReady->get_future().wait();
    return true;
}

}  // namespace

void shutdownrequests::End() {
    const std::lock_guard<std::mutex> lock(mutex);
    isRequested = true;
    TellCurrent();
}

void shutdownrequests::HangUp() {
    const std::lock_guard<std::mutex> lock(mutex);
    if (current != nullptr && isToldOfHangUps)
        QMetaObject::invokeMethod(current, &ShutdownSignals::HungUp, Qt::QueuedConnection);
}

ShutdownSignals::ShutdownSignals(EHangUp hangUp, QObject* parent) : QObject(parent) {
    [[maybe_unused]] static const bool isListening = Listen();
    const std::lock_guard<std::mutex> lock(mutex);
    Q_ASSERT_X(current == nullptr, Q_FUNC_INFO, "one at a time");
    current = this;
    isToldOfHangUps = hangUp == EHangUp::IsTold;
    wasTold = false;
    if (isRequested) TellCurrent();
}

ShutdownSignals::~ShutdownSignals() {
    const std::lock_guard<std::mutex> lock(mutex);
    current = nullptr;
    isRequested = false;
}
