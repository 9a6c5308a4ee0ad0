// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/nativesocket.h>

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Two connected sockets without a loop around them.
class SendAtOnceTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, m_ends.data()), 0); }
    void TearDown() override {
        CloseFar();
        ::close(m_ends[0]);
    }
    void CloseFar() {
        if (m_ends[1] >= 0) ::close(m_ends[1]);
        m_ends[1] = -1;
    }
    qint64 Send(const std::vector<std::string>& texts) {
        std::vector<vt::SendPiece> pieces;
        for (const std::string& text : texts)
            pieces.push_back({text.data(), static_cast<int>(text.size())});
        return vt::SendAtOnce(m_ends[0], pieces.data(), static_cast<int>(pieces.size()));
    }
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

    std::array<int, 2> m_ends{-1, -1};
};

TEST_F(SendAtOnceTest, PiecesArriveOneBehindTheOther) {
    EXPECT_EQ(Send({"one ", "", "two ", "three"}), 13);
    EXPECT_EQ(Receive(100), "one two three");
}

TEST_F(SendAtOnceTest, AsManyPiecesAsItTakesGoInOneCall) {
    EXPECT_EQ(Send(std::vector<std::string>(vt::MaxSendPieces, "x")), vt::MaxSendPieces);
    EXPECT_EQ(Receive(100), std::string(vt::MaxSendPieces, 'x'));
}

TEST_F(SendAtOnceTest, TakesAPartWhereTheSystemHasNoRoomForAllAndThenNothing) {
    const std::string large(64 << 20, 'x');
    const qint64 sent = Send({large});
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, static_cast<qint64>(large.size()));
    EXPECT_EQ(Send({large}), 0) << "it would have to wait";
    EXPECT_EQ(Receive(large.size()).size(), static_cast<std::size_t>(sent));
    EXPECT_GT(Send({"more"}), 0) << "there is room again";
}

TEST_F(SendAtOnceTest, TakesNothingWhereNobodyReadsAnyMore) {
    CloseFar();
    EXPECT_EQ(Send({"into the void"}), 0);  // and no signal ends the program
    EXPECT_EQ(Send({"again"}), 0);
}

TEST_F(SendAtOnceTest, TakesNothingWithoutASocket) {
    const vt::SendPiece piece = {"x", 1};
    EXPECT_EQ(vt::SendAtOnce(-1, &piece, 1), 0);
}

}  // namespace
