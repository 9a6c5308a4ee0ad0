// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ichannel.h>

#include <functional>
#include <vector>

/// Remembers what a channel told, and may act on it.
class RecordingListener final : public vt::IChannelListener {
  public:
    void OnMessage(const char* data, qint64 size) override {
        messages.emplace_back(data, static_cast<int>(size));
        if (onMessage) onMessage();
    }
    void OnInputDone() override {
        ++inputsDone;
        if (onInputDone) onInputDone();
    }
    void OnClosed(const QString& reason) override {
        closings.push_back(reason);
        if (onClosed) onClosed();
    }

    std::vector<QByteArray> messages;
    std::vector<QString> closings;
    int inputsDone = 0;
    std::function<void()> onMessage;
    std::function<void()> onInputDone;
    std::function<void()> onClosed;
};
