// SPDX-License-Identifier: Apache-2.0
#include <platform/app/errorhandler.h>
#include <platform/config/cfgcenter.h>

#include <platform/modbus/modbussystem.h>
#include <tests/platform/modbus/interfacefixture.h>
#include <tests/support/tracerecorder.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <ostream>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Action = FaultyPeer::Action;

/// Interfaces as an application gets them, with a configuration and an environment of its own.
class ModbusTcpInterfaceCreatorTest : public testing::Test {
  protected:
    ModbusTcpInterfaceCreatorTest() {
        CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("app.ini")));
    }
    ~ModbusTcpInterfaceCreatorTest() override {
        qunsetenv("MCS_MODBUS_PORT");
        Configure("");
        CfgCenter::Instance().SetStorePath(QString());
    }

    void Configure(const QByteArray& section) {
        const QString path = directory.filePath(QStringLiteral("app.ini"));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Modbus]\n" + section);
        file.close();
        CfgCenter::Instance().SetStorePath(path);
        ModbusTcpInterfaceCreator::Configure();
    }

    std::unique_ptr<IModbusTcpInterface> Create(int port) {
        const std::wstring address = QStringLiteral("TCP:127.0.0.1:%1").arg(port).toStdWString();
        return std::unique_ptr<IModbusTcpInterface>(
            ModbusTcpInterfaceCreator::CreateInterface(address.c_str(), &callback));
    }

    /// The question that an interface asks as it is configured now.
    QByteArray Question() {
        const auto interface = Create(peer.Port());
        interface->ReadInputDiscretes(12);
        return peer.LastQuestion().mid(6).toHex();
    }

    const QTemporaryDir directory;
    FaultyPeer peer{
        [](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 0xFFF)}; }};
    RecordingCallback callback;
};

TEST_F(ModbusTcpInterfaceCreatorTest, AsksForDiscreteInputsFromZeroOfUnitOneUnlessConfigured) {
    ModbusTcpInterfaceCreator::Configure();
    EXPECT_EQ(Question(), "01020000000c");
}

TEST_F(ModbusTcpInterfaceCreatorTest, AsksAsConfigured) {
    Configure("FunctionCode=1\nStartAddress=1024\nUnitId=17\n");
    EXPECT_EQ(Question(), "11010400000c");
}

TEST_F(ModbusTcpInterfaceCreatorTest, ConfiguringChangesOnlyInterfacesMadeLater) {
    const auto interface = Create(peer.Port());
    Configure("UnitId=17\n");
    interface->ReadInputDiscretes(12);
    EXPECT_EQ(peer.LastQuestion().mid(6).toHex(), "01020000000c");
}

TEST_F(ModbusTcpInterfaceCreatorTest, TheConfiguredTimeoutIsKeptTo) {
    Configure("ResponseTimeout=10\n");
    FaultyPeer silent([](const QByteArray&, int) -> Action { return {}; });
    const auto interface = Create(silent.Port());
    QElapsedTimer elapsed;
    elapsed.start();
    interface->ReadInputDiscretes(12);
    EXPECT_GE(elapsed.elapsed(), 9);
    EXPECT_LT(elapsed.elapsed(), 400);  // less than the default
    EXPECT_EQ(callback.lastError, modbussystem::CodeOf(modbussystem::EError::TimedOut));
}

struct BadContent {
    const char* name;
    const char* line;
    const char* message;
};

void PrintTo(const BadContent& content, std::ostream* stream) {
    *stream << content.name;
}

class BadModbusConfiguration : public ModbusTcpInterfaceCreatorTest,
                               public testing::WithParamInterface<BadContent> {};

TEST_P(BadModbusConfiguration, KeepsTheDefaultWithATrace) {
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    Configure(GetParam().line);
    EXPECT_THAT(traces.Messages(), ElementsAre(QString::fromUtf8(GetParam().message)));
    EXPECT_EQ(Question(), "01020000000c");
}

