// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

/// Writes on a thread of its own, since a medium may take seconds: of what is put in while it writes, only
/// the last. Belongs to the main thread.
class RecoveryWriter : public QObject {
    Q_OBJECT

  public:
    /// Empty, or why it cannot be written, one line. Called on the thread.
    using Write = std::function<QString(const QByteArray& bytes)>;

    explicit RecoveryWriter(Write write);
    /// Writes what was put in, and waits for that.
    ~RecoveryWriter() override;

    /// Never waits for the medium.
    void Put(const QByteArray& bytes);

  Q_SIGNALS:
    /// On the writer's thread: bytes were written, or could not be, as \a problem says.
    void SignalWritten(const QString& problem);

  private:
    void Run();

    Write m_write;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<QByteArray> m_next;
    bool m_ends = false;
    std::thread m_thread;
};
