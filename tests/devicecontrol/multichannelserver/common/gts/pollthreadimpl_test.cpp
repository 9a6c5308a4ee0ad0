// SPDX-License-Identifier: Apache-2.0
// What polling makes of the answers, without a thread.
#include <devicecontrol/multichannelserver/common/gts/pollthreadimpl.h>

#include <platform/modbus/modbustcpinterfacecreator.h>

#include <tests/devicecontrol/multichannelserver/common/gts/fakemodules.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtCore/QTimer>

#include <gtest/gtest.h>

namespace {

const QString ip = QStringLiteral("10.0.0.1");
const QString address = QStringLiteral("TCP:10.0.0.1:502");

/// Writes down what is told: "open", "close", "error 5", "12 inputs 3f", "answers again".
class APollThreadImpl : public testing::Test {
  protected:
    void Listen(PollThreadImpl& impl) {
        QObject::connect(&impl, &PollThreadImpl::InterfaceOpen, [this] { Note(QStringLiteral("open")); });
        QObject::connect(&impl, &PollThreadImpl::InterfaceClose, [this] { Note(QStringLiteral("close")); });
        QObject::connect(&impl, &PollThreadImpl::InterfaceError, [this](int code, const QString& text) {
            Note(QStringLiteral("error %1").arg(code));
            m_errorText = text;
        });
        QObject::connect(&impl, &PollThreadImpl::InterfaceAnswersAgain,
                         [this] { Note(QStringLiteral("answers again")); });
        QObject::connect(&impl, &PollThreadImpl::InputDiscretesChanged,
                         [this](unsigned short count, unsigned long bits) {
                             Note(QStringLiteral("%1 inputs %2").arg(count).arg(bits, 0, 16));
                         });
    }
    void Note(const QString& event) { m_events.push_back(event); }
    std::vector<QString> TakeEvents() { return std::exchange(m_events, {}); }
    template <class... Texts>
    static std::vector<QString> Events(Texts... texts) {
        return {QString::fromUtf8(texts)...};
    }

    FakeModules m_modules;
    std::vector<QString> m_events;
    QString m_errorText;
};

TEST_F(APollThreadImpl, MakesAnInterfaceToTheAddressAndDeletesIt) {
    {
        const PollThreadImpl impl(address, 12, PollInterval(10));
        EXPECT_EQ(m_modules.Addresses(), std::vector<QString>{address});
        EXPECT_EQ(m_modules.Interfaces(), 1);
    }
    EXPECT_EQ(m_modules.Interfaces(), 0);
}

TEST_F(APollThreadImpl, AsksForTheInputsOncePerTick) {
    PollThreadImpl impl(address, 6, PollInterval(10));
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    EXPECT_EQ(m_modules.CountsAsked(), (std::vector<unsigned short>{6, 6}));
}

TEST_F(APollThreadImpl, HasOneTimerOfTheIntervalWhichStartsWithIt) {
    PollThreadImpl impl(address, 6, PollInterval(250));
    const QList<QTimer*> timers = impl.findChildren<QTimer*>();
    ASSERT_EQ(timers.size(), 1);
    EXPECT_EQ(timers[0]->interval(), 250);
    EXPECT_FALSE(timers[0]->isActive());
    EXPECT_EQ(m_modules.Requests(ip), 0);
    impl.Start();
    EXPECT_TRUE(timers[0]->isActive());
}

TEST_F(APollThreadImpl, TicksByItsTimer) {
    PollThreadImpl impl(address, 6, PollInterval(1));
    impl.Start();
    EXPECT_TRUE(WaitUntil([this] { return m_modules.Requests(ip) >= 3; }));
}

TEST_F(APollThreadImpl, TakesAnIntervalThatNoTimerHas) {
    PollThreadImpl impl(address, 6, PollInterval::max());
    EXPECT_EQ(impl.findChild<QTimer*>()->interval(), std::numeric_limits<int>::max());
}

TEST_F(APollThreadImpl, TellsOfAnAddressThatCannotBeRightOnceItStarts) {
    m_modules.Refuse(ip);
    PollThreadImpl impl(address, 12, PollInterval(1));
    Listen(impl);
    EXPECT_EQ(TakeEvents(), Events());
    impl.Start();
    EXPECT_EQ(TakeEvents(), Events("error 22"));
    EXPECT_EQ(m_errorText, ModbusErrorText(FakeModules::InvalidAddress));
    EXPECT_TRUE(WaitUntil([&] { return !impl.findChild<QTimer*>()->isActive(); }));
    EXPECT_EQ(TakeEvents(), Events());
    impl.Abort();
}

TEST_F(APollThreadImpl, TellsInputsAndThenThatTheConnectionIsOpen) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    m_modules.Read(ip, 0xFFE);
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("12 inputs ffe", "open"));
}

