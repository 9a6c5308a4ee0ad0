// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtNetwork/QTcpSocket>

#include <deque>
#include <functional>
#include <limits>

enum class EDirection { ToServer = 0, ToClient = 1 };

/// What happens to the bytes of one direction.
struct Faults {
    bool isStalled = false;  ///< they stay where they are, and their sender notices in time
    bool isLost = false;     ///< they vanish, and nobody is told that the other end has gone
    int chunk = 0;           ///< so many at a time, each time in a turn of its own; 0: as they come
    int delay = 0;           ///< ms
    int rate = 0;            ///< bytes a second; 0: any
};

/// One connection through a FaultProxy: a socket to either side.
class FaultLink final : public QObject {
  public:
    FaultLink(qintptr client, const Faults (&faults)[2], std::function<void(FaultLink*)> onEnd);
    ~FaultLink() override;

    /// Connects to the server, which may end the link at once.
    void Start(int target);
    void SetFaults(EDirection direction, const Faults& faults);
    /// Cuts once so many bytes of this direction have passed.
    void CutAfter(EDirection direction, qint64 bytes) { Of(direction).left = bytes; }
    void Cut();
    qint64 CountBytes(EDirection direction) const { return m_ways[static_cast<int>(direction)].passed; }

  private:
    struct Way {
        QTcpSocket* from = nullptr;
        QTcpSocket* to = nullptr;
        Faults faults;
        qint64 left = std::numeric_limits<qint64>::max();  ///< until the cut
        qint64 passed = 0;
        bool isPumpDue = false;
        qint64 nextAt = 0;      ///< ms: with a rate nothing passes before
        bool hasEnded = false;  ///< the sender has closed
        struct Parcel {
            qint64 due;
            QByteArray bytes;
        };
        std::deque<Parcel> delayed;
    };

    Way& Of(EDirection direction) { return m_ways[static_cast<int>(direction)]; }
    void Connect(Way& way);
    void PumpLater(Way& way, int milliseconds = 0);
    void Pump(Way& way);
    void PumpSlowly(Way& way);
    void TakeDelayed(Way& way);
    void Pass(Way& way, QByteArray bytes);
    void OnEnd(Way& way);
    void End();

    Way m_ways[2];
    QTcpSocket m_client;
    QTcpSocket m_server;
    QElapsedTimer m_clock;
    std::function<void(FaultLink*)> m_onEnd;
    bool m_isOver = false;
};
