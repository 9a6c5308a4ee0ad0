// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <string>

/// Two connected sockets without a loop around them.
class NativePair {
  public:
    NativePair() { m_isConnected = ::socketpair(AF_UNIX, SOCK_STREAM, 0, m_ends.data()) == 0; }
    ~NativePair() {
        CloseFar();
        ::close(m_ends[0]);
    }
    NativePair(const NativePair&) = delete;
    NativePair& operator=(const NativePair&) = delete;

    bool IsConnected() const { return m_isConnected; }
    int Near() const { return m_ends[0]; }
    void CloseFar() {
        if (m_ends[1] >= 0) ::close(m_ends[1]);
        m_ends[1] = -1;
    }
    /// What has come at the far end, up to \a size bytes.
    std::string Receive(std::size_t size) {
        std::string text(size, '\0');
        std::size_t received = 0;
        while (received < size) {
            const ssize_t count = ::recv(m_ends[1], text.data() + received, size - received, MSG_DONTWAIT);
            if (count <= 0) break;
            received += static_cast<std::size_t>(count);
        }
        text.resize(received);
        return text;
    }

  private:
    std::array<int, 2> m_ends{-1, -1};
    bool m_isConnected = false;
};
