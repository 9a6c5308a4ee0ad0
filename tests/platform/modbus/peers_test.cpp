// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>

#include <tests/platform/modbus/interfacefixture.h>
#include <tests/support/programrunner.h>

#include <ostream>

namespace {

using testing::ElementsAre;

struct Server {
    const char* name;
    QStringList command;
};

void PrintTo(const Server& server, std::ostream* stream) {
    *stream << server.name;
}

/// Servers that others wrote, with 12 discrete inputs and 16 coils that are ON, OFF, ...
class ForeignServer : public InterfaceTest,
                      public testing::WithParamInterface<Server>,
                      protected ProgramRunner {
  protected:
    static constexpr unsigned States = 0x74D;

    ForeignServer() {
        QStringList words = GetParam().command;
        const QString program = words.takeFirst();
        for (int i = 0; i < 12; ++i)
            words += QString::number(States >> i & 1);
        StartProgram(program, words);
        EXPECT_TRUE(WaitUntil([this] { return output.contains('\n'); })) << errors.toStdString();
        Connect(output.trimmed().toUShort());
    }
    ~ForeignServer() override {
        interface.reset();
        Kill();
    }
    void Ask(int function, int start) {
        const quint16 port = output.trimmed().toUShort();
        settings.functionCode = function;
        settings.startAddress = start;
        Connect(port);
    }
};

TEST_P(ForeignServer, ItsDiscreteInputsAreRead) {
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(States)));
    EXPECT_THAT(Read(6), ElementsAre(Bits(States & 0x3F)));
    EXPECT_THAT(Read(1), ElementsAre(Bits(States & 1)));
    for (int i = 0; i < 100; ++i)
        EXPECT_THAT(Read(), ElementsAre(Bits(States)));
}

TEST_P(ForeignServer, ItsCoilsAreRead) {
    Ask(1, 0);
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0x555)));
}

TEST_P(ForeignServer, InputsFromAnotherAddressAreRead) {
    Ask(2, 6);
    EXPECT_THAT(Read(6), ElementsAre(Opened(), Bits(States >> 6)));
}

TEST_P(ForeignServer, InputsThatItDoesNotHaveAreItsException) {
    Ask(2, 4000);
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::OfException(2))));
}

const Server Servers[] = {
    {"Libmodbus", {QStringLiteral(LIBMODBUS_SERVER)}},
    {"Pymodbus", {QStringLiteral(MODBUS_PYTHON), QStringLiteral(PYMODBUS_SERVER)}},
};

INSTANTIATE_TEST_SUITE_P(ModbusTcpInterfaceTest, ForeignServer, testing::ValuesIn(Servers),
                         [](const auto& row) { return row.param.name; });

}  // namespace
