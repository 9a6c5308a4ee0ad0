// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QByteArray>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>

/// What a service manager listens on, named in the environment as long as this lasts.
class ServiceManager {
  public:
    ServiceManager() = default;
    ~ServiceManager() {
        for (const char* const name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"})
            qunsetenv(name);
        if (m_socket != -1) ::close(m_socket);
    }
    ServiceManager(const ServiceManager&) = delete;
    ServiceManager& operator=(const ServiceManager&) = delete;

    /// \a name is a file's, or begins with "@".
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
    /// What has arrived; empty if nothing has. A datagram to a socket of this machine is there as soon as it
    /// is sent.
    std::string Received() const {
        std::array<char, 256> bytes = {};
        const ssize_t count = ::recv(m_socket, bytes.data(), bytes.size(), MSG_DONTWAIT);
        return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
    }
    /// To be woken by.
    int Descriptor() const { return m_socket; }

  private:
    int m_socket = -1;
};
