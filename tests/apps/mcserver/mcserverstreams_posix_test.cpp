// SPDX-License-Identifier: Apache-2.0
// What strangers can do to the program by what it prints about them.
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>

#include <tests/apps/mcserver/serverprocess.h>

#include <QtCore/QCborArray>
#include <QtCore/QCborValue>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QtEndian>
#include <QtNetwork/QTcpSocket>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

/// A pipe that is full, and that nobody reads.
class FullPipe {
  public:
    explicit FullPipe(const QString& path) {
        const QByteArray name = QFile::encodeName(path);
        if (::mkfifo(name.constData(), 0600) != 0) return;
        m_descriptor = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        const QByteArray filling(4096, '-');
        while (::write(m_descriptor, filling.constData(), static_cast<std::size_t>(filling.size())) > 0)
            m_isFull = true;
    }
    ~FullPipe() {
        if (m_descriptor >= 0) ::close(m_descriptor);
    }
    FullPipe(const FullPipe&) = delete;
    FullPipe& operator=(const FullPipe&) = delete;

    bool IsFull() const { return m_isFull; }

  private:
    int m_descriptor = -1;
    bool m_isFull = false;
};

constexpr int HeadSize = 4;
constexpr char Welcome = 2;
constexpr char Bye = 3;

QByteArray Frame(const QByteArray& content) {
    QByteArray head(HeadSize, '\0');
    qToBigEndian(static_cast<quint32>(content.size()), head.data());
    return head + content;
}

/// Says \a hello, unless it is empty, and something that is no message. Waits until the server ends it.
void SendNonsense(int port, const QByteArray& hello = QByteArray()) {
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    ASSERT_TRUE(ServerProcess::WaitFor([&socket] { return socket.state() == QTcpSocket::ConnectedState; }));
    socket.write(hello + Frame("\xff"));
    ASSERT_TRUE(ServerProcess::WaitFor([&socket] { return socket.state() == QTcpSocket::UnconnectedState; }));
}

/// Whether somebody who keeps the rules is welcome.
void Visit(int port) {
    VtClientCenter& center = VtClientCenter::Instance();
    IVtClient* const client = center.CreateVtClient("127.0.0.1", port);
    ASSERT_NE(client, nullptr);
    EXPECT_TRUE(ServerProcess::WaitFor([client] { return client->IsConnected(); }))
        << client->GetLastError().toStdString();
    center.DestroyVtClient(client);
}

TEST(ServerStreams, NobodyWhoReadsTheErrorsIsNeededForTheServerToGoOn) {
    ServerProcess server;
    const FullPipe pipe(server.Path(QStringLiteral("errors")));
    ASSERT_TRUE(pipe.IsFull());
    server.SendErrorsTo(QStringLiteral("errors"));
    ASSERT_NO_FATAL_FAILURE(server.Start());
    for (int i = 0; i < 3; ++i)
        ASSERT_NO_FATAL_FAILURE(SendNonsense(server.Port()));
    Visit(server.Port());
    EXPECT_EQ(server.Terminate(), 0);
}

TEST(ServerStreams, WhatAPeerCallsItselfCannotForgeALineOrSteerATerminal) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start());
    const QString name = QStringLiteral("\x1b[2J\nlistening on 1.2.3.4:5") + QChar(0x202E) + QChar(0x9B);
    const QCborArray hello{1, 1, name, name, QString(), QString()};
    ASSERT_NO_FATAL_FAILURE(SendNonsense(server.Port(), Frame(QCborValue(hello).toCbor())));
    ASSERT_TRUE(ServerProcess::WaitFor([&server] { return server.Errors().contains(QLatin1Char('\n')); }));
    EXPECT_EQ(server.Terminate(), 0);
    EXPECT_TRUE(server.Errors().contains(QLatin1String("(\\x1b[2J\\nlistening on 1.2.3.4:5\\u202e\\x9b, ")))
        << server.Errors().toStdString();
    const QString all = server.Output() + server.Errors();
    for (const QChar character : all)
        EXPECT_TRUE(character == QLatin1Char('\n') || character.isPrint()) << character.unicode();
}

TEST(ServerStreams, AreNotFilledByAStrangerWhoComesAgainAndAgain) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start());
    constexpr int Visits = 60;
    for (int i = 0; i < Visits; ++i)
        ASSERT_NO_FATAL_FAILURE(SendNonsense(server.Port()));
    EXPECT_EQ(server.Terminate(), 0);
    const int lines = server.Errors().count(QLatin1String("malformed message"));
    EXPECT_LT(lines, Visits / 2) << server.Errors().toStdString();
    static const QRegularExpression count(QStringLiteral("\\b(\\d+) lines? left out\\b"));
    int leftOut = 0;
    for (auto counts = count.globalMatch(server.Errors()); counts.hasNext();)
        leftOut += counts.next().captured(1).toInt();
    EXPECT_EQ(lines + leftOut, Visits) << server.Errors().toStdString();
}

TEST(ServerDescriptors, LimitTheClientsAndTheServerSaysSoAtTheStart) {
    constexpr int Fitting = 86;  // of 150, 64 of which are for what else there is
    ServerProcess server;
    server.LimitDescriptors(150);
    ASSERT_NO_FATAL_FAILURE(server.Start());
    EXPECT_TRUE(ServerProcess::WaitFor([&server] {
        return server.Output().contains(
            QLatin1String("no more than 86 clients find room at once, and not 2000: the process may have "
                          "only 150 files and connections open\n"));
    })) << server.Output().toStdString();
    const QByteArray hello =
        Frame(QCborValue(QCborArray{1, 1, QStringLiteral("one"), QString(), QString(), QString()}).toCbor());
    std::vector<std::unique_ptr<QTcpSocket>> clients;
    const auto answered = [&clients](int kind) {
        return std::count_if(clients.begin(), clients.end(), [kind](const auto& client) {
            const QByteArray words = client->peek(HeadSize + 2);
            return words.size() == HeadSize + 2 && words.at(HeadSize + 1) == kind;
        });
    };
    for (int i = 0; i < Fitting + 5; ++i) {
        clients.push_back(std::make_unique<QTcpSocket>());
        clients.back()->connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(server.Port()));
        clients.back()->write(hello);
        ASSERT_TRUE(ServerProcess::WaitFor([&] { return answered(Welcome) + answered(Bye) == i + 1; }));
    }
    EXPECT_EQ(answered(Welcome), Fitting);
    EXPECT_EQ(server.Terminate(), 0);
}

TEST(ServerDescriptors, ThatSufficeAreNotTalkedAbout) {
    ServerProcess server;
    ASSERT_NO_FATAL_FAILURE(server.Start({QStringLiteral("--sessions"), QStringLiteral("20")}));
    Visit(server.Port());
    EXPECT_EQ(server.Terminate(), 0);
    EXPECT_FALSE(server.Output().contains(QLatin1String("find room"))) << server.Output().toStdString();
}

}  // namespace
