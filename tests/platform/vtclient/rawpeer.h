// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/changewriter.h>
#include <tests/platform/vtclient/anymessage.h>
#include <tests/platform/vtclient/memorychannel.h>

#include <memory>
#include <vector>

/// One end of a wire whose messages a test writes and reads itself.
class RawPeer final : public vt::IChannelListener {
  public:
    RawPeer(std::shared_ptr<MemoryChannel::Wire> wire, bool isA) : m_channel(std::move(wire), isA) {
        m_channel.SetListener(this);
    }

    void Send(const vt::Message& message, const QByteArray& written = QByteArray()) {
        SendBytes(ToBytes(message, written));
    }
    void SendBytes(const QByteArray& bytes) {
        m_channel.Send(bytes);
        m_channel.Flush();
    }
    /// Takes in what has arrived.
    void Read() { m_channel.Deliver(); }

    /// Those of the messages so far that are such.
    template <class M>
    std::vector<M> Of() const {
        return Only<M>(messages);
    }
    template <class M>
    int Count() const {
        return static_cast<int>(Of<M>().size());
    }

    void OnMessage(const char* data, qint64 size) override {
        vt::MessageReader reader(data, size);
        vt::Message message;
        if (!ReadAny(reader, &message)) return;
        vt::TreeChange change;
        while (reader.NextChange(&change))
            changes.push_back(change);
        messages.push_back(message);
        largest = qMax(largest, size);
        received += size;
    }
    void OnInputDone() override {}
    void OnClosed(const QString& /*reason*/) override { isClosed = true; }

    std::vector<vt::Message> messages;
    std::vector<vt::TreeChange> changes;
    qint64 largest = 0;   ///< bytes of the largest message
    qint64 received = 0;  ///< of all messages
    bool isClosed = false;

  private:
    MemoryChannel m_channel;
};
