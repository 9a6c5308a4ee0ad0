// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

/// Reads standard input line by line, on a thread of its own, since not every system lets an event loop wait
/// for it. The thread cannot be ended while it waits, so it outlives this object and the application: it
/// tells nobody then. Needs the application object; main thread.
class CommandReader : public QObject {
  public:
    /// \a onLine is told of each line and \a onEnd of the end, both on the main thread.
    CommandReader(std::function<void(const QString&)> onLine, std::function<void()> onEnd);
    ~CommandReader() override;

  private:
    /// What the thread holds on to.
    struct Shared {
        std::mutex mutex;  ///< guards all that follows
        std::condition_variable taken;
        std::deque<QString> lines;  ///< not told yet
        bool isAtEnd = false;
        CommandReader* reader = nullptr;  ///< null: nobody is told any more
    };

    static void Read(const std::shared_ptr<Shared>& shared);
    static void Put(Shared& shared, const QString& line);
    void Take();

    const std::function<void(const QString&)> m_onLine;
    const std::function<void()> m_onEnd;
    const std::shared_ptr<Shared> m_shared = std::make_shared<Shared>();
};
