// SPDX-License-Identifier: Apache-2.0
// From the contact at a module, over real Modbus/TCP, to the answer of Blanking. The modules run on the
// test's own event loop, so that they cannot answer while it waits.
#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/modbus/modbustcpinterfacecreator.h>
#include <platform/values/tree.h>

#include <apps/dimodule/module.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QTreeWidget>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

namespace {

class ARealModule : public testing::Test {
  protected:
    ARealModule() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(Text("test.ini")));
        SetResponseTimeout(LongMs);
        Blanking::Instance();
        QString error;
        EXPECT_TRUE(m_module.Listen(QHostAddress(m_ip), 0, &error)) << qPrintable(error);
        qputenv("MCS_MODBUS_PORT", QByteArray::number(m_module.Port()));
    }
    ~ARealModule() override {
        m_data.reset();
        qunsetenv("MCS_MODBUS_PORT");
        Blanking::Instance()->FreeInstance();
        CfgCenter::Instance().SetStorePath(QString());
    }

    static constexpr int LongMs = 60000;  // nothing ends by waiting
    static constexpr int ShortMs = 500;
    static constexpr double First = 118100000.0;
    static constexpr double Second = 121500000.0;

    static QString Text(const char* text) { return treeaccess::Text(text); }
    static void SetResponseTimeout(int milliseconds) {
        const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
        const std::unique_ptr<ICfg> section(root->ProvideSection(Text("Modbus")));
        section->WriteInt(Text("ResponseTimeout"), milliseconds);
        ModbusTcpInterfaceCreator::Configure();
    }
    void SetFault(const char* text) {
        dimodule::Fault fault;
        EXPECT_EQ(dimodule::Fault::Parse(Text(text).split(QLatin1Char(' ')), &fault), QString());
        m_module.SetFault(fault);
    }
    /// The first input is keyed, the second is not.
    void Connect(quint32 states = 0xFFE) {
        m_module.SetStates(states);
        m_data = std::make_unique<DataModule>(&m_widget, 0, Text("ADAM-6051"), m_ip, PollInterval(5));
        m_data->SetFrequency(0, First);
        m_data->SetFrequency(1, Second);
        m_data->Connect();
    }
    bool WaitForStatus(const char* status) {
        return WaitUntil([&] { return m_data->text(DataModule::StatusColumn) == Text(status); });
    }
    /// What an operator does about a module in error.
    void Reconnect() {
        m_data->Disconnect();
        m_data->Connect();
    }
    bool IsBlanked(double frequency) {
        return Blanking::Instance()->IsFrequencyBlanked(frequency, &m_client);
    }
    /// Questions that are never answered, until one hangs.
    void LetARequestHang() {
        SetFault("silence");
        const qint64 questions = m_module.Questions();
        EXPECT_TRUE(WaitUntil([&] { return m_module.Questions() > questions; }));
    }

    const QString m_ip = QStringLiteral("127.0.0.1");
    QTemporaryDir m_directory;
    values::Tree m_tree;
    QTreeWidget m_widget;
    BlankingClient m_client;
    dimodule::Module m_module;
    std::unique_ptr<DataModule> m_data;
};

TEST_F(ARealModule, BlanksWhileItsTransmitterIsKeyed) {
    Connect();
    ASSERT_TRUE(WaitForStatus("Connected"));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_FALSE(IsBlanked(Second));
    m_module.SetStates(0xFFD);
    EXPECT_TRUE(WaitUntil([this] { return IsBlanked(Second); }));
    EXPECT_FALSE(IsBlanked(First));
    m_module.SetStates(0xFFF);
    EXPECT_TRUE(WaitUntil([this] { return !IsBlanked(Second); }));
}

TEST_F(ARealModule, BlanksAllIfAllAreKeyedAtFirst) {
    Connect(0);
    ASSERT_TRUE(WaitForStatus("Connected"));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_TRUE(IsBlanked(Second));
}

