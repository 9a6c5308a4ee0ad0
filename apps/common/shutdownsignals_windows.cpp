// SPDX-License-Identifier: Apache-2.0
#include <apps/common/shutdownsignals.h>

#include <windows.h>
#include <mutex>

namespace {

// The system calls the handler on a thread of its own, at any time.
std::mutex mutex;
ShutdownSignals* current = nullptr;
bool wasTold = false;
HANDLE ended = nullptr;

bool IsKey(DWORD kind) {
    return kind == CTRL_C_EVENT || kind == CTRL_BREAK_EVENT;
}

/// False where the system shall do what it does without a handler: end the process.
bool Tell(DWORD kind) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (current == nullptr || (wasTold && IsKey(kind))) return false;
    wasTold = true;
    QMetaObject::invokeMethod(current, &ShutdownSignals::ShutdownRequested, Qt::QueuedConnection);
    return true;
}

BOOL WINAPI HandleRequest(DWORD kind) {
    if (!Tell(kind)) return FALSE;
    // After all but the keys the system ends the process as soon as this returns: leave it time for its own
    // end.
    if (!IsKey(kind)) WaitForSingleObject(ended, INFINITE);
    return TRUE;
}

}  // namespace

// There are no hang-ups.
ShutdownSignals::ShutdownSignals(EHangUp /*hangUp*/, QObject* parent) : QObject(parent) {
    const std::lock_guard<std::mutex> lock(mutex);
    Q_ASSERT_X(current == nullptr, Q_FUNC_INFO, "one at a time");
    if (ended == nullptr) ended = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    ResetEvent(ended);
    current = this;
    wasTold = false;
    SetConsoleCtrlHandler(HandleRequest, TRUE);
}

ShutdownSignals::~ShutdownSignals() {
    SetConsoleCtrlHandler(HandleRequest, FALSE);
    const std::lock_guard<std::mutex> lock(mutex);
    current = nullptr;
    SetEvent(ended);  // and stays open: a handler may still wait for it
}
