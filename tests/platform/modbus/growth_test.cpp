// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/modbus/interfacefixture.h>
#include <tests/support/allocationcounter.h>

namespace {

using Action = FaultyPeer::Action;

/// Remembers what it is told without taking memory for it.
class CountingCallback final : public IModbusTcpInterfaceCallback {
  public:
    void OnOpened() override { ++opened; }
    void OnClosed() override { ++closed; }
    void OnError(unsigned) override { ++errors; }
    void OnInputDiscretes(unsigned) override { ++readings; }

    int opened = 0;
    int closed = 0;
    int errors = 0;
    int readings = 0;
};

/// What takes no memory once takes none in a million times.
class ModbusTcpInterfaceGrowth : public InterfaceTest {
  protected:
    void Run(int requests) {
        interface.reset();
        ModbusAddress address;
        address.ip = 0x7F000001;
        address.port = peer->Port();
        // Each request a long time after the one before, so that none is left out.
        ModbusTcpInterface asking(address, settings, counting, [] {
            return std::chrono::milliseconds(now += ReconnectDelay::Last.count());
        });
        asking.ReadInputDiscretes(12);
        const AllocationCounter allocations;
        for (int i = 0; i < requests; ++i)
            asking.ReadInputDiscretes(12);
        EXPECT_EQ(AllocationCounter::Count(), 0u);
    }

    CountingCallback counting;
};

TEST_F(ModbusTcpInterfaceGrowth, PollingTakesNoMemory) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 5)}; });
    Run(10000);
    EXPECT_EQ(counting.readings, 10001);
}

TEST_F(ModbusTcpInterfaceGrowth, ErrorsAndConnectingAgainTakeNone) {
    Listen([](const QByteArray& question, int number) -> Action {
        switch (number % 4) {
            case 0:
                return {FaultyPeer::Exception(question, 4)};
            case 1:
                return {FaultyPeer::Answer(question, 5), FaultyPeer::EAfter::Close};
            case 2:
                return {QByteArray(300, 'x')};
            default:
                return {QByteArray(), FaultyPeer::EAfter::Reset};
        }
    });
    Run(1000);
    EXPECT_GT(counting.errors, 100);
    EXPECT_GT(counting.readings, 100);
    EXPECT_EQ(counting.opened, counting.closed + (counting.opened > counting.closed ? 1 : 0));
}

}  // namespace
