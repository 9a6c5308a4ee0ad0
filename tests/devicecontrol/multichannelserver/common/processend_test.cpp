// SPDX-License-Identifier: Apache-2.0
// What becomes of clients and servers with whose connections a process ends.
#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/support/doubles/testaccess.h>
#include <tests/support/programrunner.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

namespace {

using treeaccess::Text;

struct Row {
    const char* name;
    const char* whose;
    const char* end;
};

std::string NameOf(const testing::TestParamInfo<Row>& row) {
    return row.param.name;
}

class ClientOfAnEndingProcess : public testing::TestWithParam<Row>, protected ProgramRunner {
  protected:
    ClientOfAnEndingProcess() {
        environment.insert(Text("MCS_TRACE"), Text("2"));
        treeaccess::PutValue<values::Value<int>>(Text("/MultiChannelServer/Status"), "Level");
        treeaccess::PutValue<values::Value<int>>(Text("/MultiChannelServer/StaticMpxORVs/One"), "Level");
    }
    void Run(const char* address, const QString& authority) {
        m_options.port = 0;
        QString error;
        ASSERT_TRUE(m_server.Listen(m_options, &error)) << error.toStdString();
        StartProgram(Text(ENDINGPROCESS), {Text("client"), Text(GetParam().whose), Text(GetParam().end),
                                           Text(address), QString::number(m_server.GetPort()), authority});
        EXPECT_EQ(WaitForEnd(), 0);
        EXPECT_EQ(errors.toStdString(), "");
        EXPECT_EQ(m_access.started.size(), 1U);
        EXPECT_TRUE(::WaitUntil([this] { return m_access.ended.size() == 1; }));
    }

    values::Tree m_tree;
    TestAccess m_access;
    VtServerOptions m_options;
    VtServer m_server{m_access};
};

TEST_P(ClientOfAnEndingProcess, LetsItEnd) {
    Run("127.0.0.1", QString());
}

TEST_P(ClientOfAnEndingProcess, LetsItEndWithAnEncryptedConnection) {
    const Certificates& certificates = Certificates::Instance();
    ASSERT_EQ(certificates.Error(), QString());
    m_options.certificateFile = certificates.File("server.pem");
    m_options.privateKeyFile = certificates.File("server.key");
    Run("mcss://127.0.0.1", certificates.File("authority.pem"));
}

INSTANTIATE_TEST_SUITE_P(
    , ClientOfAnEndingProcess,
    testing::Values(Row{"Static", "static", "return"}, Row{"StaticAtExit", "static", "exit"},
                    Row{"LateStatic", "late", "return"}, Row{"LateStaticAtExit", "late", "exit"},
                    Row{"Leaked", "leaked", "return"}, Row{"LeakedAtExit", "leaked", "exit"},
                    Row{"OfTheStack", "stack", "return"}, Row{"OfTheStackAtExit", "stack", "exit"},
                    Row{"OfThePlatform", "platform", "return"},
                    Row{"OfThePlatformAtExit", "platform", "exit"}),
    NameOf);

class ServerOfAnEndingProcess : public testing::TestWithParam<Row>, protected ProgramRunner {};

TEST_P(ServerOfAnEndingProcess, LetsItEnd) {
    values::Tree tree;
    StartProgram(Text(ENDINGPROCESS), {Text("server"), Text(GetParam().whose), Text(GetParam().end)});
    ASSERT_TRUE(WaitUntil([this] { return output.contains('\n'); })) << errors.constData();
    IVtClient* const client = VtClientCenter::Instance().CreateVtClient("127.0.0.1", output.toInt());
    client->AddTic(Text("/L,/MultiChannelServer"), "");
    tree.ProvideNode(Text("/L/End"));
    EXPECT_EQ(WaitForEnd(), 0);
    EXPECT_EQ(errors.toStdString(), "");
    VtClientCenter::Instance().DestroyVtClient(client);
}

INSTANTIATE_TEST_SUITE_P(, ServerOfAnEndingProcess,
                         testing::Values(Row{"Static", "static", "return"},
                                         Row{"StaticAtExit", "static", "exit"},
                                         Row{"Leaked", "leaked", "return"},
                                         Row{"LeakedAtExit", "leaked", "exit"}),
                         NameOf);

}  // namespace
