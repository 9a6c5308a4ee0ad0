// SPDX-License-Identifier: Apache-2.0
#include "mqttroad.h"

#include "mqttlink.h"

#include <cstdlib>

namespace bench {

namespace {

constexpr int TopicPrefixLength = 2;  // "v/" for values, "r/" for reports

class MqttServerEnd final : public ServerEnd {
  public:
    explicit MqttServerEnd(const RoadSetup& setup) : m_port(setup.brokerPort) {
        for (int i = 0; i < setup.values; ++i)
            m_topics.push_back("v/" + QByteArray::number(i));
    }

    void Open() override {
        m_link.onSubscribed = [this] { onOpen(m_port); };
        m_link.onMessage = [this](const char* topic, int content) {
            onReport(std::atoi(topic + TopicPrefixLength), content);
        };
        m_link.Open(m_port, "r/+");
    }
    void Set(int index, int content) override {
        m_link.Publish(m_topics[static_cast<std::size_t>(index)], content);
    }
    void Send() override { m_link.Write(); }

  private:
    int m_port;
    std::vector<QByteArray> m_topics;
    MqttLink m_link;
};

class MqttClientEnd final : public ClientEnd {
  public:
    MqttClientEnd(int client, int port) : m_port(port), m_reportTopic("r/" + QByteArray::number(client)) {}

    void Open() override {
        m_link.onSubscribed = [this] { onReady(); };
        m_link.onMessage = [this](const char* topic, int content) {
            onChange(std::atoi(topic + TopicPrefixLength), content);
        };
        m_link.Open(m_port, "v/+");
    }
    void Report(int content) override {
        m_link.Publish(m_reportTopic, content);
        m_link.Write();
    }

  private:
    int m_port;
    QByteArray m_reportTopic;
    MqttLink m_link;
};

}  // namespace

Road MakeMqttRoad() {
    return {
        QStringLiteral("mqtt"), [](const RoadSetup& setup) { return std::make_unique<MqttServerEnd>(setup); },
        [](const RoadSetup&, int client, int port) { return std::make_unique<MqttClientEnd>(client, port); }};
}

}  // namespace bench