TEST_F(ARealModule, IsAskedForItsOwnNumberOfInputs) {
    Connect();
    m_data->Configure(Text("ADAM-6060"), m_ip, PollInterval(5));
    ASSERT_TRUE(WaitForStatus("Connected"));
    EXPECT_EQ(m_data->GetNumberOfInputs(), 6);
    EXPECT_EQ(treeaccess::ContentAt(Text("/ORVServer/GTS/ADAM-6060-0/InputDiscretes")), Text("62"));
}

TEST_F(ARealModule, ThatIsNotThereIsAnError) {
    QString error;
    dimodule::Module other;
    ASSERT_TRUE(other.Listen(QHostAddress(m_ip), 0, &error));
    const quint16 port = other.Port();
    SetFault("none");
    dimodule::Fault refused;
    ASSERT_EQ(dimodule::Fault::Parse({Text("refused")}, &refused), QString());
    other.SetFault(refused);
    qputenv("MCS_MODBUS_PORT", QByteArray::number(port));
    m_data = std::make_unique<DataModule>(&m_widget, 0, Text("ADAM-6051"), m_ip, PollInterval(5));
    QSignalSpy spy(m_data.get(), &DataModule::SignalError);
    m_data->Connect();
    ASSERT_TRUE(WaitForStatus("Error"));
    EXPECT_EQ(spy[0][3].toString(), ModbusErrorText(spy[0][2].toUInt()));
    EXPECT_NE(spy[0][2].toUInt(), 0U);
}

TEST_F(ARealModule, IsReportedWithEveryPollWhileItFails) {
    SetFault("exception 6");
    Connect();
    QSignalSpy spy(m_data.get(), &DataModule::SignalError);
    ASSERT_TRUE(WaitUntil([&] { return spy.count() >= 50; }));
    EXPECT_LT(m_module.Questions(), 20);  // the module itself is asked less and less often
    EXPECT_EQ(spy[49][3].toString(), ModbusErrorText(spy[0][2].toUInt()));
}

TEST_F(ARealModule, IsFoundByAnAddressWithBlanksAround) {
    m_data =
        std::make_unique<DataModule>(&m_widget, 0, Text("ADAM-6051"), Text(" 127.0.0.1\t"), PollInterval(5));
    m_data->Connect();
    EXPECT_TRUE(WaitForStatus("Connected"));
}

struct AddressRow {
    const char* name;
    const char* address;
};

void PrintTo(const AddressRow& row, std::ostream* stream) {
    *stream << row.name;
}

class AWrongAddress : public ARealModule, public testing::WithParamInterface<AddressRow> {};

TEST_P(AWrongAddress, IsAnErrorAtOnce) {
    m_data = std::make_unique<DataModule>(&m_widget, 0, Text("ADAM-6051"), Text(GetParam().address),
                                          PollInterval(5));
    QSignalSpy spy(m_data.get(), &DataModule::SignalError);
    m_data->Connect();
    ASSERT_TRUE(WaitForStatus("Error"));
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][3].toString(), ModbusErrorText(spy[0][2].toUInt()));
    m_data->Configure(Text("ADAM-6051"), m_ip, PollInterval(5));
    EXPECT_TRUE(WaitForStatus("Connected"));
}

INSTANTIATE_TEST_SUITE_P(
    Table, AWrongAddress,
    testing::Values(AddressRow{"Empty", ""}, AddressRow{"Blank", " "}, AddressRow{"AName", "localhost"},
                    AddressRow{"IPv6", "::1"}, AddressRow{"TooShort", "127.0.1"},
                    AddressRow{"TooLong", "1.2.3.4.5"}, AddressRow{"OutOfRange", "300.0.0.1"},
                    AddressRow{"WithAPort", "127.0.0.1:502"}, AddressRow{"BlanksWithin", "127. 0.0.1"}),
    testing::PrintToStringParamName());

struct FaultRow {
    const char* name;
    const char* fault;
};

void PrintTo(const FaultRow& row, std::ostream* stream) {
    *stream << row.name;
}

class AFault : public ARealModule, public testing::WithParamInterface<FaultRow> {};

