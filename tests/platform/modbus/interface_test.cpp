// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>

#include <platform/modbus/modbussystem.h>
#include <tests/platform/modbus/interfacefixture.h>

namespace {

using modbussystem::EError;
using testing::ElementsAre;
using testing::IsEmpty;

using Action = FaultyPeer::Action;
using EAfter = FaultyPeer::EAfter;

class ModbusTcpInterfaceTest : public InterfaceTest {
  protected:
    /// A peer that answers right, with the bits that the test sets.
    FaultyPeer& ListenWell() {
        return Listen([this](const QByteArray& question, int) -> Action {
            return {FaultyPeer::Answer(question, bits & 0xFFFFFFFFu >> (32 - FaultyPeer::Count(question)))};
        });
    }

    std::atomic<unsigned> bits{0x5A5};
};

TEST_F(ModbusTcpInterfaceTest, AnAnswerIsAReading) {
    ListenWell();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0x5A5)));
    bits = 0;
    EXPECT_THAT(Read(), ElementsAre(Bits(0)));
    EXPECT_EQ(peer->Connections(), 1);
}

TEST_F(ModbusTcpInterfaceTest, AQuestionSaysWhatTheSettingsSay) {
    settings.functionCode = 1;
    settings.startAddress = 0x1F40;
    settings.unitId = 255;
    ListenWell();
    EXPECT_THAT(Read(6), ElementsAre(Opened(), Bits(0x25)));
    EXPECT_EQ(peer->LastQuestion().mid(2).toHex(), "00000006ff011f400006");
}

TEST_F(ModbusTcpInterfaceTest, EachQuestionHasATransactionOfItsOwn) {
    ListenWell();
    for (const char* const transaction : {"0001", "0002", "0003"}) {
        Read();
        EXPECT_EQ(peer->LastQuestion().left(2).toHex(), transaction);
    }
}

TEST_F(ModbusTcpInterfaceTest, NothingIsOpenedBeforeTheFirstRequest) {
    ListenWell();
    interface->Close();
    EXPECT_THAT(callback.events, IsEmpty());
    EXPECT_EQ(peer->Connections(), 0);
}

TEST_F(ModbusTcpInterfaceTest, ClosingIsToldOnce) {
    ListenWell();
    Read();
    callback.events.clear();
    interface->Close();
    interface->Close();
    EXPECT_THAT(callback.events, ElementsAre(Closed()));
}

TEST_F(ModbusTcpInterfaceTest, AfterClosingARequestOpensAgain) {
    ListenWell();
    Read();
    interface->Close();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0x5A5)));
    EXPECT_EQ(peer->Connections(), 2);
}

TEST_F(ModbusTcpInterfaceTest, DestructionTellsNothing) {
    ListenWell();
    Read();
    callback.events.clear();
    interface.reset();
    EXPECT_THAT(callback.events, IsEmpty());
}

TEST_F(ModbusTcpInterfaceTest, AnErrorClosesAndTellsSoAfterwards) {
    Listen([](const QByteArray& question, int number) -> Action {
        return {number == 1 ? FaultyPeer::Answer(question, 7) : FaultyPeer::Exception(question, 4)};
    });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(7)));
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 4), Closed()));
}

TEST_F(ModbusTcpInterfaceTest, WhatNeverAnsweredIsNeverToldToBeOpen) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Exception(question, 1)}; });
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 1)));
}

TEST_F(ModbusTcpInterfaceTest, ConnectsAgainAfterADelayThatGrows) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Exception(question, 6)}; });
    Read();
    int questions = 1;
    for (qint64 delay : {100, 200, 400, 800, 1600, 3200, 6400, 10000, 10000}) {
        now += delay - 1;
        Read();
        EXPECT_EQ(peer->Questions(), questions) << delay;
        now += 1;
        Read();
        EXPECT_EQ(peer->Questions(), ++questions) << delay;
    }
}

