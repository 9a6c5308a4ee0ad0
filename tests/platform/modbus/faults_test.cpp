// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbuserror.h>

#include <platform/modbus/modbussystem.h>
#include <tests/platform/modbus/interfacefixture.h>

#include <ostream>

namespace {

using modbussystem::EError;
using testing::ElementsAre;

using Action = FaultyPeer::Action;
using EAfter = FaultyPeer::EAfter;

constexpr unsigned True = 0xFFF;  ///< no transmitter is keyed
constexpr unsigned False = 0;     ///< what a faulty answer says
constexpr std::chrono::milliseconds Short(150);
constexpr std::chrono::seconds Long(20);

/// A faulty answer: a right one with false states, in which something was changed.
struct Fault {
    const char* name;
    Action (*answer)(const QByteArray& question);
    unsigned error;
    std::chrono::milliseconds timeout = Long;  ///< short only where the fault is that nothing comes
};

void PrintTo(const Fault& fault, std::ostream* stream) {
    *stream << fault.name;
}

QByteArray FalseAnswer(const QByteArray& question) {
    return FaultyPeer::Answer(question, False);
}

/// The same with one byte changed.
QByteArray Changed(const QByteArray& question, int at, int difference) {
    QByteArray answer = FalseAnswer(question);
    answer[at] = static_cast<char>(answer[at] + difference);
    return answer;
}

class FaultyAnswer : public InterfaceTest, public testing::WithParamInterface<Fault> {};

TEST_P(FaultyAnswer, IsAnErrorAndTheNextConnectionWorks) {
    settings.responseTimeout = GetParam().timeout;
    Listen([](const QByteArray& question, int number) -> Action {
        if (number == 2) return GetParam().answer(question);
        return {FaultyPeer::Answer(question, True)};
    });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(True)));
    EXPECT_THAT(Read(), ElementsAre(Error(GetParam().error), Closed()));
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(True)));
    EXPECT_EQ(peer->Connections(), 2);
}

const Fault Faults[] = {
    {"Silence", [](const QByteArray&) -> Action { return {}; }, CodeOf(EError::TimedOut), Short},
    {"HalfAnAnswer", [](const QByteArray& question) -> Action { return {FalseAnswer(question).left(10)}; },
     CodeOf(EError::TimedOut), Short},
    {"HalfAHeader", [](const QByteArray& question) -> Action { return {FalseAnswer(question).left(3)}; },
     CodeOf(EError::TimedOut), Short},
    {"HalfAnAnswerAndTheEnd",
     [](const QByteArray& question) -> Action {
         return {FalseAnswer(question).left(10), EAfter::Close};
     },
     CodeOf(EError::ConnectionReset)},
    {"AnAnswerThatDripsForTooLong",
     [](const QByteArray& question) -> Action {
         return {FalseAnswer(question), EAfter::Keep, 40};
     },
     CodeOf(EError::TimedOut), std::chrono::milliseconds(200)},
    {"PreviousTransaction", [](const QByteArray& question) -> Action { return {Changed(question, 1, -1)}; },
     modbuserror::InvalidAnswer},
    {"NextTransaction", [](const QByteArray& question) -> Action { return {Changed(question, 1, 1)}; },
     modbuserror::InvalidAnswer},
    {"ForeignProtocol", [](const QByteArray& question) -> Action { return {Changed(question, 3, 1)}; },
     modbuserror::InvalidAnswer},
    {"LengthTooSmall", [](const QByteArray& question) -> Action { return {Changed(question, 5, -1)}; },
     modbuserror::InvalidAnswer},
    {"LengthTooLarge", [](const QByteArray& question) -> Action { return {Changed(question, 5, 1)}; },
     modbuserror::InvalidAnswer},
    {"ForeignUnit", [](const QByteArray& question) -> Action { return {Changed(question, 6, 1)}; },
     modbuserror::ForeignUnit},
    {"WrongFunction", [](const QByteArray& question) -> Action { return {Changed(question, 7, 1)}; },
     modbuserror::InvalidAnswer},
    {"FewerBytesThanAsked",
     [](const QByteArray& question) -> Action {
         QByteArray answer = FalseAnswer(question);
         answer.chop(1);
         answer[5] = static_cast<char>(answer[5] - 1);
         answer[8] = 1;
         return {answer};
     },
     modbuserror::InvalidAnswer},
    {"MoreBytesThanAsked",
     [](const QByteArray& question) -> Action {
         QByteArray answer = FalseAnswer(question) + '\0';
         answer[5] = static_cast<char>(answer[5] + 1);
         answer[8] = 3;
         return {answer};
     },
     modbuserror::InvalidAnswer},
    {"MoreBytesThanComes", [](const QByteArray& question) -> Action { return {Changed(question, 8, 100)}; },
     modbuserror::InvalidAnswer},
    {"StatesBeyondTheLastInput",
     [](const QByteArray& question) -> Action { return {FaultyPeer::Answer(question, 0x1000)}; },
     modbuserror::InvalidAnswer},
    {"Garbage",
     [](const QByteArray&) -> Action {
         return {QByteArray("HTTP/1.1 400 Bad Request\r\nConnection: close\r\n\r\n"), EAfter::Close};
     },
     modbuserror::InvalidAnswer},
    {"AFloodOfBytes", [](const QByteArray&) -> Action { return {QByteArray(100000, '\xFF')}; },
     modbuserror::InvalidAnswer},
    {"AnswerOfAnotherQuestionFirst",
     [](const QByteArray& question) -> Action {
         return {Changed(question, 1, -1) + FaultyPeer::Answer(question, True)};
     },
     modbuserror::InvalidAnswer},
    {"TheQuestionItself", [](const QByteArray& question) -> Action { return {question}; },
     modbuserror::InvalidAnswer},
    {"Exception", [](const QByteArray& question) -> Action { return {FaultyPeer::Exception(question, 2)}; },
     modbuserror::Base + 2},
    {"UnknownException",
     [](const QByteArray& question) -> Action { return {FaultyPeer::Exception(question, 99)}; },
     modbuserror::UnknownException},
};

