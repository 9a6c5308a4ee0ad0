// SPDX-License-Identifier: Apache-2.0
// blanking [HOST [PORT]]: goes from frequency to frequency, and leaves out those of keyed ground
// transmitters.
#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>
#include <platform/vtclient/ivtclient.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <array>
#include <cstdio>

namespace {

constexpr std::array<double, 3> Frequencies = {118.1e6, 121.5e6, 123.1e6};

class Scan {
  public:
    explicit Scan(QTimer& timer) {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { Step(); });
    }
    ~Scan() { Blanking::Instance()->FreeInstance(); }  // before the tree
    Scan(const Scan&) = delete;
    Scan& operator=(const Scan&) = delete;

    bool Connect(const QString& host, int port) {
        m_client.SetUniqueMpxORVName(QStringLiteral("Scan"));
        if (!m_client.ConnectToServer(host, port)) return false;
        // What Blanking knows stands at this very path, at the server as here.
        m_inputs =
            m_client.GetVtClientToUse()->AddTic(QStringLiteral("/ORVServer,/ORVServer"), ticoption::Look);
        return m_inputs != nullptr &&
               m_client.CreateAndConnectDynamicMpxORV(QStringLiteral("/Mine")) != nullptr;
    }

  private:
    void Step() {
        // What is not known now might be keyed. A server without input modules says that it has none.
        if (!m_inputs->IsEstablished() && !m_inputs->IsAbsent())
            return Print(QByteArrayLiteral("the inputs are not known"));
        auto* const request = values::FindValue<values::ValueNumeric<double>>(
            QStringLiteral("/Mine/Request/Frequency"), nullptr, nullptr);
        if (request == nullptr) return;
        const double hertz = Frequencies[m_next++ % Frequencies.size()];
        const QByteArray text = QByteArray::number(hertz / 1e6) + " MHz";
        // Quick enough to be asked before every step, however many frequencies are assigned.
        if (Blanking::Instance()->IsFrequencyBlanked(hertz, &m_self)) return Print(text + " is left out");
        request->SetValue(hertz);
        Print(text);
    }
    static void Print(const QByteArray& line) {
        std::printf("%s\n", line.constData());
        std::fflush(stdout);
    }

    values::Tree m_tree;  // before all that uses it
    MultiChannelServerClient m_client;
    IVtTic* m_inputs = nullptr;  // owned by the connection
    BlankingClient m_self{QStringLiteral("Scan")};
    std::size_t m_next = 0;
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    QTimer timer;
    Scan scan(timer);
    if (!scan.Connect(words.value(1, QStringLiteral("localhost")),
                      words.value(2, QStringLiteral("7450")).toInt()))
        return 2;
    timer.start(250);
    return QCoreApplication::exec();
}
