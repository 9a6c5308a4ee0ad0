// SPDX-License-Identifier: Apache-2.0
#include <apps/common/commandreader.h>

#include <apps/common/terminal.h>

#include <QtCore/QPointer>

#include <istream>
#include <string>
#include <thread>
#include <utility>

namespace {

/// Lines that wait to be carried out. Beyond, the program that writes them has to wait.
constexpr std::size_t MaxWaiting = 1000;

}  // namespace

CommandReader::CommandReader(std::function<void(const QString&)> onLine, std::function<void()> onEnd)
    : m_onLine(std::move(onLine)), m_onEnd(std::move(onEnd)) {
    m_shared->reader = this;
    std::thread(Read, m_shared).detach();
}

CommandReader::~CommandReader() {
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->reader = nullptr;
    m_shared->taken.notify_one();
}

void CommandReader::Read(const std::shared_ptr<Shared>& shared) {
    std::string line;
    while (std::getline(terminal::GetInput(), line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        Put(*shared, QString::fromStdString(line));
    }
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->isAtEnd = true;
    if (shared->reader != nullptr)
        QMetaObject::invokeMethod(shared->reader, &CommandReader::Take, Qt::QueuedConnection);
}

void CommandReader::Put(Shared& shared, const QString& line) {
    std::unique_lock<std::mutex> lock(shared.mutex);
    shared.taken.wait(lock, [&] { return shared.lines.size() < MaxWaiting || shared.reader == nullptr; });
    if (shared.reader == nullptr) return;
    shared.lines.push_back(line);
    if (shared.lines.size() == 1)
        QMetaObject::invokeMethod(shared.reader, &CommandReader::Take, Qt::QueuedConnection);
}

/// Hands on all lines that wait. A line may end the program, and this object with it.
void CommandReader::Take() {
    std::deque<QString> lines;
    bool isAtEnd = false;
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        lines.swap(m_shared->lines);
        std::swap(isAtEnd, m_shared->isAtEnd);
    }
    m_shared->taken.notify_one();
    const QPointer<CommandReader> self(this);
    for (const QString& line : lines) {
        m_onLine(line);
        if (self.isNull()) return;
    }
    if (isAtEnd) m_onEnd();
}
