// SPDX-License-Identifier: Apache-2.0
#include <apps/common/commandreader.h>

#include <iostream>
#include <string>
#include <thread>
#include <utility>

CommandReader::CommandReader(std::function<void(const QString&)> onLine, std::function<void()> onEnd) {
    m_shared->onLine = std::move(onLine);
    m_shared->onEnd = std::move(onEnd);
    m_shared->target = &m_target;
    std::thread(Read, m_shared).detach();
}

CommandReader::~CommandReader() {
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->target = nullptr;
}

void CommandReader::Read(const std::shared_ptr<Shared>& shared) {
    std::string line;
    while (std::getline(std::cin, line)) {
        const QString text = QString::fromStdString(line);
        shared->Post([shared, text] { shared->onLine(text); });
    }
    shared->Post([shared] { shared->onEnd(); });
}

void CommandReader::Shared::Post(const std::function<void()>& call) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (target != nullptr) QMetaObject::invokeMethod(target, call, Qt::QueuedConnection);
}
