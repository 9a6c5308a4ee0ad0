// SPDX-License-Identifier: Apache-2.0
#include "mqttlink.h"

#include <QtCore/QSocketNotifier>

#include <mosquitto.h>
#include <cstring>

namespace bench {

MqttLink::MqttLink() {
    mosquitto_lib_init();
    m_client = mosquitto_new(nullptr, true, this);
    mosquitto_int_option(m_client, MOSQ_OPT_TCP_NODELAY, 1);
    mosquitto_message_callback_set(m_client, &MqttLink::OnMessage);
    mosquitto_subscribe_callback_set(m_client, [](mosquitto*, void* link, int, int, const int*) {
        static_cast<MqttLink*>(link)->onSubscribed();
    });
}

MqttLink::~MqttLink() {
    mosquitto_destroy(m_client);
    mosquitto_lib_cleanup();
}

bool MqttLink::Open(int brokerPort, const QByteArray& topics) {
    constexpr int KeepAliveSeconds = 600;  // longer than anything that is measured
    if (mosquitto_connect(m_client, "127.0.0.1", brokerPort, KeepAliveSeconds) != MOSQ_ERR_SUCCESS)
        return false;
    if (mosquitto_subscribe(m_client, nullptr, topics.constData(), 0) != MOSQ_ERR_SUCCESS) return false;
    const int socket = mosquitto_socket(m_client);
    m_readable = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
    m_writable = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Write);
    connect(m_readable.get(), &QSocketNotifier::activated, this, &MqttLink::Read);
    connect(m_writable.get(), &QSocketNotifier::activated, this, &MqttLink::Write);
    return true;
}

void MqttLink::Publish(const QByteArray& topic, int content) {
    mosquitto_publish(m_client, nullptr, topic.constData(), sizeof content, &content, 0, false);
}

void MqttLink::Write() {
    if (m_isReading)
        return;  // the library must not be told to write while it calls back; Read() follows it up
    if (mosquitto_want_write(m_client)) mosquitto_loop_write(m_client, 1);
    m_writable->setEnabled(mosquitto_want_write(m_client));
}

// The library reads one packet per call; a turn of the event loop for each would be unfair to it.
void MqttLink::Read() {
    m_isReading = true;
    quint64 before = 0;
    do {
        before = m_received;
        mosquitto_loop_read(m_client, 1);
    } while (m_received != before);
    m_isReading = false;
    Write();
}

void MqttLink::OnMessage(mosquitto* /*client*/, void* link, const mosquitto_message* message) {
    auto* const self = static_cast<MqttLink*>(link);
    int content = 0;
    if (message->payloadlen == int{sizeof content}) std::memcpy(&content, message->payload, sizeof content);
    ++self->m_received;
    self->onMessage(message->topic, content);
}

}  // namespace bench
