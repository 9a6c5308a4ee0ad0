// SPDX-License-Identifier: Apache-2.0
#include <platform/values/mainthread.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <thread>

bool values::IsMainThread() {
    if (const QCoreApplication* application = QCoreApplication::instance())
        return application->thread() == QThread::currentThread();
    static const std::thread::id firstCaller = std::this_thread::get_id();
    return firstCaller == std::this_thread::get_id();
}
