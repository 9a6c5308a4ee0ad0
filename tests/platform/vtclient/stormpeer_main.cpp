// SPDX-License-Identifier: Apache-2.0
// stormpeer server <control port> <seed>
// stormpeer client <control port> <seed> <server port>
#include <platform/app/errorhandler.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>
#include <tests/platform/vtclient/stormpeer.h>
#include <tests/support/doubles/testaccess.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace {

class StormServer final : public StormPeer {
  public:
    StormServer(int controlPort, unsigned seed)
        : StormPeer(RandomEdits::ERole::Device, controlPort, seed), m_server(m_access) {
        m_edits.MakeTree();
        HearMessages();
        VtServerOptions options;
        options.port = 0;
        QString error;
        if (m_server.Listen(options, &error))
            Tell(QStringLiteral("port %1").arg(m_server.GetPort()));
        else
            Tell(QStringLiteral("error ") + error);
    }

  private:
    TestAccess m_access;
    VtServer m_server;
};

class StormClient final : public StormPeer, public IObserver {
  public:
    StormClient(int controlPort, unsigned seed, int serverPort)
        : StormPeer(RandomEdits::ERole::Operator, controlPort, seed) {
        VtClientOptions options;
        options.firstRetry = std::chrono::milliseconds(1);
        options.longestRetry = std::chrono::milliseconds(4);
        VtClientCenter::Instance().SetOptions(options);
        m_client = VtClientCenter::Instance().CreateVtClient("127.0.0.1", serverPort);
        m_client->AddObserver(this);
        m_client->AddTic(QStringLiteral("/L,/S"), "");
    }
    ~StormClient() override {
        m_client->DeleteObserver(this);
        VtClientCenter::Instance().DestroyVtClient(m_client);
    }
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code != connectioncode::TicsChanged || !m_client->AreAllTicsEstablished()) return;
        HearMessages();
    }

  private:
    QString ExtraState() const override {
        if (!m_client->AreAllTicsEstablished()) return QStringLiteral(" not established");
        return m_client->HasUnansweredWrites() ? QStringLiteral(" unanswered") : QString();
    }

    IVtClient* m_client;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 4) return 2;
    // Losses are what this is about; nobody need read of each.
    ErrorHandler::Instance().SetTraceFlags(ErrorHandler::TraceAssertions);
    const int controlPort = words[2].toInt();
    const unsigned seed = words[3].toUInt();
    if (words[1] == QLatin1String("server")) {
        StormServer server(controlPort, seed);
        return QCoreApplication::exec();
    }
    if (words.size() < 5) return 2;
    StormClient client(controlPort, seed, words[4].toInt());
    return QCoreApplication::exec();
}
