// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>
#include <platform/modbus/modbussystem.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <limits>
#include <set>

namespace {

using modbuserror::OfException;

TEST(ModbusErrorTextTest, EachExceptionHasItsNumberAndItsText) {
    std::set<QString> texts;
    for (const quint8 number : std::initializer_list<quint8>{1, 2, 3, 4, 5, 6, 7, 8, 10, 11}) {
        const QString text = ModbusErrorText(OfException(number));
        EXPECT_TRUE(text.startsWith(QStringLiteral("Modbus exception %1: ").arg(number)))
            << text.toStdString();
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), 10u);
}

TEST(ModbusErrorTextTest, WhatIsWrongWithAnAnswerHasATextOfItsOwn) {
    EXPECT_EQ(ModbusErrorText(modbuserror::InvalidAnswer),
              QStringLiteral("The module's answer does not fit the request"));
    EXPECT_EQ(ModbusErrorText(modbuserror::UnknownException),
              QStringLiteral("The module refuses, for an unknown reason"));
    EXPECT_EQ(ModbusErrorText(modbuserror::UnaskedBytes),
              QStringLiteral("The module sent something that it was not asked for"));
    EXPECT_EQ(ModbusErrorText(modbuserror::ForeignUnit),
              QStringLiteral("Another unit than the module answered"));
}

TEST(ModbusErrorTextTest, EveryCodeHasOneLineAndNotMore) {
    const unsigned last = std::numeric_limits<unsigned>::max();
    for (const unsigned code : {0u, 1u, 111u, 9999u, 65536u, 0x7FFFFFFFu, 0x80000000u, last}) {
        const QString text = ModbusErrorText(code);
        EXPECT_FALSE(text.isEmpty()) << code;
        EXPECT_EQ(text, text.simplified()) << code;
        EXPECT_LE(text.size(), 2048) << code;
    }
}

TEST(ModbusErrorTextTest, ErrorsThatAreToldHaveTextsOfTheSystem) {
    using modbussystem::EError;
    std::set<QString> texts;
    for (const EError error : {EError::InvalidArgument, EError::NoAddress, EError::NoSuchFamily,
                               EError::TimedOut, EError::ConnectionReset, EError::Interrupted})
        texts.insert(ModbusErrorText(modbussystem::CodeOf(error)));
    EXPECT_EQ(texts.size(), 6u);
#if defined(Q_OS_LINUX)
    EXPECT_EQ(ModbusErrorText(modbussystem::CodeOf(EError::TimedOut)),
              QStringLiteral("Connection timed out"));
#endif
}

}  // namespace
