// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/module.h>

#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtNetwork/QTcpSocket>

#include <memory>
#include <vector>

namespace dimodule {
namespace {

/// A module and one who asks it, byte by byte.
class DiModule : public testing::Test {
  protected:
    DiModule() {
        QString error;
        EXPECT_TRUE(module.Listen(QHostAddress::LocalHost, 0, &error)) << error.toStdString();
    }

    void Connect() { Connect(socket); }
    void Connect(QTcpSocket& client) const {
        client.connectToHost(QHostAddress::LocalHost, module.Port());
        EXPECT_TRUE(WaitUntil([&client] { return client.state() == QAbstractSocket::ConnectedState; }));
    }
    QByteArray Receive(int size) {
        EXPECT_TRUE(WaitUntil([this, size] { return socket.bytesAvailable() >= size; }));
        return socket.read(size).toHex();
    }
    bool WaitForEnd() {
        return WaitUntil([this] { return socket.state() == QAbstractSocket::UnconnectedState; });
    }
    bool WaitForConnections(int count) {
        return WaitUntil([this, count] { return module.Connections() == count; });
    }
    void SetFault(const char* text) {
        Fault fault;
        EXPECT_EQ(Fault::Parse(QString::fromUtf8(text).split(QLatin1Char(' ')), &fault), QString());
        module.SetFault(fault);
    }

    static QByteArray Question(int transaction) {
        QByteArray question = QByteArray::fromHex("00000000000601020000000c");
        question[1] = static_cast<char>(transaction);
        return question;
    }

    const QByteArray first =
        "0001000000050102"
        "02ff0f";
    const QByteArray second =
        "0002000000050102"
        "02ff0f";
    Module module;
    QTcpSocket socket;
};

TEST_F(DiModule, AnswersQuestionsInPieces) {
    Connect();
    for (const char byte : Question(1)) {
        EXPECT_EQ(socket.bytesAvailable(), 0);
        socket.write(&byte, 1);
        socket.flush();
        RunTurns(2);
    }
    EXPECT_EQ(Receive(11), first);
    EXPECT_EQ(module.Questions(), 1);
}

TEST_F(DiModule, AnswersQuestionsThatComeTogetherInTheirOrder) {
    SetFault("delay 20");
    Connect();
    socket.write(Question(1) + Question(2));
    EXPECT_EQ(Receive(22), first + second);
}

TEST_F(DiModule, AnswersMoreQuestionsThanItHoldsAtOnce) {
    Connect();
    QByteArray questions;
    for (int i = 0; i < 2000; ++i)
        questions += Question(i & 0x7F);
    socket.write(questions);
    Receive(2000 * 11);
    EXPECT_EQ(module.Questions(), 2000);
}

TEST_F(DiModule, SaysWhatItsInputsAreNow) {
    Connect();
    module.SetStates(0xFFFF0123);
    EXPECT_EQ(module.GetInputs().states, 0x123u);
    socket.write(Question(1));
    EXPECT_EQ(Receive(11),
              "000100000005010202"
              "2301");
}

TEST_F(DiModule, EndsConnectionsThatSpeakAnotherProtocol) {
    Connect();
    socket.write("GET / HTTP/1.1\r\n\r\n");
    EXPECT_TRUE(WaitForEnd());
    EXPECT_EQ(socket.bytesAvailable(), 0);
    EXPECT_TRUE(WaitForConnections(0));
}

TEST_F(DiModule, GivesNoMoreAnswersToWhoDoesNotReadThem) {
    constexpr int Questions = 60000;  // their answers are far more than what systems hold
    socket.setReadBufferSize(1);
    Connect();
    socket.write(Question(1).repeated(Questions));
    ASSERT_TRUE(WaitUntil([this] { return module.Questions() > 100; }));
    RunTurns(2000);
    EXPECT_LT(module.Questions(), Questions);
    socket.setReadBufferSize(0);
    qint64 received = 0;
    EXPECT_TRUE(WaitUntil([this, &received] {
        received += socket.readAll().size();
        return received == qint64{Questions} * 11;
    }));
    EXPECT_EQ(module.Questions(), Questions);
}

TEST_F(DiModule, TakesABoundedNumberOfConnections) {
    std::vector<std::unique_ptr<QTcpSocket>> clients;
    for (int i = 0; i < Module::MaxConnections; ++i)
        Connect(*clients.emplace_back(std::make_unique<QTcpSocket>()));
    ASSERT_TRUE(WaitForConnections(Module::MaxConnections));
    socket.connectToHost(QHostAddress::LocalHost, module.Port());
    EXPECT_TRUE(WaitForEnd());
    clients.pop_back();
    EXPECT_TRUE(WaitForConnections(Module::MaxConnections - 1));
    Connect();
    socket.write(Question(1));
    EXPECT_EQ(Receive(11), first);
}

TEST_F(DiModule, ForgetsWhoLeavesWhileItsAnswerIsDelayed) {
    SetFault("delay 100000");
    Connect();
    socket.write(Question(1));
    ASSERT_TRUE(WaitUntil([this] { return module.Questions() == 1; }));
    socket.abort();
    EXPECT_TRUE(WaitForConnections(0));
}

TEST_F(DiModule, ResetsAConnectionInsteadOfAnAnswer) {
    SetFault("reset");
    Connect();
    socket.write(Question(1));
    EXPECT_TRUE(WaitForEnd());
    EXPECT_EQ(socket.bytesAvailable(), 0);
    EXPECT_TRUE(WaitForConnections(0));
}

TEST_F(DiModule, RefusesUntilItDoesNot) {
    Connect();
    ASSERT_TRUE(WaitForConnections(1));
    const quint16 port = module.Port();
    SetFault("refused");
    EXPECT_TRUE(WaitForEnd());
    socket.connectToHost(QHostAddress::LocalHost, port);
    EXPECT_TRUE(WaitForEnd());
    EXPECT_EQ(socket.error(), QAbstractSocket::ConnectionRefusedError);
    SetFault("none");
    EXPECT_EQ(module.Port(), port);
    Connect();
    socket.write(Question(1));
    EXPECT_EQ(Receive(11), first);
}

TEST_F(DiModule, SaysSoIfItCannotListenAgain) {
    const quint16 port = module.Port();
    SetFault("refused");
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost, port));
    QString told;
    QObject::connect(&module, &Module::Failed, &module, [&told](const QString& error) { told = error; });
    SetFault("none");
    EXPECT_TRUE(told.startsWith(QStringLiteral("cannot listen on 127.0.0.1:%1: ").arg(port)))
        << told.toStdString();
}

