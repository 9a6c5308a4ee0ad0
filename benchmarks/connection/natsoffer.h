// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>
#include <memory>

class VtServer;

namespace nats {
class NatsStation;
}

namespace bench {

inline QString BenchStation() {
    return QStringLiteral("bench");
}

/// Offers \a server, which listens, as a station of NATS at \a port of this machine until what is returned is
/// destroyed; \a onOffering is called once it is. The process fails where that is not possible.
std::shared_ptr<nats::NatsStation> OfferAtNats(VtServer& server, int port, std::function<void()> onOffering);

/// Where clients find that server, who from now on know how to.
QByteArray StationAtNats(int port);

}  // namespace bench