const BadContent BadContents[] = {
    {"FunctionZero", "FunctionCode=0\n",
     "Configuration: Modbus/FunctionCode is \"0\", which is no number from 1 to 2; 2 is used"},
    {"FunctionOfRegisters", "FunctionCode=3\n",
     "Configuration: Modbus/FunctionCode is \"3\", which is no number from 1 to 2; 2 is used"},
    {"FunctionInWords", "FunctionCode=coils\n",
     "Configuration: Modbus/FunctionCode is \"coils\", which is no number from 1 to 2; 2 is used"},
    {"NegativeAddress", "StartAddress=-1\n",
     "Configuration: Modbus/StartAddress is \"-1\", which is no number from 0 to 65535; 0 is used"},
    {"AddressTooLarge", "StartAddress=65536\n",
     "Configuration: Modbus/StartAddress is \"65536\", which is no number from 0 to 65535; 0 is used"},
    {"AddressBeyondAllNumbers", "StartAddress=99999999999999999999\n",
     "Configuration: Modbus/StartAddress is \"99999999999999999999\", which is no number from 0 to 65535; 0 "
     "is used"},
    {"UnitTooLarge", "UnitId=256\n",
     "Configuration: Modbus/UnitId is \"256\", which is no number from 0 to 255; 1 is used"},
    {"NoTimeToAnswer", "ResponseTimeout=0\n",
     "Configuration: Modbus/ResponseTimeout is \"0\", which is no number from 10 to 60000; 500 is used"},
    {"FractionOfATimeout", "ResponseTimeout=0.5\n",
     "Configuration: Modbus/ResponseTimeout is \"0.5\", which is no number from 10 to 60000; 500 is used"},
};

INSTANTIATE_TEST_SUITE_P(ModbusTcpInterfaceCreatorTest, BadModbusConfiguration,
                         testing::ValuesIn(BadContents), [](const auto& row) { return row.param.name; });

TEST_F(ModbusTcpInterfaceCreatorTest, AnAddressThatCannotBeRightGivesNullAndAnErrorAndATrace) {
    const TraceRecorder traces(ErrorHandler::TraceWarnings);
    EXPECT_EQ(ModbusTcpInterfaceCreator::CreateInterface(L"TCP:tower:502", &callback), nullptr);
    EXPECT_THAT(callback.events,
                ElementsAre(RecordingCallback::Error(modbussystem::CodeOf(modbussystem::EError::NoAddress))));
    EXPECT_THAT(traces.Messages(),
                ElementsAre(QStringLiteral(
                    "'TCP:tower:502' is no address of a Modbus module: names are not resolved: give "
                    "the IPv4 address of the module")));
}

TEST_F(ModbusTcpInterfaceCreatorTest, MakingAnInterfaceConnectsNothing) {
    const auto interface = Create(peer.Port());
    ASSERT_NE(interface, nullptr);
    EXPECT_THAT(callback.events, IsEmpty());
    EXPECT_EQ(peer.Connections(), 0);
}

TEST_F(ModbusTcpInterfaceCreatorTest, TheEnvironmentReplacesThePortOfModules) {
    qputenv("MCS_MODBUS_PORT", QByteArray::number(peer.Port()));
    Create(502)->ReadInputDiscretes(12);
    EXPECT_EQ(callback.events.back(), RecordingCallback::Bits(0xFFF));
}

TEST_F(ModbusTcpInterfaceCreatorTest, TheEnvironmentLeavesOtherPortsAlone) {
    qputenv("MCS_MODBUS_PORT", "1");
    Create(peer.Port())->ReadInputDiscretes(12);
    EXPECT_EQ(callback.events.back(), RecordingCallback::Bits(0xFFF));
}

TEST_F(ModbusTcpInterfaceCreatorTest, AnEnvironmentThatIsNoPortIsTraced) {
    for (const char* const content : {"", "0", "65536", "-1", "http"}) {
        const TraceRecorder traces(ErrorHandler::TraceWarnings);
        qputenv("MCS_MODBUS_PORT", content);
        EXPECT_NE(Create(502), nullptr);
        // Where an empty variable is none, there is nothing to trace.
        EXPECT_THAT(traces.Messages(), SizeIs(qEnvironmentVariableIsSet("MCS_MODBUS_PORT") ? 1 : 0))
            << content;
    }
}

}  // namespace
