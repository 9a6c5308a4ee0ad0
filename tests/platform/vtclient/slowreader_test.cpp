// SPDX-License-Identifier: Apache-2.0
// A client that does not read: it costs the server a bounded amount, and others nothing.
#include <platform/vtclient/channel/qteventloop.h>
#include <platform/vtclient/channel/socketlistener.h>
#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/meteredchannel.h>
#include <tests/platform/vtclient/occurrences.h>
#include <tests/platform/vtclient/socketends.h>
#include <tests/platform/vtclient/socketpeer.h>
#include <tests/platform/vtclient/treesequal.h>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::SizeIs;
using Text = values::Value<QString>;

constexpr int ValueCount = 2000;
constexpr int TextLength = 500;

class SlowReader : public SocketEnds {
  protected:
    void SetUp() override {
        for (int i = 0; i < ValueCount; ++i)
            m_texts.push_back(Add<Text>("/S", std::to_string(i).c_str()));
        m_logText = Add<Text>("/S", "log");
        m_logText->SetDelivery(values::EDelivery::EveryChange);
        ChangeAll();
        QString error;
        ASSERT_TRUE(m_listener.Listen(m_serverOptions, false, &error)) << error.toStdString();
        m_listener.SetHandler([this](std::unique_ptr<vt::IChannel> channel) {
            m_hub.AddChannel(std::make_unique<MeteredChannel>(std::move(channel), &m_mostUnsent));
        });
        m_slow = std::make_unique<SocketPeer>(m_listener.Port());
        ASSERT_TRUE(m_slow->WaitConnected());
        m_slow->Socket().setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, 64 * 1024);
        m_slow->SendHello();
        ASSERT_NE(m_slow->WaitFor<vt::WelcomeMessage>(), nullptr);
        m_slow->StopReading();
        m_client = Connect("127.0.0.1", m_listener.Port());
        m_client->AddTic(QStringLiteral("/L,/S"), "");
        ASSERT_TRUE(AreEstablished(m_client));
    }

    /// About a megabyte of changes.
    void ChangeAll() {
        ++m_round;
        for (Text* text : m_texts)
            text->SetValue(QString::number(m_round).rightJustified(TextLength, QLatin1Char('.')));
    }
    /// Compares all only once the last has come: what is looked at after every turn keeps the server busy.
    bool IsUpToDate() {
        const std::string last = "/L/" + std::to_string(ValueCount - 1);
        const auto hasLast = [&] {
            const auto* const text = Find<Text>(last.c_str());
            return text != nullptr && text->GetValue() == m_texts.back()->GetValue();
        };
        return WaitUntil(hasLast) && AreEqual(Item("/S"), Item("/L"));
    }
    /// Reads on, acknowledging, until there is such a message.
    template <class M>
    const M* ReadUntil() {
        m_slow->ReadAgain();
        for (;;) {
            vt::AckMessage ack;
            const M* found = nullptr;
            const bool hasCome = WaitUntil([&] {
                const auto& received = m_slow->Received();
                quint64 count = 0;
                for (const vt::Message& message : received) {
                    count += IsAcknowledged(message) ? 1 : 0;
                    if (const M* const such = std::get_if<M>(&message)) found = such;
                }
                ack.count = count;
                return found != nullptr || count > m_acked;
            });
            if (!hasCome || found != nullptr) return found;
            m_acked = ack.count;
            m_slow->Send(ack);
        }
    }

    /// The reader that does not read says nothing either, for as long as the machine takes.
    static vt::ServerHub::Settings Patient() {
        vt::ServerHub::Settings settings;
        settings.deadAfter = std::chrono::hours(1);
        return settings;
    }

    vt::QtEventLoop m_loop;
    vt::ServerHub m_hub{m_access, m_loop, Patient()};
    vt::SocketListener m_listener;
    qint64 m_mostUnsent = 0;  ///< of any client
    std::vector<Text*> m_texts;
    Text* m_logText = nullptr;
    int m_round = 0;
    quint64 m_acked = 0;
    std::unique_ptr<SocketPeer> m_slow;
    IVtClient* m_client = nullptr;
};

TEST_F(SlowReader, IsOwedTheLastContentsOnlyAndCatchesUpWhenItReads) {
    m_slow->Subscribe(1, "/S");
    for (int round = 0; round < 30; ++round) {
        ChangeAll();
        ASSERT_TRUE(IsUpToDate()) << "the other client, in round " << round;
    }
    EXPECT_LE(m_mostUnsent, vtlimits::MaxUnackedBytes + 2 * vtlimits::BatchTarget);
    EXPECT_EQ(m_hub.CountSessions(), 2);
    ASSERT_NE(ReadUntil<vt::EndMessage>(), nullptr);
    // Two looks at everything at most: what was on its way when it stopped, and what holds now.
    EXPECT_LE(m_slow->Received().size(), 2U * ValueCount * (TextLength + 50) / vtlimits::BatchTarget + 10);
}

TEST_F(SlowReader, IsEndedWhenTooManyOccurrencesWaitForIt) {
    m_slow->Subscribe(1, "/S/log");
    ASSERT_NE(ReadUntil<vt::EndMessage>(), nullptr);
    m_slow->StopReading();
    Occurrences heard;
    heard.Hear(Find<Text>("/L/log"));
    constexpr int Messages = 10000;
    for (int i = 0; i < Messages; ++i) {
        heard.Send(m_logText, 1, 1000);
        if (i % 50 == 0) RunTurns(1);
    }
    EXPECT_TRUE(WaitUntil([this] { return m_hub.CountSessions() == 1; }));
    EXPECT_TRUE(WaitUntil([&heard] { return heard.CountHeard() == heard.CountSent(); }));
    EXPECT_TRUE(heard.AreInOrder(false)) << "the other client hears every one";
    EXPECT_LE(m_mostUnsent, vtlimits::MaxUnackedBytes + 2 * vtlimits::BatchTarget);
    ASSERT_THAT(ServerLines(), SizeIs(1));
    EXPECT_THAT(ServerLines().front().toStdString(), HasSubstr("the client does not keep up: "));
    const vt::ByeMessage* const bye = ReadUntil<vt::ByeMessage>();
    ASSERT_NE(bye, nullptr) << "it is told why, once it reads";
    EXPECT_EQ(bye->code, vt::EBye::TooSlow);
    EXPECT_TRUE(m_slow->WaitClosed());
    EXPECT_THAT(m_access.ended, SizeIs(1));
}

TEST_F(SlowReader, IsEndedIfItAsksAndAsks) {
    m_access.unreadable.insert(QStringLiteral("/secret"));
    const std::string path = "/secret/" + std::string(1000, 'x');
    EXPECT_TRUE(WaitUntil([this, &path, number = 0U]() mutable {
        for (int i = 0; i < 200 && m_hub.CountSessions() == 2; ++i)
            m_slow->Subscribe(++number, path.c_str());
        RunTurns(1);
        return m_hub.CountSessions() == 1;
    }));
    EXPECT_LE(m_mostUnsent, vtlimits::MaxUnsent + 2 * vtlimits::MaxReasonLength);
    ASSERT_THAT(ServerLines(), SizeIs(1));
    EXPECT_THAT(ServerLines().front().toStdString(), HasSubstr("the client sends but does not read"));
    ChangeAll();
    EXPECT_TRUE(IsUpToDate());
}

}  // namespace
