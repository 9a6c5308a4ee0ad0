// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>

#include <functional>
#include <memory>

struct mosquitto;
struct mosquitto_message;
class QSocketNotifier;

namespace bench {

/// One MQTT client, driven by Qt's event loop.
class MqttLink final : public QObject {
    Q_OBJECT

  public:
    MqttLink();
    ~MqttLink() override;

    /// Connects to the broker on loopback and subscribes \a topics; onSubscribed tells when that holds.
    bool Open(int brokerPort, const QByteArray& topics);
    void Publish(const QByteArray& topic, int content);
    /// Writes what waits, as far as it goes.
    void Write();

    std::function<void()> onSubscribed;
    std::function<void(const char* topic, int content)> onMessage;

  private:
    static void OnMessage(mosquitto* client, void* link, const mosquitto_message* message);
    void Read();

    mosquitto* m_client;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    quint64 m_received = 0;
    bool m_isReading = false;
};

}  // namespace bench