TEST_P(AFault, IsAnErrorAndNeverAReadingAndIsOverOnceTheOperatorReconnects) {
    SetResponseTimeout(ShortMs);
    Connect();
    ASSERT_TRUE(WaitForStatus("Connected"));
    int falselyBlanked = 0;
    RecordingObserver observer(
        [&](Observable*, TChangeCode) { falselyBlanked += IsBlanked(Second) ? 1 : 0; });
    values::Node& node = *m_tree.FindNode(Text("/ORVServer/GTS/ADAM-6051-0"));
    for (values::TreeItem* const item : node.GetTreeItems())
        item->GetObservable()->AddObserver(&observer);
    SetFault(GetParam().fault);
    ASSERT_TRUE(WaitForStatus("Error"));
    EXPECT_FALSE(IsBlanked(First));
    SetFault("none");
    SetResponseTimeout(LongMs);
    Reconnect();
    ASSERT_TRUE(WaitForStatus("Connected"));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_EQ(falselyBlanked, 0);
    for (values::TreeItem* const item : node.GetTreeItems())
        item->GetObservable()->DeleteObserver(&observer);
}

INSTANTIATE_TEST_SUITE_P(Table, AFault,
                         testing::Values(FaultRow{"ADelay", "delay 10000"}, FaultRow{"AReset", "reset"},
                                         FaultRow{"ARefusal", "refused"}, FaultRow{"Silence", "silence"},
                                         FaultRow{"HalfAnAnswer", "half"},
                                         FaultRow{"AnotherTransaction", "transaction"},
                                         FaultRow{"AnotherFunction", "function"},
                                         FaultRow{"AnotherLength", "length"}, FaultRow{"Garbage", "garbage"},
                                         FaultRow{"AnException", "exception 6"},
                                         FaultRow{"ADuplicate", "duplicate"}),
                         testing::PrintToStringParamName());

TEST_F(ARealModule, ThatDropsIdleConnectionsStaysConnected) {
    Connect();
    ASSERT_TRUE(WaitForStatus("Connected"));
    QSignalSpy spy(m_data.get(), &DataModule::SignalError);
    SetFault("idle 1");
    const qint64 questions = m_module.Questions();
    ASSERT_TRUE(WaitUntil([&] { return m_module.Questions() > questions + 20; }));
    EXPECT_EQ(spy.count(), 0);
    EXPECT_TRUE(m_data->IsConnected());
    EXPECT_TRUE(IsBlanked(First));
}

/// Far less than the response time-out: nobody waited for it.
class AHangingRequest : public ARealModule {
  protected:
    AHangingRequest() {
        Connect();
        EXPECT_TRUE(WaitForStatus("Connected"));
        LetARequestHang();
        m_clock.start();
    }
    ~AHangingRequest() override { EXPECT_LT(m_clock.elapsed(), LongMs / 4); }

    QElapsedTimer m_clock;
};

TEST_F(AHangingRequest, EndsWhenItsModuleIsDisconnected) {
    m_data->Disconnect();
    EXPECT_EQ(m_data->text(DataModule::StatusColumn), Text("Disconnected"));
    EXPECT_FALSE(IsBlanked(First));
}

TEST_F(AHangingRequest, EndsWhenItsModuleIsEdited) {
    SetFault("none");
    m_data->Configure(Text("ADAM-6051"), m_ip, PollInterval(6));
    EXPECT_TRUE(WaitForStatus("Connected"));
    EXPECT_TRUE(IsBlanked(First));
}

TEST_F(AHangingRequest, EndsWhenItsModuleIsDeleted) {
    m_data.reset();
    EXPECT_FALSE(IsBlanked(First));
    EXPECT_EQ(m_tree.FindNode(Text("/ORVServer/GTS"))->CountChildren(), 0);
}

TEST_F(ARealModule, IsDisconnectedAndConnectedAnyTime) {
    Connect();
    for (int i = 0; i < 100; ++i) {
        RunTurns(i % 5);
        Reconnect();
    }
    EXPECT_TRUE(WaitForStatus("Connected"));
    EXPECT_TRUE(IsBlanked(First));
    EXPECT_FALSE(IsBlanked(Second));
}

}  // namespace
