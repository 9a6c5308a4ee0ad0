// SPDX-License-Identifier: Apache-2.0
// Of which hosts and users certificates are.
#include <platform/vtclient/channel/certificatenames.h>

#include <tests/platform/vtclient/certificates.h>

#include <gtest/gtest.h>

#include <QtNetwork/QSslCertificate>

namespace {

using namespace vt::certificatenames;

QSslCertificate Load(const char* name) {
    EXPECT_EQ(Certificates::Instance().Error(), QString());
    const QString file = Certificates::Instance().File((std::string(name) + ".pem").c_str());
    return QSslCertificate::fromPath(file).value(0);
}

struct Host {
    const char* name;
    const char* certificate;
    const char* host;
    bool isNamed;
};

class HostNames : public testing::TestWithParam<Host> {};

TEST_P(HostNames, AreTheAlternativeNames) {
    EXPECT_EQ(NamesHost(Load(GetParam().certificate), QString::fromLatin1(GetParam().host)),
              GetParam().isNamed);
}

const Host Hosts[] = {
    {"AName", "server.names", "tower.example.org", true},
    {"ANameInOtherCase", "server.names", "Tower.Example.ORG", true},
    {"ANameWithTheRootsDot", "server.names", "tower.example.org.", true},
    {"ANameWithMoreInFront", "server.names", "x.tower.example.org", false},
    {"ALabelForTheStar", "server.names", "one.vans.example.org", true},
    {"TwoLabelsForTheStar", "server.names", "a.one.vans.example.org", false},
    {"NoLabelForTheStar", "server.names", "vans.example.org", false},
    {"TheCommonName", "server.names", "server.names", false},
    {"AnAddress", "server.names", "::1", true},
    {"AnAddressWrittenOtherwise", "server.names", "0:0:0:0:0:0:0:1", true},
    {"AnotherAddress", "server.names", "::2", false},
    {"AnAddressAmongAddresses", "server", "127.0.0.1", true},
    {"ANameForAnAddress", "server.localhost", "localhost", false},
    {"NoHost", "server.names", "", false},
};

INSTANTIATE_TEST_SUITE_P(, HostNames, testing::ValuesIn(Hosts),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(UserNames, AreTheOneCommonName) {
    EXPECT_EQ(UserOf(Load("client")), QStringLiteral("client"));
    EXPECT_EQ(UserOf(Load("client.twonames")), QString());
    EXPECT_EQ(UserOf(Load("client.nameless")), QString());
}

}  // namespace