TEST_F(DiModule, DropsAConnectionOnceItIsIdle) {
    SetFault("idle 30");
    Connect();
    socket.write(Question(1));
    EXPECT_EQ(Receive(11), first);
    EXPECT_TRUE(WaitForEnd());
}

TEST_F(DiModule, WaitsForTheFirstQuestionHoweverSoonItDropsWhatIsIdle) {
    SetFault("idle 1");
    Connect();
    ASSERT_TRUE(WaitForConnections(1));
    // The time is over for both, once it is for the one that asked.
    QTcpSocket other;
    Connect(other);
    other.write(Question(2));
    ASSERT_TRUE(WaitUntil([&other] { return other.state() == QAbstractSocket::UnconnectedState; }));
    socket.write(Question(1));
    EXPECT_EQ(Receive(11), first);
}

TEST_F(DiModule, DropsConnectionsThatWereThereBeforeTheFault) {
    Connect();
    ASSERT_TRUE(WaitForConnections(1));
    SetFault("idle 1");
    EXPECT_TRUE(WaitForEnd());
}

TEST_F(DiModule, AFaultForSomeQuestionsEndsWithThem) {
    int over = 0;
    QObject::connect(&module, &Module::FaultOver, &module, [&over] { ++over; });
    SetFault("exception 4 x2");
    Connect();
    socket.write(Question(1) + Question(2) + Question(1));
    EXPECT_EQ(Receive(9 + 9 + 11), QByteArray("000100000003018204"
                                              "000200000003018204") +
                                       first);
    EXPECT_EQ(over, 1);
    EXPECT_EQ(module.GetFault().kind, EFault::None);
}

TEST_F(DiModule, SaysWhyItCannotListen) {
    Module another;
    QString error;
    EXPECT_FALSE(another.Listen(QHostAddress::LocalHost, module.Port(), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("cannot listen on 127.0.0.1:%1: ").arg(module.Port())))
        << error.toStdString();
}

}  // namespace
}  // namespace dimodule
