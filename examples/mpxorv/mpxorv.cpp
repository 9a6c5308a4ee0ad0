// SPDX-License-Identifier: Apache-2.0
// mpxorv HERTZ [HOST [PORT]]: gets an MpxORV, asks for one frequency, prints the answer, and gives it back.
#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

class Receiver : public IObserver {
  public:
    explicit Receiver(double hertz) : m_hertz(hertz) { m_client.AddObserver(this); }
    ~Receiver() override { m_client.DeleteObserver(this); }
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    bool Connect(const QString& host, int port) {
        m_client.SetUniqueMpxORVName(QStringLiteral("Example"));
        if (!m_client.ConnectToServer(host, port)) return false;
        m_handle = m_client.CreateAndConnectDynamicMpxORV(QStringLiteral("/Mine"));  // mirrored to there
        return m_handle != nullptr;
    }

    void Update(Observable* source, TChangeCode code) override {
        if (source == static_cast<Observable*>(&m_client)) {
            if (code == serverclientcode::MpxORVConnected) Ask();
            return;
        }
        if (source == m_answer && code == changecode::StateChanged &&
            m_answer->GetState() == values::GoingAway)
            m_answer = nullptr;
        if (source == m_answer && code == changecode::ContentChanged) {
            std::printf("%s\n", qUtf8Printable(m_answer->GetValue()));
            // Not from here: the value that tells would go with the MpxORV.
            QMetaObject::invokeMethod(
                qApp, [this] { Leave(); }, Qt::QueuedConnection);
        }
    }

  private:
    void Ask() {
        std::printf("%s is ours\n", qUtf8Printable(m_handle->GetName()));
        m_answer =
            values::FindValue<values::Value<QString>>(QStringLiteral("/Mine/Request/Answer"), m_answer, this);
        auto* const frequency = values::FindValue<values::ValueNumeric<double>>(
            QStringLiteral("/Mine/Request/Frequency"), nullptr, nullptr);
        if (frequency != nullptr) frequency->SetValue(m_hertz);  // leaves at the end of this turn
    }
    void Leave() {
        m_client.DisconnectFromServer();  // with the handle; the server frees the channel
        std::printf("given back\n");
        QCoreApplication::quit();
    }

    values::Tree m_tree;  // before all that uses it
    MultiChannelServerClient m_client;
    MpxORVHandle* m_handle = nullptr;  // owned by the client
    values::Value<QString>* m_answer = nullptr;
    double m_hertz;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    Receiver receiver(words.value(1).toDouble());
    if (!receiver.Connect(words.value(2, QStringLiteral("localhost")),
                          words.value(3, QStringLiteral("7450")).toInt()))
        return 2;
    return QCoreApplication::exec();
}
