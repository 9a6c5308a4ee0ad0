// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/nats/natspair.h>
#include <tests/platform/vtclient/conformance.h>

namespace conformance {

// Who comes over NATS is nobody of this machine: that would be a right.
INSTANTIATE_TEST_SUITE_P(OverNats, Conformance,
                         testing::Values(Transport{
                             "Nats", &ConnectOverNats, nullptr, {true, false, ""}, {false, false, ""}}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace conformance
