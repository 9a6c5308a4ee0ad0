// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsexport.h>
#include <platform/nats/natsoptions.h>

#include <memory>

namespace nats {

/// Makes a connection, not open yet. \return null with the reason in \a problem, in one line: a build without
/// NATS, options that contradict each other, a file that cannot be read.
MCS_NATS_EXPORT std::shared_ptr<INatsBus> MakeBus(const NatsOptions& options, QString* problem);

/// Whether this build knows NATS.
MCS_NATS_EXPORT bool IsBuiltIn();

}  // namespace nats
