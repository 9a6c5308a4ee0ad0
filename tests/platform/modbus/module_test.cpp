// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>

#include <platform/modbus/modbussystem.h>
#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/platform/modbus/interfacefixture.h>

#include <ostream>

namespace {

using modbussystem::EError;
using testing::AnyOf;
using testing::ElementsAre;

/// Against the simulated module, as a program of its own.
class SimulatedModule : public InterfaceTest {
  protected:
    void Start(const QStringList& arguments = {}) {
        module.Start(arguments);
        Connect(module.Port());
    }

    ModuleProcess module;
};

TEST_F(SimulatedModule, IsReadAsItIsKeyed) {
    Start();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
    module.Say("key 0 11");
    EXPECT_THAT(Read(), ElementsAre(Bits(0x7FE)));
    module.Say("release 0");
    EXPECT_THAT(Read(), ElementsAre(Bits(0x7FF)));
    module.Say("key all");
    EXPECT_THAT(Read(), ElementsAre(Bits(0)));
    EXPECT_THAT(Read(6), ElementsAre(Bits(0)));
}

TEST_F(SimulatedModule, HasSixInputsIfItShall) {
    Start({QStringLiteral("--inputs"), QStringLiteral("6")});
    EXPECT_THAT(Read(6), ElementsAre(Opened(), Bits(0x3F)));
    EXPECT_THAT(Read(12), ElementsAre(Error(modbuserror::OfException(2)), Closed()));
}

TEST_F(SimulatedModule, IsReadByBothFunctionsFromItsStartAndItsUnit) {
    settings.startAddress = 1000;
    settings.unitId = 7;
    for (const int function : {1, 2}) {
        settings.functionCode = function;
        Start({QStringLiteral("--start"), QStringLiteral("1000"), QStringLiteral("--unit"),
               QStringLiteral("7")});
        EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
        module.Terminate();
    }
}

TEST_F(SimulatedModule, ThatDropsIdleConnectionsIsNoAlarm) {
    Start({QStringLiteral("--fault"), QStringLiteral("idle 20")});
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(module.WaitForConnections(0));
        EXPECT_THAT(Read(), ElementsAre(Bits(0xFFF)));
    }
}

TEST_F(SimulatedModule, ThatIsRestartedIsReadAgain) {
    Start();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
    module.Kill();
    EXPECT_EQ(Read().back(), Closed());
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(RefusedConnection()));
    module.Restart();
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
}

struct ModuleFault {
    const char* name;
    const char* command;
    unsigned error;
    std::chrono::milliseconds timeout =
        std::chrono::seconds(20);  ///< short only where the fault is that nothing comes
};

void PrintTo(const ModuleFault& fault, std::ostream* stream) {
    *stream << fault.command;
}

class FaultOfSimulatedModule : public SimulatedModule, public testing::WithParamInterface<ModuleFault> {};

TEST_P(FaultOfSimulatedModule, IsAnErrorAndIsOverAfterwards) {
    settings.responseTimeout = GetParam().timeout;
    Start();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
    module.Say(GetParam().command);
    EXPECT_THAT(Read(), ElementsAre(Error(GetParam().error), Closed()));
    module.Say("fault none");
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
}

constexpr std::chrono::milliseconds Short(150);

const ModuleFault ModuleFaults[] = {
    {"Delay", "fault delay 3000", modbussystem::CodeOf(EError::TimedOut), Short},
    {"Reset", "fault reset", modbussystem::CodeOf(EError::ConnectionReset)},
    {"Silence", "fault silence", modbussystem::CodeOf(EError::TimedOut), Short},
    {"Half", "fault half", modbussystem::CodeOf(EError::TimedOut), Short},
    {"Transaction", "fault transaction", modbuserror::InvalidAnswer},
    {"Function", "fault function", modbuserror::InvalidAnswer},
    {"Exception", "fault exception 6", modbuserror::OfException(6)},
};

INSTANTIATE_TEST_SUITE_P(ModbusTcpInterfaceTest, FaultOfSimulatedModule, testing::ValuesIn(ModuleFaults),
                         [](const auto& row) { return row.param.name; });

TEST_F(SimulatedModule, ThatRefusesConnectionsIsReadOnceItTakesThemAgain) {
    Start();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
    module.Say("fault refused");
    EXPECT_THAT(Read(), ElementsAre(RefusedConnection(), Closed()));
    module.Say("fault none");
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
}

TEST_F(SimulatedModule, WithADelayThatIsShortIsReadAllTheSame) {
    Start({QStringLiteral("--fault"), QStringLiteral("delay 50")});
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
}

TEST_F(SimulatedModule, ThatSendsEachAnswerTwiceIsAnErrorWithTheNextRequest) {
    Start({QStringLiteral("--fault"), QStringLiteral("duplicate")});
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0xFFF)));
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::UnaskedBytes), Closed()));
}

TEST_F(SimulatedModule, ThatSendsWrongLengthsAndGarbageIsNeverBelieved) {
    settings.responseTimeout = Short;
    Start();
    module.Say("states 0xABC");
    for (const char* const fault : {"fault length", "fault garbage"}) {
        module.Say(fault);
        for (int i = 0; i < 12; ++i) {
            LetDelayPass();
            const std::vector<QString> told = Read();
            ASSERT_EQ(told.size(), 1u) << fault;
            EXPECT_THAT(callback.lastError, AnyOf(modbuserror::InvalidAnswer, modbuserror::ForeignUnit,
                                                  modbussystem::CodeOf(EError::TimedOut)));
        }
    }
}

TEST_F(SimulatedModule, InAStormIsNeverBelievedWrongly) {
    settings.responseTimeout = std::chrono::milliseconds(40);
    Start({QStringLiteral("--fault"), QStringLiteral("storm 70"), QStringLiteral("--seed"),
           QStringLiteral("7")});
    module.Say("states 0x5A6");
    int readings = 0;
    for (int i = 0; i < 400; ++i) {
        LetDelayPass();
        for (const QString& told : Read()) {
            EXPECT_TRUE(!told.startsWith(QLatin1String("bits")) || told == Bits(0x5A6)) << told.toStdString();
            if (told == Bits(0x5A6)) ++readings;
        }
    }
    EXPECT_GT(readings, 60);
    EXPECT_LT(readings, 300);
}

}  // namespace