TEST_F(APollThreadImpl, TellsOnlyInputsThatChanged) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    impl.SlotOnTimer();
    TakeEvents();
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events());
    m_modules.Read(ip, 1);
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    m_modules.Read(ip, 0);
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("12 inputs 1", "12 inputs 0"));
}

TEST_F(APollThreadImpl, DoesNotTellAFirstAnswerThatIsAllZero) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    m_modules.Read(ip, 0);
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("open"));
}

TEST_F(APollThreadImpl, TellsTheSameInputsAgainOverTheNextConnection) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    impl.SlotOnTimer();
    TakeEvents();
    impl.OnClosed();
    impl.OnOpened();
    impl.OnInputDiscretes(FakeModules::AllInactive);
    EXPECT_EQ(TakeEvents(), Events("close", "12 inputs fff", "open"));
}

TEST_F(APollThreadImpl, TakesInputsForAllZeroAfterAConnectionEnded) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    impl.SlotOnTimer();
    TakeEvents();
    impl.OnClosed();
    impl.OnOpened();
    impl.OnInputDiscretes(0);
    EXPECT_EQ(TakeEvents(), Events("close", "open"));
}

TEST_F(APollThreadImpl, TellsAfterAnErrorOnlyErrorsAndThatItAnswersAgain) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    impl.SlotOnTimer();
    m_modules.Fail(ip, 110);
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("12 inputs fff", "open", "error 110", "close", "error 110"));
    m_modules.Read(ip, 5);
    impl.SlotOnTimer();
    m_modules.Read(ip, 6);
    impl.SlotOnTimer();
    EXPECT_EQ(m_modules.Requests(ip), 5);
    EXPECT_EQ(TakeEvents(), Events("answers again"));
    m_modules.Fail(ip, 111);
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("error 111", "close"));
    m_modules.Read(ip, 7);
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("answers again"));
}

TEST_F(APollThreadImpl, TellsEveryErrorWithItsText) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    m_modules.Fail(ip, 111);
    impl.SlotOnTimer();
    impl.SlotOnTimer();
    EXPECT_EQ(TakeEvents(), Events("error 111", "error 111"));
    EXPECT_EQ(m_errorText, ModbusErrorText(111));
    EXPECT_NE(m_errorText, ModbusErrorText(110));
}

TEST_F(APollThreadImpl, DoesNotTellOfAConnectionOverWhichNothingCouldBeRead) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    impl.OnOpened();
    impl.OnError(110);
    impl.OnInputDiscretes(5);
    EXPECT_EQ(TakeEvents(), Events("error 110", "answers again"));
}

TEST_F(APollThreadImpl, IgnoresWhatIsNoneOfInputModules) {
    PollThreadImpl impl(address, 12, PollInterval(10));
    Listen(impl);
    IModbusTcpInterfaceCallback& callback = impl;
    callback.OnCoils(1);
    callback.OnHoldingRegisters(1);
    callback.OnInputRegisters(1);
    EXPECT_EQ(TakeEvents(), Events());
}

TEST_F(APollThreadImpl, TellsThatTheConnectionClosedWhenItGoes) {
    {
        PollThreadImpl impl(address, 12, PollInterval(10));
        Listen(impl);
        impl.SlotOnTimer();
        TakeEvents();
    }
    EXPECT_EQ(TakeEvents(), Events("close"));
}

}  // namespace
