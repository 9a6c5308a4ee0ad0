// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/nats/inatsbus.h>
#include <platform/nats/natsoptions.h>
#include <tests/apps/nats/faultstage.h>

#include <memory>
#include <string_view>
#include <vector>

/// JetStream with a disk.
inline constexpr const char* WithDisk = "jetstream { max_mem: 64MB, max_file: 1GB }\n";

/// How often something is killed: MCS_NATS_KILLS, a few times unless that says so.
int Kills();
/// Whether all of it is wanted, however long that takes, since MCS_NATS_KILLS is set.
bool IsLong();

/// Prints one row of the table of faults: what clients have noticed.
void Report(const char* what, const FaultStage& stage, std::vector<FaultStage::Time> pauses);

/// A connection to NATS of nobody's.
std::shared_ptr<nats::INatsBus> OpenBus(const nats::NatsOptions& options);
