// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/natsbusmaker.h>
#include <tests/platform/nats/natsserver.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <QtCore/QElapsedTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace std::chrono_literals;

namespace {

using nats::INatsBus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class RecordingBusListener final : public INatsBus::IListener {
  public:
    void OnNatsState(INatsBus::EState state, const QString& reason) override {
        states.push_back(state);
        reasons.push_back(reason);
    }
    void OnNatsComplaint(const QString& complaint) override { complaints.push_back(complaint); }
    void OnNatsUnheard(quint64 watch) override { unheard.push_back(watch); }
    void OnNatsWritable() override { ++writable; }

    std::vector<INatsBus::EState> states;
    std::vector<QString> reasons;
    std::vector<QString> complaints;
    std::vector<quint64> unheard;
    int writable = 0;
};

class Bus : public testing::Test {
  protected:
    ~Bus() override {
        if (m_bus) m_bus->RemoveListener(&m_listener);
    }
    void Open(bool isPersistent = false) {
        ASSERT_TRUE(m_server.Start(m_configuration));
        Open(m_server.Options(), isPersistent);
        ASSERT_TRUE(Is(INatsBus::EState::Open)) << m_bus->Problem().toStdString();
    }
    void Open(const nats::NatsOptions& options, bool isPersistent) {
        QString problem;
        m_bus = nats::MakeBus(options, &problem);
        ASSERT_NE(m_bus, nullptr) << problem.toStdString();
        m_bus->AddListener(&m_listener);
        m_bus->Open(isPersistent);
    }
    bool Is(INatsBus::EState state) {
        return WaitUntil([this, state] { return m_bus->State() == state; });
    }
    int Collect(const QByteArray& subject) {
        return m_bus->Subscribe(subject, [this](const nats::NatsMessage& message) {
            m_received.emplace_back(message.data.data(), static_cast<int>(message.data.size()));
        });
    }
    bool HasReceived(std::size_t count) {
        return WaitUntil([this, count] { return m_received.size() >= count; });
    }