TEST_F(ModbusTcpInterfaceTest, TellsTheLastErrorUntilItConnectsAgain) {
    Listen([](const QByteArray& question, int number) -> Action {
        return {number == 1 ? FaultyPeer::Answer(question, 7)
                            : FaultyPeer::Exception(question, quint8(number))};
    });
    Read();
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 2), Closed()));
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 2)));
    now += ReconnectDelay::First.count();
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 3)));
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 3)));
    EXPECT_EQ(peer->Questions(), 3);
}

TEST_F(ModbusTcpInterfaceTest, TellsNothingAfterAnErrorOnceItIsAborted) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Exception(question, 6)}; });
    Read();
    interface->Abort();
    EXPECT_THAT(Read(), IsEmpty());
}

TEST_F(ModbusTcpInterfaceTest, AnAnswerEndsTheDelay) {
    Listen([](const QByteArray& question, int number) -> Action {
        return {number == 3 ? FaultyPeer::Answer(question, 1) : FaultyPeer::Exception(question, 6)};
    });
    Read();
    LetDelayPass();
    Read();
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(1)));
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 6), Closed()));
    now += ReconnectDelay::First.count();
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::Base + 6)));
}

TEST_F(ModbusTcpInterfaceTest, AModuleThatDropsIdleConnectionsIsNoAlarm) {
    ListenWell();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0x5A5)));
    for (unsigned i = 1; i <= 3; ++i) {
        peer->DropConnections();
        bits = i;
        EXPECT_THAT(Read(), ElementsAre(Bits(i)));
    }
    EXPECT_EQ(peer->Connections(), 4);
}

class UnansweredQuestion : public ModbusTcpInterfaceTest, public testing::WithParamInterface<EAfter> {};

TEST_P(UnansweredQuestion, IsAskedOnceMoreWhereTheConnectionWasIdle) {
    Listen([](const QByteArray& question, int number) -> Action {
        if (number == 2) return {QByteArray(), GetParam()};
        return {FaultyPeer::Answer(question, 3)};
    });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(3)));
    EXPECT_THAT(Read(), ElementsAre(Bits(3)));
    EXPECT_EQ(peer->Connections(), 2);
}

TEST_P(UnansweredQuestion, IsAnErrorOnAFreshConnection) {
    Listen([](const QByteArray&, int) -> Action { return {QByteArray(), GetParam()}; });
    EXPECT_THAT(Read(), ElementsAre(Error(EError::ConnectionReset)));
    EXPECT_EQ(peer->Connections(), 1);
}

TEST_P(UnansweredQuestion, IsAskedOnceMoreAndNotTwice) {
    Listen([](const QByteArray& question, int number) -> Action {
        if (number == 1) return {FaultyPeer::Answer(question, 3)};
        return {QByteArray(), GetParam()};
    });
    Read();
    EXPECT_THAT(Read(), ElementsAre(Error(EError::ConnectionReset), Closed()));
    EXPECT_EQ(peer->Connections(), 2);
}

INSTANTIATE_TEST_SUITE_P(ModbusTcpInterfaceTest, UnansweredQuestion,
                         testing::Values(EAfter::Close, EAfter::Reset), [](const auto& row) {
                             return std::string(row.param == EAfter::Close ? "Closed" : "Reset");
                         });

TEST_F(ModbusTcpInterfaceTest, WhatIsGoneForGoodIsAnErrorAlsoAfterItAnswered) {
    ListenWell();
    Read();
    peer.reset();
    EXPECT_EQ(Read().size(), 2u);
    EXPECT_NE(callback.lastError, 0u);
    EXPECT_EQ(callback.events.back(), Closed());
}

TEST_F(ModbusTcpInterfaceTest, NoInputsAndTooManyAreErrors) {
    ListenWell();
    for (const unsigned short count : std::initializer_list<unsigned short>{0, 33, 65535}) {
        EXPECT_THAT(Read(count), ElementsAre(Error(EError::InvalidArgument))) << count;
        LetDelayPass();
    }
    EXPECT_EQ(peer->Connections(), 0);
    EXPECT_THAT(Read(32), ElementsAre(Opened(), Bits(0x5A5)));
}

}  // namespace
