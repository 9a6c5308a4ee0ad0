// SPDX-License-Identifier: Apache-2.0
// observe [HOST [PORT]]: prints what the device of a server does, whenever that changes.
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

class Watcher : public IObserver {
  public:
    Watcher() : m_status(QStringLiteral("/Server/Status")) {
        m_client.AddObserver(this);
        m_status.GetOperationModeValue()->AddObserver(this);  // the one value; m_status would tell of all
    }
    ~Watcher() override {
        if (m_status.GetOperationModeValue() != nullptr)
            m_status.GetOperationModeValue()->DeleteObserver(this);
        m_client.DeleteObserver(this);
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    bool Connect(const QString& host, int port) {
        return m_client.ConnectToServer(host, port) &&
               m_client.ConnectToMCSControlTree(QStringLiteral("/Server"), StatusSegment);
    }

    void Update(Observable* source, TChangeCode code) override {
        if (source != static_cast<Observable*>(&m_client)) {
            if (code == changecode::ContentChanged && m_client.IsMCSControlTreeConnected()) PrintMode();
            return;
        }
        if (code == serverclientcode::ControlTreeConnected) PrintMode();
        if (code == serverclientcode::ControlTreeDisconnected) Print("the connection is lost");
    }

  private:
    static void Print(const QByteArray& line) {
        std::printf("%s\n", line.constData());
        std::fflush(stdout);
    }
    void PrintMode() {
        if (m_status.GetOperationModeValue() != nullptr)
            Print("the device does: " + m_status.GetOperationModeAsString().toUtf8());
    }

    values::Tree m_tree;  // before all that uses it
    MultiChannelServerClient m_client;
    MCSStatus m_status;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    Watcher watcher;
    if (!watcher.Connect(words.value(1, QStringLiteral("localhost")),
                         words.value(2, QStringLiteral("7450")).toInt()))
        return 2;
    return QCoreApplication::exec();
}
