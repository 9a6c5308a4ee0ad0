// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/modbus/interfacefixture.h>

#include <future>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Action = FaultyPeer::Action;

constexpr std::chrono::seconds Long(60);
constexpr int SoonMs = 5000;  // far less than the response time-out, far more than a busy machine takes

/// Requests on this thread, ended by another one.
class ModbusTcpInterfaceAbort : public InterfaceTest {
  protected:
    ModbusTcpInterfaceAbort() { settings.responseTimeout = Long; }

    /// Told on the peer's thread when a question has come, so that the request hangs for its answer.
    void ListenWithoutAnswering(const QByteArray& beginning = QByteArray()) {
        Listen([this, beginning](const QByteArray&, int) -> Action {
            asked.set_value();
            return {beginning};
        });
    }

    /// Reads until another thread that waits for the question has aborted.
    void ReadUntilAborted() {
        std::thread other([this] {
            asked.get_future().wait();
            interface->Abort();
        });
        QElapsedTimer elapsed;
        elapsed.start();
        Read();
        EXPECT_LT(elapsed.elapsed(), SoonMs);
        other.join();
    }

    std::promise<void> asked;
};

TEST_F(ModbusTcpInterfaceAbort, EndsARequestThatWaitsForAnAnswer) {
    ListenWithoutAnswering();
    ReadUntilAborted();
    EXPECT_THAT(callback.events, IsEmpty());
}

TEST_F(ModbusTcpInterfaceAbort, EndsARequestThatWaitsForTheRestOfAnAnswer) {
    ListenWithoutAnswering(QByteArray::fromHex("000100000005"));
    ReadUntilAborted();
    EXPECT_THAT(callback.events, IsEmpty());
}

TEST_F(ModbusTcpInterfaceAbort, IsForGood) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(1)));
    interface->Abort();
    interface->Abort();
    EXPECT_THAT(Read(), IsEmpty());
    LetDelayPass();
    EXPECT_THAT(Read(), IsEmpty());
    EXPECT_EQ(peer->Connections(), 1);
}

TEST_F(ModbusTcpInterfaceAbort, ClosingStillTellsThatTheConnectionEnded) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    Read();
    interface->Abort();
    callback.events.clear();
    interface->Close();
    EXPECT_THAT(callback.events, ElementsAre(Closed()));
}

TEST_F(ModbusTcpInterfaceAbort, BeforeTheFirstRequestNothingIsOpened) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    interface->Abort();
    EXPECT_THAT(Read(), IsEmpty());
    EXPECT_EQ(peer->Connections(), 0);
}

TEST_F(ModbusTcpInterfaceAbort, AtAnyMomentLeavesNothingBehind) {
    // Connecting, asking, waiting, closing: wherever the request is.
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    for (int i = 0; i < 300; ++i) {
        Connect(peer->Port());
        std::promise<void> started;
        std::thread other([this, &started] {
            started.get_future().wait();
            interface->Abort();
        });
        started.set_value();
        for (int k = 0; k < 20; ++k)
            interface->ReadInputDiscretes(12);
        other.join();
        EXPECT_THAT(Read(), IsEmpty());
        EXPECT_EQ(callback.lastError, 0u) << i;
    }
}

}  // namespace
