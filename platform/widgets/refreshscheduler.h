// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QObject>

#include <chrono>

/// Limits how often widgets are drawn anew when values change: the first change at once, those that follow at
/// most 30 times a second, all widgets together, and the last content always. One per application, which owns
/// it. GUI thread only.
///
/// However many changes come, a turn of the event loop lays out and paints each window once.
class MCS_WIDGETS_EXPORT RefreshScheduler : public QObject {
  public:
    /// Between two refreshes: not more than 30 in any second.
    static constexpr std::chrono::milliseconds Interval{34};

    /// Something that is drawn anew. Waits in a list that it is itself a link of, so that asking costs no
    /// memory; leaves it when it is destroyed.
    class MCS_WIDGETS_EXPORT Client {
      public:
        Client() = default;
        Client(const Client&) = delete;
        Client& operator=(const Client&) = delete;
        virtual ~Client();

        /// Shows what holds now. Not called twice for what was asked once.
        virtual void Refresh() = 0;

      private:
        friend class RefreshScheduler;

        void Unlink();

        Client* m_previous = nullptr;
        Client* m_next = nullptr;  ///< in a ring with the list's head; null while not waiting
    };

    ~RefreshScheduler() override;

    /// That of the application, which must be there.
    static RefreshScheduler& Instance();

    /// Refreshes \a client now or soon. Asking again meanwhile changes nothing.
    void Request(Client& client);
    /// Takes back what \a client asked for.
    static void Cancel(Client& client) { client.Unlink(); }
    /// Whether what is asked for now has to wait.
    bool IsPausing() const { return m_pause.isActive(); }
    /// Refreshes all that wait now.
    void Flush();

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    /// The head of a list: never refreshed itself.
    class Head : public Client {
      public:
        Head();
        ~Head() override;
        bool IsEmpty() const;
        void Append(Client& client);
        Client* First() const;
        void TakeAll(Head& other);
        void Refresh() override {}
    };

    explicit RefreshScheduler(QObject* parent);

    void Pause();

    static RefreshScheduler* s_instance;

    Head m_waiting;
    QBasicTimer m_pause;  ///< runs while the last refresh is less than Interval ago
};
