// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/natsexport.h>
#include <platform/nats/natsoptions.h>

struct VtClientOptions;

namespace nats {

/// Lets VtClientCenter make clients of "nats://HOST[:PORT][,HOST...]/STATION", and of "natss://..." with TLS.
/// Credentials of NATS and the
/// files of TLS come from the environment (NatsOptions::TakeEnvironment); files of TLS that a client's
/// options name go before. Calling it again changes nothing. Main thread.
MCS_NATS_EXPORT void RegisterScheme();

/// How a client with these options connects to NATS; its servers are to be added.
MCS_NATS_EXPORT NatsOptions OptionsOf(const VtClientOptions& client, bool isTls);

}  // namespace nats
