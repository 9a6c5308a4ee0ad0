// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/inputlines.h>

#include <apps/common/terminal.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

namespace mctree {

namespace {

constexpr std::size_t LongestLine = 1048576;  // bytes
constexpr std::size_t MostWaiting = 64;       // lines

}  // namespace

struct InputLines::Line {
    QString text;
    bool isTooLong;
};

/// Reads one line, without its end. False at the end of the stream.
bool InputLines::ReadLine(std::istream& stream, Line* line) {
    std::string bytes;
    line->isTooLong = false;
    char byte = 0;
    bool isAny = false;
    while (stream.get(byte)) {
        isAny = true;
        if (byte == '\n') break;
        if (bytes.size() < LongestLine)
            bytes += byte;
        else
            line->isTooLong = true;
    }
    if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
    line->text = QString::fromStdString(bytes);
    return isAny;
}

/// What the thread holds on to.
struct InputLines::Shared {
    std::shared_ptr<std::istream> stream;
    std::mutex mutex;  ///< guards all that follows
    std::condition_variable taken;
    std::deque<Line> lines;
    bool isAtEnd = false;
    InputLines* owner = nullptr;  ///< null: nobody is told any more

    void TellOwner() {
        if (owner != nullptr)
            QMetaObject::invokeMethod(
                owner, [this] { owner->m_onMore(); }, Qt::QueuedConnection);
    }
};

std::shared_ptr<std::istream> InputLines::StandardInput() {
    return {&terminal::GetInput(), [](std::istream*) {}};
}

std::shared_ptr<std::istream> InputLines::Of(const QByteArray& bytes) {
    return std::make_shared<std::istringstream>(bytes.toStdString());
}

InputLines::InputLines(std::shared_ptr<std::istream> stream, std::function<void()> onMore)
    : m_onMore(std::move(onMore)), m_shared(std::make_shared<Shared>()) {
    m_shared->stream = std::move(stream);
    m_shared->owner = this;
    std::thread(Read, m_shared).detach();
}

InputLines::~InputLines() {
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->owner = nullptr;
    m_shared->taken.notify_one();
}

std::optional<QString> InputLines::Take(bool* isTooLong) {
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    if (m_shared->lines.empty()) return std::nullopt;
    const Line line = std::move(m_shared->lines.front());
    m_shared->lines.pop_front();
    m_shared->taken.notify_one();
    *isTooLong = line.isTooLong;
    return line.text;
}

bool InputLines::IsAtEnd() const {
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isAtEnd && m_shared->lines.empty();
}

void InputLines::Read(const std::shared_ptr<Shared>& shared) {
    Line line;
    while (ReadLine(*shared->stream, &line)) {
        std::unique_lock<std::mutex> lock(shared->mutex);
        shared->taken.wait(lock,
                           [&] { return shared->lines.size() < MostWaiting || shared->owner == nullptr; });
        if (shared->owner == nullptr) return;
        shared->lines.push_back(line);
        if (shared->lines.size() == 1) shared->TellOwner();
    }
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->isAtEnd = true;
    shared->TellOwner();
}

}  // namespace mctree
