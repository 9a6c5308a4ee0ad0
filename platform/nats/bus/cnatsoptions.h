// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/bus/cnats.h>
#include <platform/nats/natsoptions.h>

#include <QtCore/QString>

namespace nats {

/// \a options as the client library takes them, for a connection to \a server that uses no thread of the
/// library's: it neither connects again nor pings by itself. Reads the files. \return null with the reason in
/// \a problem.
CnatsPointer<natsOptions> MakeCnatsOptions(const NatsOptions& options, const HostPort& server,
                                           QString* problem);

}  // namespace nats
