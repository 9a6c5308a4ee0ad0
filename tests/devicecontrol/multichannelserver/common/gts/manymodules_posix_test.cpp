// SPDX-License-Identifier: Apache-2.0
// More modules than the process can have descriptors for.
#include <tests/devicecontrol/multichannelserver/common/gts/datamoduletest.h>

#include <platform/modbus/modbussystem.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <sys/resource.h>
#include <unistd.h>

#include <QtTest/QSignalSpy>

#include <cerrno>

namespace {

class MoreModulesThanDescriptors : public DataModuleTest {
  protected:
    MoreModulesThanDescriptors() {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const int lowestFree = dup(STDOUT_FILENO);
        close(lowestFree);
        rlimit limit = m_before;
        limit.rlim_cur = 50 + 2 * static_cast<rlim_t>(lowestFree);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~MoreModulesThanDescriptors() override {
        m_polled.clear();
        setrlimit(RLIMIT_NOFILE, &m_before);
    }
    void SetUp() override {
        m_most = modbussystem::MostConnections();
        for (int i = 0; i < m_most; ++i) {
            m_polled.push_back(Make(i));
            m_polled.back()->Connect();
        }
        m_tooMany = Make(m_most);
    }

    int m_most = 0;
    std::vector<std::unique_ptr<DataModule>> m_polled;
    std::unique_ptr<DataModule> m_tooMany;

  private:
    rlimit m_before{};
};

TEST_F(MoreModulesThanDescriptors, AreInErrorAndTheOthersArePolled) {
    QSignalSpy spy(m_tooMany.get(), &DataModule::SignalError);
    m_tooMany->Connect();
    EXPECT_TRUE(WaitUntil([this] { return StatusOf(*m_tooMany) == Text("Error"); }));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][2].toInt(), EMFILE);
    EXPECT_EQ(spy[0][3].toString(), Text("Too many open files"));
    for (const auto& module : m_polled)
        EXPECT_TRUE(WaitUntil([&] { return module->IsConnected(); }));
}

TEST_F(MoreModulesThanDescriptors, HaveTheirTurnOnceAnotherIsDisconnected) {
    m_tooMany->Connect();
    EXPECT_TRUE(WaitUntil([this] { return StatusOf(*m_tooMany) == Text("Error"); }));
    m_polled.front()->Disconnect();
    m_tooMany->Connect();
    EXPECT_TRUE(WaitUntil([this] { return m_tooMany->IsConnected(); }));
}

TEST_F(MoreModulesThanDescriptors, HaveTheirTurnOnceAnotherIsDeleted) {
    m_polled.pop_back();
    m_tooMany->Connect();
    EXPECT_TRUE(WaitUntil([this] { return m_tooMany->IsConnected(); }));
}

}  // namespace
