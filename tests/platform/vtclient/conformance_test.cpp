// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/certificates.h>
#include <tests/platform/vtclient/conformance.h>

namespace conformance {

namespace {

QString CertificatesProblem() {
    return Certificates::Instance().Error();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(
    Transports, Conformance,
    testing::Values(
        Transport{"Memory", &ConnectInMemory}, Transport{"Tcp", &ConnectOverTcp},
        Transport{"Tls", &ConnectOverTls, &CertificatesProblem, {true, true, "server"}, {true, true, ""}}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace conformance
