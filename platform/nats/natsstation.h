// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsexport.h>
#include <platform/vtclient/vtserver.h>

#include <QtCore/QString>

#include <functional>
#include <memory>

namespace nats {

/// Offers a server at NATS as a station, beside wherever it listens. Where there is no connection, or the
/// name is taken by another, it goes on trying. Main thread.
class MCS_NATS_EXPORT NatsStation {
  public:
    enum class EState {
        Connecting,  ///< to NATS; the reason why that fails is told
        Claiming,    ///< asks whether somebody else is there
        Taken,       ///< somebody else is: the reason says who
        Offering
    };
    using Handler = std::function<void(EState state, const QString& reason)>;

    /// How a device is.
    struct State {
        QString text;  ///< for people, in English
        QString code;  ///< from which clients tell the same in other languages; may be empty
    };

    /// Who offers it, for people.
    struct Description {
        QString name;
        QString version;
        std::function<State()> state;  ///< asked how the device is; none: nothing is said of that
    };

    /// \a server outlives it, and has to listen by the time of EState::Offering. \a onState is told of each
    /// state, from the event loop.
    NatsStation(VtServer& server, std::shared_ptr<INatsBus> bus, const QString& station,
                const Description& description, Handler onState);
    /// Ends its sessions' way to the server: they find out. So the server had better be closed before.
    ~NatsStation();
    NatsStation(const NatsStation&) = delete;
    NatsStation& operator=(const NatsStation&) = delete;

    void Start();  ///< Offers the server from now on, until this is destroyed; once.

    /// What it has to do with NATS, for those who watch over it.
    struct Figures {
        bool isConnected = false;
        QString server;       ///< the address of NATS, while connected
        QString problem;      ///< why it is not connected, in one line
        bool isKept = false;  ///< JetStream keeps what is published
        int sessions = 0;
        quint64 messages = 0;  ///< published on shared roads, since the start, as are the next two
        quint64 bytes = 0;
        quint64 lost = 0;   ///< messages that could not be published
        qint64 unsent = 0;  ///< bytes, at this moment
        VtRoadFigures roads;
        quint64 lostSessions = 0;  ///< that ended with the way to their client, since the start
    };
    Figures GetFigures() const;  ///< At this moment.

  private:
    class Works;
    std::unique_ptr<Works> m_works;
};

}  // namespace nats
