// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>
#include <memory>
#include <mutex>

/// Reads standard input line by line, on a thread of its own, since not every system lets an event loop wait
/// for it. The thread cannot be ended while it waits, so it outlives this object and the application: it
/// tells nobody then. Needs the application object; main thread.
class CommandReader {
  public:
    /// \a onLine is told of each line and \a onEnd of the end, both on the main thread.
    CommandReader(std::function<void(const QString&)> onLine, std::function<void()> onEnd);
    ~CommandReader();
    CommandReader(const CommandReader&) = delete;
    CommandReader& operator=(const CommandReader&) = delete;

  private:
    /// What the thread holds on to.
    struct Shared {
        std::function<void(const QString&)> onLine;
        std::function<void()> onEnd;
        std::mutex mutex;
        QObject* target = nullptr;  ///< null: nobody is told any more

        void Post(const std::function<void()>& call);
    };
    static void Read(const std::shared_ptr<Shared>& shared);

    QObject m_target;
    std::shared_ptr<Shared> m_shared = std::make_shared<Shared>();
};
