// SPDX-License-Identifier: Apache-2.0
#include <apps/common/childprogram.h>

#include <platform/vtclient/channel/socketlistener.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <gtest/gtest.h>

namespace {

// A program inherits what its parent had open when it was started, and keeps a connection open that the
// parent closes.
TEST(AcceptedConnection, EndsThoughAProgramThatWasStartedMeanwhileGoesOn) {
    vt::SocketListener listener;
    std::unique_ptr<vt::IChannel> accepted;
    listener.SetHandler(
        [&accepted](std::unique_ptr<vt::IChannel> channel) { accepted = std::move(channel); });
    VtServerOptions options;
    options.port = 0;
    QString error;
    ASSERT_TRUE(listener.Listen(options, false, &error)) << error.toStdString();
    QTcpSocket peer;
    peer.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(listener.Port()));
    ASSERT_TRUE(WaitUntil([&] { return accepted && peer.state() == QAbstractSocket::ConnectedState; }));

    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress(QHostAddress::LocalHost)));
    const QString port = QString::number(other.serverPort());
    ChildProgram child(ChildProgram::EErrors::AllPassedOn);
    ASSERT_TRUE(
        child.Start(QStringLiteral(STORMPEER), {QStringLiteral("client"), port, QStringLiteral("1"), port}));
    ASSERT_TRUE(WaitUntil([&] { return other.hasPendingConnections(); }));

    accepted.reset();
    EXPECT_TRUE(WaitUntil([&] { return peer.state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_TRUE(child.IsRunning());
    RunTurns(3);  // what lingers of the connection lets go of it
}

}  // namespace
