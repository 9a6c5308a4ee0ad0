// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/answer.h>
#include <apps/dimodule/fault.h>

#include <tests/platform/modbus/interfacefixture.h>

#include <random>

namespace {

using dimodule::EFault;
using Action = FaultyPeer::Action;
using EAfter = FaultyPeer::EAfter;

#ifdef Q_OS_WIN
// Timers have steps of 16 ms there, and Wine takes milliseconds for what others do in microseconds.
constexpr int Requests = 300;
constexpr std::chrono::milliseconds ResponseTimeout(150);
#else
constexpr int Requests = 1000;
constexpr std::chrono::milliseconds ResponseTimeout(30);
#endif

/// Checks each reading at once against what the module's inputs are.
class CheckingCallback final : public IModbusTcpInterfaceCallback {
  public:
    explicit CheckingCallback(const std::atomic<unsigned>& truth) : m_truth(truth) {}

    void OnOpened() override { EXPECT_FALSE(std::exchange(m_isOpen, true)); }
    void OnClosed() override { EXPECT_TRUE(std::exchange(m_isOpen, false)); }
    void OnError(unsigned code) override {
        EXPECT_NE(code, 0u);
        ++errors;
    }
    void OnInputDiscretes(unsigned bits) override {
        EXPECT_TRUE(m_isOpen);
        EXPECT_EQ(bits, m_truth);
        ++readings;
    }

    int errors = 0;
    int readings = 0;

  private:
    const std::atomic<unsigned>& m_truth;
    bool m_isOpen = false;
};

/// A module whose inputs change with every question, and which does anything but tell a lie that is well
/// formed. Answers that came late or twice hold what was true before, all other faulty ones the opposite.
class FaultStorm : public InterfaceTest, public testing::WithParamInterface<unsigned> {
  protected:
    FaultStorm() : random(GetParam()) { settings.responseTimeout = ResponseTimeout; }

    bool Happens(int percent) { return static_cast<int>(random() % 100) < percent; }

    /// On the peer's thread, while the interface waits for it.
    Action Answer(const QByteArray& question) {
        const QByteArray good = FaultyPeer::Answer(question, truth);
        const QByteArray before = std::exchange(last, good);
        if (Happens(50)) return {good};
        if (Happens(10)) return {before};
        if (Happens(10)) return {before + good};
        if (Happens(10)) return {good.left(static_cast<int>(random() % 12)), EAfter::Close};
        if (Happens(10)) return {Mangled(question)};
        dimodule::Fault storm;
        storm.kind = EFault::Storm;
        storm.argument = 100;
        const dimodule::Reaction reaction = dimodule::React(storm, question, good, random);
        // A delay comes within the time-out or does not: byte after byte.
        const bool isReset = reaction.then == dimodule::Reaction::EThen::Reset;
        return {reaction.bytes, isReset ? EAfter::Reset : EAfter::Keep,
                static_cast<int>(reaction.delay.count() % 4)};
    }

    /// The opposite of the truth, with anything changed in the bytes that say what it is.
    QByteArray Mangled(const QByteArray& question) {
        constexpr int StatesAt = 9;
        const QByteArray answer = FaultyPeer::Answer(question, ~truth & 0xFFF);
        QByteArray mangled = answer;
        while (mangled == answer)
            mangled[static_cast<int>(random() % StatesAt)] = static_cast<char>(random());
        return mangled;
    }

    std::mt19937 random;
    QByteArray last;
    std::atomic<unsigned> truth{0};
};

TEST_P(FaultStorm, NeverMakesAFalseState) {
    CheckingCallback checking(truth);
    peer = std::make_unique<FaultyPeer>([this](const QByteArray& question, int) { return Answer(question); });
    ModbusAddress address;
    address.ip = 0x7F000001;
    address.port = peer->Port();
    ModbusTcpInterface asking(address, settings, checking,
                              [] { return std::chrono::milliseconds(now += ReconnectDelay::Last.count()); });
    std::mt19937 states(GetParam() + 1);
    for (int i = 0; i < Requests; ++i) {
        truth = states() & 0xFFF;
        asking.ReadInputDiscretes(12);
    }
    EXPECT_EQ(checking.readings + checking.errors, Requests);
    EXPECT_GT(checking.readings, Requests / 4);
    EXPECT_GT(checking.errors, Requests / 6);
}

INSTANTIATE_TEST_SUITE_P(ModbusTcpInterfaceTest, FaultStorm, testing::Range(1u, 4u));

}  // namespace
