// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsexport.h>

namespace nats {

/// Lets VtClientCenter make clients of "nats://HOST[:PORT][,HOST...]/STATION", and of "natss://..." with TLS.
/// Credentials of NATS and the
/// files of TLS come from the environment (NatsOptions::TakeEnvironment); files of TLS that a client's
/// options name go before. Calling it again changes nothing. Main thread.
MCS_NATS_EXPORT void RegisterScheme();

}  // namespace nats
