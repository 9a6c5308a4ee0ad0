// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsbusmaker.h>

std::shared_ptr<nats::INatsBus> nats::MakeBus(const NatsOptions& /*options*/, QString* problem) {
    *problem = QStringLiteral("this build knows no NATS");
    return nullptr;
}

bool nats::IsBuiltIn() {
    return false;
}
