// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/socketcalls.h>
#include <tests/platform/vtclient/nativepair_posix.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class SendAtOnceTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(m_pair.IsConnected()); }
    qint64 Send(const std::vector<std::string>& texts) {
        std::vector<vt::SendPiece> pieces;
        for (const std::string& text : texts)
            pieces.push_back({text.data(), static_cast<int>(text.size())});
        return vt::SendAtOnce(m_pair.Near(), pieces.data(), static_cast<int>(pieces.size()));
    }

    NativePair m_pair;
};

TEST_F(SendAtOnceTest, PiecesArriveOneBehindTheOther) {
    EXPECT_EQ(Send({"one ", "", "two ", "three"}), 13);
    EXPECT_EQ(m_pair.Receive(100), "one two three");
}

TEST_F(SendAtOnceTest, AsManyPiecesAsItTakesGoInOneCall) {
    EXPECT_EQ(Send(std::vector<std::string>(vt::MaxSendPieces, "x")), vt::MaxSendPieces);
    EXPECT_EQ(m_pair.Receive(100), std::string(vt::MaxSendPieces, 'x'));
}

TEST_F(SendAtOnceTest, TakesAPartWhereTheSystemHasNoRoomForAllAndThenNothing) {
    const std::string large(64 << 20, 'x');
    const qint64 sent = Send({large});
    EXPECT_GT(sent, 0);
    EXPECT_LT(sent, static_cast<qint64>(large.size()));
    EXPECT_EQ(Send({large}), 0) << "it would have to wait";
    EXPECT_EQ(m_pair.Receive(large.size()).size(), static_cast<std::size_t>(sent));
    EXPECT_GT(Send({"more"}), 0) << "there is room again";
}

TEST_F(SendAtOnceTest, TakesNothingWhereNobodyReadsAnyMore) {
    m_pair.CloseFar();
    EXPECT_EQ(Send({"into the void"}), 0);  // and no signal ends the program
    EXPECT_EQ(Send({"again"}), 0);
}

TEST_F(SendAtOnceTest, TakesNothingWithoutASocket) {
    const vt::SendPiece piece = {"x", 1};
    EXPECT_EQ(vt::SendAtOnce(-1, &piece, 1), 0);
}

}  // namespace
