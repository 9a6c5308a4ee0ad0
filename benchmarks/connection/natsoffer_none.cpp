// SPDX-License-Identifier: Apache-2.0
#include "natsoffer.h"

#include "role.h"

namespace bench {

std::shared_ptr<nats::NatsStation> OfferAtNats(VtServer& /*server*/, int /*port*/,
                                               std::function<void()> /*onOffering*/) {
    Role::Fail(QStringLiteral("this build knows no NATS"));
}

QByteArray StationAtNats(int /*port*/) {
    Role::Fail(QStringLiteral("this build knows no NATS"));
}

}  // namespace bench
