// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsexport.h>

#include <QtCore/QString>

#include <functional>
#include <memory>

class VtServer;

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

    /// Who offers it, for people.
    struct Description {
        QString name;
        QString version;
        std::function<QString()> state;  ///< asked how the device is; none: nothing is said of that
    };

    /// \a server outlives it, and has to listen by the time of EState::Offering. \a onState is told of each
    /// state, from the event loop.
    NatsStation(VtServer& server, std::shared_ptr<INatsBus> bus, const QString& station,
                const Description& description, Handler onState);
    /// Ends its sessions' way to the server: they find out. So the server had better be closed before.
    ~NatsStation();
    NatsStation(const NatsStation&) = delete;
    NatsStation& operator=(const NatsStation&) = delete;

    void Start();

  private:
    class Works;
    std::unique_ptr<Works> m_works;
};

}  // namespace nats
