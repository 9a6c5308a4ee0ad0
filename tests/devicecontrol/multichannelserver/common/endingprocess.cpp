// SPDX-License-Identifier: Apache-2.0
// endingprocess client <whose> <end> <address> <port> [certificate authority]
// endingprocess server <whose> <end>
//
// Connects, or is connected to, and ends in the middle of it. Whose the client or server is: "static", "late"
// (a static that is made after others of its kind are in use), "leaked", "stack", or "platform" (made by the
// center, destroyed by nobody). The end: "return" from main, or "exit" in the middle of being told.
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/vtclient/ivtclient.h>
#include <platform/vtclient/vtclientcenter.h>
#include <platform/vtclient/vtserver.h>

#include <tests/support/doubles/testaccess.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

/// Ends the process when it is told \a code.
class Ending final : public IObserver {
  public:
    Ending(const QString& end, TChangeCode code) : m_isByExit(end == QLatin1String("exit")), m_code(code) {}
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code != m_code) return;
        if (m_isByExit) std::exit(0);
        QCoreApplication::quit();
    }

  private:
    bool m_isByExit;
    TChangeCode m_code;
};

MultiChannelServerClient& StaticClient() {
    static MultiChannelServerClient client;
    return client;
}

MultiChannelServerClient& LeakedClient() {
    static auto& client = *new MultiChannelServerClient;
    return client;
}

MultiChannelServerClient& Client(const QString& whose, std::optional<MultiChannelServerClient>& ofTheStack) {
    if (whose == QLatin1String("leaked")) return LeakedClient();
    if (whose == QLatin1String("stack")) return ofTheStack.emplace();
    if (whose == QLatin1String("late")) VtClientCenter::Instance().CreateVtClient("127.0.0.1", 1);
    return StaticClient();
}

int RunClient(const QStringList& words) {
    VtClientOptions options;
    options.caFile = words.value(6);
    VtClientCenter::Instance().SetOptions(options);
    const values::Tree tree;
    std::optional<MultiChannelServerClient> ofTheStack;
    if (words[2] == QLatin1String("platform")) {
        IVtClient* const client =
            VtClientCenter::Instance().CreateVtClient(words[4].toLatin1().constData(), words[5].toInt());
        Ending ending(words[3], connectioncode::TicsChanged);
        client->AddObserver(&ending);
        client->AddTic(QStringLiteral("/Local,/MultiChannelServer"), "");
        const int code = QCoreApplication::exec();
        client->DeleteObserver(&ending);
        return code;
    }
    MultiChannelServerClient& client = Client(words[2], ofTheStack);
    Ending ending(words[3], serverclientcode::AllTicsEstablished);
    client.AddObserver(&ending);
    client.ConnectToServer(words[4], words[5].toInt());
    client.ConnectToMCSControlTree(QStringLiteral("/Local"), StatusSegment);
    client.ConnectStaticMpxORV(QStringLiteral("/Mine"), QStringLiteral("One"))->GetPolicySet();
    const int code = QCoreApplication::exec();
    client.DeleteObserver(&ending);
    return code;
}

VtServer& StaticServer() {
    static TestAccess access;
    static VtServer server(access);
    return server;
}

VtServer& LeakedServer() {
    static auto& server = *new VtServer(*new TestAccess);
    return server;
}

int RunServer(const QStringList& words) {
    static values::Tree tree;  // before the server, which looks at it to its end
    values::Node* const node = tree.ProvideNode(QStringLiteral("/MultiChannelServer"));
    VtServer& server = words[2] == QLatin1String("leaked") ? LeakedServer() : StaticServer();
    VtServerOptions options;
    options.port = 0;
    QString error;
    if (!server.Listen(options, &error)) return 1;
    std::printf("%d\n", server.GetPort());
    std::fflush(stdout);
    Ending ending(words[3], changecode::ChildrenAdded);  // by the client, which stays connected
    node->AddObserver(&ending);
    const int code = QCoreApplication::exec();
    node->DeleteObserver(&ending);
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    return words[1] == QLatin1String("client") ? RunClient(words) : RunServer(words);
}