    QByteArray m_configuration;
    NatsServer m_server;
    RecordingBusListener m_listener;
    std::shared_ptr<INatsBus> m_bus;
    std::vector<QByteArray> m_received;
};

TEST_F(Bus, WhatIsPublishedComesWholeAndInOrder) {
    Open();
    Collect("a.*");
    m_bus->Publish("a.b", "head ", "body");
    m_bus->Publish("a.b", "", "body alone");
    m_bus->Publish("other", "not this");
    m_bus->Publish("a.c", "");
    m_bus->Publish("a.c", QByteArray(500'000, 'x').toStdString());
    EXPECT_TRUE(HasReceived(4));
    EXPECT_THAT(m_received, ElementsAre(QByteArray("head body"), QByteArray("body alone"), QByteArray(""),
                                        QByteArray(500'000, 'x')));
    EXPECT_THAT(m_listener.states, ElementsAre(INatsBus::EState::Open));
}

TEST_F(Bus, NothingComesAnyMoreAfterTheEndOfASubscription) {
    Open();
    const int first = Collect("a");
    int others = 0;
    m_bus->Subscribe("a", [&](const nats::NatsMessage&) {
        ++others;
        m_bus->Unsubscribe(first);
    });
    m_bus->Publish("a", "1");
    EXPECT_TRUE(WaitUntil([&] { return others == 1; }));
    const auto before = m_received.size();
    m_bus->Publish("a", "2");
    EXPECT_TRUE(WaitUntil([&] { return others == 2; }));
    EXPECT_EQ(m_received.size(), before);
}

TEST_F(Bus, AHundredThousandSmallMessagesComeInOrderAndTheLoopHasItsTurns) {
    Open();
    constexpr int Count = 100'000;
    int received = 0;
    int wrong = 0;
    m_bus->Subscribe("many", [&](const nats::NatsMessage& message) {
        wrong += QByteArray(message.data.data(), static_cast<int>(message.data.size())).toInt() != received;
        ++received;
    });
    int sent = 0;
    EXPECT_TRUE(WaitUntil([&] {
        while (sent < Count && m_bus->Unsent() < INatsBus::EnoughUnsent)
            m_bus->Publish("many", QByteArray::number(sent++).toStdString());
        return received == Count;
    }));
    EXPECT_EQ(wrong, 0);
}

TEST_F(Bus, AQuestionIsAnsweredOnceOrTheReasonIsTold) {
    Open();
    m_bus->Subscribe("ask", [this](const nats::NatsMessage& message) {
        m_bus->Publish(QByteArray(message.reply.data(), static_cast<int>(message.reply.size())), "answer");
    });
    m_bus->Subscribe("deaf", [](const nats::NatsMessage&) {});
    std::vector<std::string> told;
    const auto note = [&told](const nats::NatsAnswer& answer) {
        told.push_back(answer.problem.isEmpty() ? answer.data.toStdString() : answer.problem.toStdString());
    };
    m_bus->Request("ask", "?", 5s, note);
    EXPECT_TRUE(WaitUntil([&] { return told.size() == 1; }));
    m_bus->Request("nobody", "?", 5s, note);
    EXPECT_TRUE(WaitUntil([&] { return told.size() == 2; }));
    m_bus->Request("deaf", "?", 10ms, note);
    EXPECT_TRUE(WaitUntil([&] { return told.size() == 3; }));
    m_bus->Close();
    m_bus->Request("ask", "?", 5s, note);
    EXPECT_TRUE(WaitUntil([&] { return told.size() == 4; }));
    EXPECT_THAT(told, ElementsAre("answer", "nobody there answers", "no answer in time", "no connection"));
}

// Timers of some seconds may come early, and there is no later question whose timer would make up for that.
TEST_F(Bus, AQuestionThatNobodyAnswersIsToldSoWheneverTheTimerComes) {
    Open();
    m_bus->Subscribe("deaf", [](const nats::NatsMessage&) {});
    constexpr int count = 20;
    std::vector<std::shared_ptr<INatsBus>> buses;
    QString problem;
    for (int i = 0; i < count; ++i) {
        buses.push_back(nats::MakeBus(m_server.Options(), &problem));
        buses.back()->Open(false);
    }
    const auto isOpen = [](const auto& bus) { return bus->State() == INatsBus::EState::Open; };
    ASSERT_TRUE(WaitUntil([&] { return std::all_of(buses.begin(), buses.end(), isOpen); }));
    int told = 0;
    std::chrono::milliseconds wait(2001);
    for (const auto& bus : buses)
        bus->Request("deaf", "?", wait += 7ms, [&told](const nats::NatsAnswer& answer) {
            told += answer.problem == QLatin1String("no answer in time");
        });
    EXPECT_TRUE(WaitUntil([&told] { return told == count; })) << told;
}

TEST_F(Bus, ThatNobodyListensIsToldToWhoWatches) {
    Open();
    Collect("heard");
    m_bus->Publish("nobody", "x", {}, 7);
    m_bus->Publish("heard", "x", {}, 8);
    m_bus->Publish("nobody", "x", {}, 9);
    EXPECT_TRUE(WaitUntil([this] { return m_listener.unheard.size() == 2; }));
    EXPECT_THAT(m_listener.unheard, ElementsAre(7, 9));
}

TEST_F(Bus, WhatIsTooLongIsNotPublished) {
    m_configuration = "max_payload: 1000";
    Open();
    EXPECT_EQ(m_bus->MaxPayload(), 1000);
    EXPECT_FALSE(m_bus->Publish("a", QByteArray(1001, 'x').toStdString()));
    EXPECT_TRUE(m_bus->Publish("a", QByteArray(1000, 'x').toStdString()));
}

TEST_F(Bus, AfterALossItComesBackWithItsSubscriptions) {
    Open(true);
    Collect("a");
    m_server.Kill();
    EXPECT_TRUE(Is(INatsBus::EState::Connecting));
    EXPECT_THAT(m_bus->Problem().toStdString(), HasSubstr("the connection to NATS at 127.0.0.1:"));
    EXPECT_FALSE(m_bus->Publish("a", "lost"));
    ASSERT_TRUE(m_server.Start());
    EXPECT_TRUE(Is(INatsBus::EState::Open));
    EXPECT_EQ(m_bus->Problem(), QString());
    m_bus->Publish("a", "back");
    EXPECT_TRUE(HasReceived(1));
    EXPECT_THAT(m_received, ElementsAre(QByteArray("back")));
}

TEST_F(Bus, OneThatIsNotPersistentEndsWithTheFirstLoss) {
    Open(false);
    m_server.Kill();
    EXPECT_TRUE(Is(INatsBus::EState::Closed));
    EXPECT_THAT(m_listener.states, ElementsAre(INatsBus::EState::Open, INatsBus::EState::Closed));
}

TEST_F(Bus, WhereNobodyListensTheReasonIsOneLine) {
    ASSERT_TRUE(m_server.Start());
    const nats::NatsOptions options = m_server.Options();
    m_server.Kill();
    Open(options, false);
    EXPECT_TRUE(Is(INatsBus::EState::Closed));
    EXPECT_EQ(m_bus->Problem().toStdString(), "NATS at " + options.servers.front().ToText().toStdString() +
                                                  ": No server available for connection");
}

TEST_F(Bus, TheFirstOfSeveralServersThatIsThereIsTaken) {
    NatsServer other;
    ASSERT_TRUE(other.Start());
    ASSERT_TRUE(m_server.Start());
    nats::NatsOptions options = m_server.Options();
    options.servers.insert(options.servers.begin(), other.Options().servers.front());
    other.Kill();
    Open(options, false);
    EXPECT_TRUE(Is(INatsBus::EState::Open));
    EXPECT_EQ(m_bus->ServerAddress(), m_server.Options().servers.front().ToText());
}

TEST_F(Bus, AWrongPasswordIsToldAndTheRightOneGetsIn) {
    ASSERT_TRUE(m_server.Start("authorization { user: joe, password: secret }"));
    nats::NatsOptions options = m_server.Options();
    options.user = QStringLiteral("joe");
    options.password = QStringLiteral("guess");
    Open(options, false);
    EXPECT_TRUE(Is(INatsBus::EState::Closed));
    EXPECT_THAT(m_bus->Problem().toStdString(), HasSubstr("Authorization Violation"));
    m_bus->RemoveListener(&m_listener);
    options.password = QStringLiteral("secret");
    Open(options, false);
    EXPECT_TRUE(Is(INatsBus::EState::Open)) << m_bus->Problem().toStdString();
}

TEST_F(Bus, WhatIsNotPermittedIsTold) {
    m_configuration =
        "authorization { default_permissions { publish: \"a\", subscribe: [\"a\", \"_INBOX.>\"] }\n"
        " users [ { user: joe, password: x } ] }";
    ASSERT_TRUE(m_server.Start(m_configuration));
    nats::NatsOptions options = m_server.Options();
    options.user = QStringLiteral("joe");
    options.password = QStringLiteral("x");
    Open(options, false);
    ASSERT_TRUE(Is(INatsBus::EState::Open)) << m_bus->Problem().toStdString();
    m_bus->Publish("secret", "x");
    EXPECT_TRUE(WaitUntil([this] { return !m_listener.complaints.empty(); }));
    EXPECT_THAT(m_listener.complaints.at(0).toStdString(),
                HasSubstr("Permissions Violation for Publish to \"secret\""));
    EXPECT_EQ(m_bus->State(), INatsBus::EState::Open);
}

TEST_F(Bus, OverTlsItBelievesTheRightAuthorityOnly) {
    const Certificates& certificates = Certificates::Instance();
    ASSERT_EQ(certificates.Error(), QString());
    const QByteArray configuration =
        QStringLiteral("tls { cert_file: '%1', key_file: '%2' }")
            .arg(certificates.File("server.pem"), certificates.File("server.key"))
            .toUtf8();
    ASSERT_TRUE(m_server.Start(configuration));
    nats::NatsOptions options = m_server.Options();
    options.isTls = true;
    Open(options, false);
    EXPECT_TRUE(Is(INatsBus::EState::Closed));
    m_bus->RemoveListener(&m_listener);
    options.caFile = certificates.File("authority.pem");
    Open(options, false);
    ASSERT_TRUE(Is(INatsBus::EState::Open)) << m_bus->Problem().toStdString();
    EXPECT_TRUE(m_bus->IsEncrypted());
    Collect("a");
    m_bus->Publish("a", QByteArray(300'000, 'x').toStdString());
    EXPECT_TRUE(HasReceived(1));
    EXPECT_THAT(m_received, ElementsAre(QByteArray(300'000, 'x')));
}

TEST_F(Bus, AServerThatDoesNotReadHoldsNobodyUp) {
    Open();
    m_server.Freeze(true);
    const QByteArray large(100'000, 'x');
    while (m_bus->Unsent() < INatsBus::EnoughUnsent)
        m_bus->Publish("a", large.toStdString()), m_bus->Flush();
    EXPECT_EQ(m_listener.writable, 0);
    m_server.Freeze(false);
    EXPECT_TRUE(WaitUntil([this] { return m_bus->Unsent() == 0; }));
    EXPECT_GE(m_listener.writable, 1);
}

// As when its machine stands still, or a cable is pulled: nothing is closed.
TEST_F(Bus, AServerThatSaysNothingAnyMoreIsTakenForLostAlsoWithWordsUnsent) {
    ASSERT_TRUE(m_server.Start());
    nats::NatsOptions options = m_server.Options();
    options.deadAfter = 600ms;
    Open(options, true);
    ASSERT_TRUE(Is(INatsBus::EState::Open));
    RunTurns(50);
    m_server.Freeze(true);
    const std::string large(100'000, 'x');
    while (m_bus->Unsent() < INatsBus::EnoughUnsent) {
        m_bus->Publish("a", large);
        m_bus->Flush();
    }
    EXPECT_TRUE(Is(INatsBus::EState::Connecting));
    EXPECT_THAT(m_bus->Problem().toStdString(), HasSubstr("nothing heard from NATS at 127.0.0.1:"));
    m_server.Freeze(false);
    EXPECT_TRUE(Is(INatsBus::EState::Open));
}

TEST_F(Bus, WhoIsQuietForLongStaysConnected) {
    ASSERT_TRUE(m_server.Start());
    nats::NatsOptions options = m_server.Options();
    options.deadAfter = 150ms;
    Open(options, false);
    ASSERT_TRUE(Is(INatsBus::EState::Open));
    QElapsedTimer quiet;
    quiet.start();
    EXPECT_TRUE(WaitUntil([&quiet] { return quiet.elapsed() > 600; }));
    EXPECT_EQ(m_bus->State(), INatsBus::EState::Open);
}

TEST_F(Bus, WhoHearsMayLetGoOfIt) {
    Open();
    m_bus->Subscribe("a", [this](const nats::NatsMessage&) {
        m_bus->RemoveListener(&m_listener);
        m_bus.reset();
    });
    m_bus->Publish("a", "1");
    m_bus->Publish("a", "2");
    EXPECT_TRUE(WaitUntil([this] { return m_bus == nullptr; }));
}

TEST_F(Bus, WhileItConnectsItMayGo) {
    ASSERT_TRUE(m_server.Start());
    m_server.Freeze(true);  // the system accepts, nobody greets
    Open(m_server.Options(), true);
    RunTurns(5);
    m_bus->RemoveListener(&m_listener);
    m_bus.reset();
    m_server.Freeze(false);
}

struct BadOption {
    const char* name;
    void (*set)(nats::NatsOptions& options);
    const char* problem;
};

class BadOptions : public testing::TestWithParam<BadOption> {};

TEST_P(BadOptions, AreRefusedAtOnce) {
    nats::NatsOptions options;
    GetParam().set(options);
    QString problem;
    EXPECT_EQ(nats::MakeBus(options, &problem), nullptr);
    EXPECT_EQ(problem.toStdString(), GetParam().problem);
}

const BadOption AllBadOptions[] = {
    {"TwoWaysToBeSomebody",
     [](nats::NatsOptions& options) {
         options.user = QStringLiteral("joe");
         options.token = QStringLiteral("secret");
     },
     "NATS takes a user, a token, a file of credentials or an NKey, not several"},
    {"AnNKeyWithoutItsSeed", [](nats::NatsOptions& options) { options.nkey = QStringLiteral("U"); },
     "an NKey and the file with its seed need each other"},
    {"ACertificateWithoutItsKey",
     [](nats::NatsOptions& options) { options.certificateFile = QStringLiteral("x.pem"); },
     "a certificate for NATS and its private key need each other"},
    {"AFileThatIsNotThere",
     [](nats::NatsOptions& options) { options.credentialsFile = QStringLiteral("/nowhere/joe.creds"); },
     "the file '/nowhere/joe.creds' cannot be read"},
};

INSTANTIATE_TEST_SUITE_P(Bus, BadOptions, testing::ValuesIn(AllBadOptions),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
