// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Lines in the system's log "Application", under the name of a service. Any thread.
class EventLog {
  public:
    enum class EKind { Information, Warning, Error };

    explicit EventLog(const QString& name);
    ~EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    void Write(EKind kind, const QString& line) const;

    /// Makes the log know whose lines those of \a name are, which needs an administrator. False if it cannot.
    static bool Register(const QString& name);
    static void Unregister(const QString& name);

  private:
    void* m_handle;
};