INSTANTIATE_TEST_SUITE_P(ModbusTcpInterfaceTest, FaultyAnswer, testing::ValuesIn(Faults),
                         [](const auto& row) { return row.param.name; });

class ModbusTcpInterfaceFaults : public InterfaceTest {};

TEST_F(ModbusTcpInterfaceFaults, AnAnswerInPiecesIsAReadingIfItComesInTime) {
    Listen([](const QByteArray& question, int) -> Action {
        return {FaultyPeer::Answer(question, 0x321), EAfter::Keep, 5};
    });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(0x321)));
}

TEST_F(ModbusTcpInterfaceFaults, ADripCannotOutliveTheResponseTimeout) {
    // Each byte comes well within the time-out, all of them take ten times as long.
    settings.responseTimeout = std::chrono::milliseconds(200);
    Listen([](const QByteArray& question, int) -> Action {
        return {FaultyPeer::Answer(question, 0), EAfter::Keep, 180};
    });
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_THAT(Read(), ElementsAre(Error(EError::TimedOut)));
    EXPECT_LT(elapsed.elapsed(), 1000);
}

TEST_F(ModbusTcpInterfaceFaults, ADuplicateIsNeverTheNextAnswer) {
    Listen([](const QByteArray& question, int) -> Action {
        return {FaultyPeer::Answer(question, False) + FaultyPeer::Answer(question, False)};
    });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(False)));
    EXPECT_THAT(Read(), ElementsAre(Error(modbuserror::UnaskedBytes), Closed()));
}

TEST_F(ModbusTcpInterfaceFaults, WhatComesUnaskedIsNeverAnAnswer) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, True)}; });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(True)));
    // Guesses what the next question will be.
    const QByteArray next = QByteArray::fromHex("00020000000601020000000c");
    peer->Send(FaultyPeer::Answer(next, False));
    const std::vector<QString> told = Read();
    EXPECT_THAT(told, ElementsAre(Error(modbuserror::UnaskedBytes), Closed()));
}

TEST_F(ModbusTcpInterfaceFaults, AGreetingIsNoAnswer) {
    peer = std::make_unique<FaultyPeer>(
        [](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, True)}; });
    peer->SetGreeting(FaultyPeer::Answer(QByteArray::fromHex("00000000000601020000000c"), False));
    Connect(peer->Port());
    ASSERT_EQ(Read().size(), 1u);
    EXPECT_THAT(callback.lastError, testing::AnyOf(modbuserror::UnaskedBytes, modbuserror::InvalidAnswer));
}

TEST_F(ModbusTcpInterfaceFaults, ARefusedConnectionSaysSo) {
    const quint16 port = FaultyPeer([](const QByteArray&, int) -> Action { return {}; }).Port();
    Connect(port);
    EXPECT_THAT(Read(), ElementsAre(RefusedConnection()));
}

}  // namespace
