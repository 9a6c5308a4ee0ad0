// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicenotifier.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <array>
#include <cstring>
#include <string>

namespace {

/// What a service manager listens on.
class ServiceNotifierTest : public testing::Test {
  protected:
    void Listen(const QByteArray& name) {
        m_socket = ::socket(AF_UNIX, SOCK_DGRAM, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        if (name.startsWith('@')) address.sun_path[0] = '\0';
        const auto size =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
        ASSERT_EQ(::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size), 0);
        qputenv("NOTIFY_SOCKET", name);
    }
    void TearDown() override {
        qunsetenv("NOTIFY_SOCKET");
        if (m_socket != -1) ::close(m_socket);
    }
    /// What has arrived; a datagram to a socket of this machine is there as soon as it is sent.
    std::string Received() const {
        std::array<char, 256> bytes = {};
        const ssize_t count = ::recv(m_socket, bytes.data(), bytes.size(), MSG_DONTWAIT);
        return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
    }

    QTemporaryDir m_directory;
    int m_socket = -1;
};

TEST_F(ServiceNotifierTest, TellsReadyWithWhatItDoesAndThenStopping) {
    Listen(m_directory.filePath(QStringLiteral("notify")).toUtf8());
    ServiceNotifier notifier;
    notifier.Ready(QStringLiteral("listening on 127.0.0.1:7450"));
    EXPECT_EQ(Received(), "READY=1\nSTATUS=listening on 127.0.0.1:7450");
    notifier.Stopping();
    EXPECT_EQ(Received(), "STOPPING=1");
}

TEST_F(ServiceNotifierTest, KnowsNamesThatAreNoFiles) {
    Listen("@mcserver-test-" + QByteArray::number(::getpid()));
    ServiceNotifier().Stopping();
    EXPECT_EQ(Received(), "STOPPING=1");
}

TEST_F(ServiceNotifierTest, WithoutAServiceManagerNothingHappens) {
    Listen(m_directory.filePath(QStringLiteral("notify")).toUtf8());
    qunsetenv("NOTIFY_SOCKET");
    ServiceNotifier().Ready(QString());
    qputenv("NOTIFY_SOCKET", QByteArray(5000, 'x'));
    ServiceNotifier().Ready(QString());
    qputenv("NOTIFY_SOCKET", m_directory.filePath(QStringLiteral("nobody")).toUtf8());
    ServiceNotifier().Ready(QString());
    EXPECT_EQ(Received(), "");
}

}  // namespace
