// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/servicenotifier.h>

#include <tests/apps/mcserver/servicemanager_posix.h>

#include <QtCore/QTemporaryDir>

#include <chrono>

using namespace std::chrono_literals;

namespace {

class ServiceNotifierTest : public testing::Test {
  protected:
    void Listen(const QByteArray& name) { ASSERT_NO_FATAL_FAILURE(m_manager.Listen(name)); }
    std::string Received() const { return m_manager.Received(); }

    QTemporaryDir m_directory;
    ServiceManager m_manager;
};

TEST_F(ServiceNotifierTest, TellsReadyWithWhatItDoesAndThenStopping) {
    Listen(m_directory.filePath(QStringLiteral("notify")).toUtf8());
    ServiceNotifier notifier;
    notifier.Ready(QStringLiteral("listening on 127.0.0.1:7450"));
    EXPECT_EQ(Received(), "READY=1\nSTATUS=listening on 127.0.0.1:7450");
    notifier.Stopping();
    EXPECT_EQ(Received(), "STOPPING=1");
}

struct Watchdog {
    const char* name;
    const char* time;     ///< µs; null: not said
    const char* process;  ///< null: not said; "own": this one
    std::chrono::milliseconds expected;
};

class Watchdogs : public ServiceNotifierTest, public testing::WithParamInterface<Watchdog> {};

TEST_P(Watchdogs, AreThoseOfThisProcess) {
    Listen(m_directory.filePath(QStringLiteral("notify")).toUtf8());
    if (GetParam().time != nullptr) qputenv("WATCHDOG_USEC", GetParam().time);
    if (GetParam().process != nullptr)
        qputenv("WATCHDOG_PID",
                QByteArray(GetParam().process).replace("own", QByteArray::number(::getpid())));
    ServiceNotifier notifier;
    EXPECT_EQ(notifier.GetWatchdogTime(), GetParam().expected);
    notifier.Alive();
    EXPECT_EQ(Received(), "WATCHDOG=1");
}

const Watchdog AllWatchdogs[] = {
    {"None", nullptr, nullptr, 0ms},
    {"OfThisProcess", "30000000", "own", 30000ms},
    {"OfWhomever", "2000000", nullptr, 2000ms},
    {"OfAnotherProcess", "2000000", "1", 0ms},
    {"Nonsense", "soon", nullptr, 0ms},
    {"Negative", "-2000000", nullptr, 0ms},
};

INSTANTIATE_TEST_SUITE_P(, Watchdogs, testing::ValuesIn(AllWatchdogs),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServiceNotifierTest, KnowsNamesThatAreNoFiles) {
    Listen("@mcserver-test-" + QByteArray::number(::getpid()));
    ServiceNotifier().Stopping();
    EXPECT_EQ(Received(), "STOPPING=1");
}

TEST_F(ServiceNotifierTest, WithoutAServiceManagerNothingHappens) {
    Listen(m_directory.filePath(QStringLiteral("notify")).toUtf8());
    qunsetenv("NOTIFY_SOCKET");
    ServiceNotifier().Ready(QString());
    qputenv("NOTIFY_SOCKET", QByteArray(5000, 'x'));
    ServiceNotifier().Ready(QString());
    qputenv("NOTIFY_SOCKET", m_directory.filePath(QStringLiteral("nobody")).toUtf8());
    ServiceNotifier().Ready(QString());
    EXPECT_EQ(Received(), "");
}

}  // namespace
